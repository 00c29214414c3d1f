#include "Support/Loader/IDLLLoader.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

namespace NSSupport {

IOpenDLL::Address IOpenDLL::GetAddress(const std::string& name) const {
    const Address address = FindAddress(name);
    if (address == nullptr) {
        NSLichen::RaiseWithTarget(NSLichen::XNotFound(name), NSLichen::SymbolWord());
    }
    return address;
}

} // namespace NSSupport
