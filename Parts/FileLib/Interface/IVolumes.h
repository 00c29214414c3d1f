#pragma once

#include "FileLib/Interface/ISpecs.h"

#include <cstdint>

namespace NSFileLib {

/// The volumes that were there when the list was made.
class IVolumes {
public:
    virtual ~IVolumes() = default;
    virtual int32_t GetCount() const = 0;
    /// The list's own, null outside 0 to the count.
    virtual const IVolumeSpec* GetVolume(int32_t index) const = 0;
    virtual int32_t IsValid() const = 0;
};

} // namespace NSFileLib
