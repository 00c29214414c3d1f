#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <string>

namespace NSLoopTool {

/// A result of the library in words, for messages.
std::string ResultText(LOPResult result);

} // namespace NSLoopTool
