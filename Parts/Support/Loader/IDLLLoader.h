// Loading of further modules at run time.
#pragma once

#include <memory>
#include <string>

namespace NSSupport {

/// A loaded module. The destructor gives it back, after which no address from it may be used.
class IOpenDLL {
public:
    using Address = void (*)();

    virtual ~IOpenDLL() = default;
    /// Null when the module exports no such name.
    virtual Address FindAddress(const std::string& name) const = 0;
    /// As FindAddress; a missing name raises XNotFound with the target word "symbol".
    Address GetAddress(const std::string& name) const;

protected:
    IOpenDLL() = default;
    IOpenDLL(const IOpenDLL&) = default;
    IOpenDLL& operator=(const IOpenDLL&) = default;
};

class IDLLLoader {
public:
    virtual ~IDLLLoader() = default;
    /// A name without folder is searched for where the system looks for modules; one without
    /// extension gets the system's (".dll", ".so"). A name with "\" is a path. Raises XNotFound
    /// with the target word "dll", and with the system's reason if it gives one, when the module is
    /// not there or cannot be loaded.
    virtual std::unique_ptr<IOpenDLL> Open(const std::u16string& name) = 0;

protected:
    IDLLLoader() = default;
    IDLLLoader(const IDLLLoader&) = default;
    IDLLLoader& operator=(const IDLLLoader&) = default;
};

/// The loader of the running system.
std::unique_ptr<IDLLLoader> MakeDLLLoader();

} // namespace NSSupport
