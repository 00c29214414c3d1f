#pragma once

#include "FileLib/Glue/SpecGlue.h"
#include "FileLib/Interface/IVolumes.h"

#include <string>
#include <vector>

namespace NSFileLibInternals {

class CVolumesGlue final : public NSFileLib::IVolumes {
public:
    explicit CVolumesGlue(const std::vector<std::u16string>& paths)
        : fVolumes(paths.begin(), paths.end()) {}

    int32_t GetCount() const override { return static_cast<int32_t>(fVolumes.size()); }
    const NSFileLib::IVolumeSpec* GetVolume(int32_t index) const override {
        return index >= 0 && index < GetCount() ? &fVolumes[static_cast<size_t>(index)] : nullptr;
    }
    int32_t IsValid() const override { return 1; }

private:
    std::vector<CVolumeSpecGlue> fVolumes;
};

} // namespace NSFileLibInternals
