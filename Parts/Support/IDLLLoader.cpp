#include "Support/IDLLLoader.h"

#include "Failure/ObjectTypeWords.h"
#include "Failure/Raise.h"
#include "Failure/XClasses.h"

namespace NSSupport {

IOpenDLL::Address IOpenDLL::GetAddress(const std::string& name) const {
    const Address address = FindAddress(name);
    if (address == nullptr) {
        NSLichen::RaiseWithTarget(NSLichen::XNotFound(name), NSLichen::SymbolWord());
    }
    return address;
}

} // namespace NSSupport
