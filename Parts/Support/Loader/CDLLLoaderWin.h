#pragma once

#include "Support/Loader/IDLLLoader.h"

namespace NSSupport {

/// A module loaded by LoadLibrary.
class COpenDLLWin : public IOpenDLL {
public:
    /// Takes over the module's handle.
    explicit COpenDLLWin(void* module) : fModule(module) {}
    ~COpenDLLWin() override;
    COpenDLLWin(const COpenDLLWin&) = delete;
    COpenDLLWin& operator=(const COpenDLLWin&) = delete;

    Address FindAddress(const std::string& name) const override;

private:
    void* fModule;
};

class CDLLLoaderWin : public IDLLLoader {
public:
    std::unique_ptr<IOpenDLL> Open(const std::u16string& name) override;
};

} // namespace NSSupport
