// The words that make a chunk a group.
#pragma once

#include "PorterPackage/Core/Bytes/FourCharID.h"

namespace NSPorter {

constexpr uint32_t kIFFWord_Form = FourCharID("FORM");
constexpr uint32_t kIFFWord_Cat = FourCharID("CAT ");
constexpr uint32_t kIFFWord_List = FourCharID("LIST");
/// The word of RIFF files in the place of FORM.
constexpr uint32_t kIFFWord_Riff = FourCharID("RIFF");

} // namespace NSPorter
