#include "PorterPackage/Core/FileLibSupport/FileAssociation.h"

#include "Failure/Raise.h"
#include "Failure/XClasses.h"

namespace NSFileLibSupport {

std::u16string FindAssociatedProgram(const std::u16string& /*fileClass*/) {
    NSLichen::Raise(NSLichen::XNotFound("AssocQueryStringByKey failed"));
}

} // namespace NSFileLibSupport
