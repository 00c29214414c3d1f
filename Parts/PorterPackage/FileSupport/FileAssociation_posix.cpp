#include "PorterPackage/FileSupport/FileAssociation.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

namespace NSFileLibSupport {

std::u16string FindAssociatedProgram(const std::u16string& /*fileClass*/) {
    NSLichen::Raise(NSLichen::XNotFound("AssocQueryStringByKey failed"));
}

} // namespace NSFileLibSupport
