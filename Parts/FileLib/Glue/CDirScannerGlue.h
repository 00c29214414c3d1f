#pragma once

#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Interface/IDirScanner.h"

#include <memory>

namespace NSFileLibInternals {

class CDirScannerGlue final : public NSFileLib::IDirScanner {
public:
    explicit CDirScannerGlue(std::unique_ptr<CDirScannerImpl> impl);

    int32_t IsAtEnd() const override;
    int32_t GetCurrent(char16_t* name, NSFileLib::SFileInfo* info,
                       int32_t* isFolder) const override;
    int32_t Advance() override;
    int32_t IsValid() const override { return fImpl != nullptr ? 1 : 0; }

private:
    /// What CheckCall answered, unless that was good and the scanner stands past its end.
    int32_t CheckEntry(int32_t check) const;

    std::unique_ptr<CDirScannerImpl> fImpl;
};

} // namespace NSFileLibInternals
