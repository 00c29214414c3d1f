#pragma once

#include "Support/Loader/IDLLLoader.h"

namespace NSSupport {

/// A module loaded by dlopen.
class COpenDLLPosix : public IOpenDLL {
public:
    /// Takes over the module's handle.
    explicit COpenDLLPosix(void* module) : fModule(module) {}
    ~COpenDLLPosix() override;
    COpenDLLPosix(const COpenDLLPosix&) = delete;
    COpenDLLPosix& operator=(const COpenDLLPosix&) = delete;

    Address FindAddress(const std::string& name) const override;

private:
    void* fModule;
};

class CDLLLoaderPosix : public IDLLLoader {
public:
    std::unique_ptr<IOpenDLL> Open(const std::u16string& name) override;
};

} // namespace NSSupport
