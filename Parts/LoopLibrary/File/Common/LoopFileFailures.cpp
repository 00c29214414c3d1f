#include "LoopLibrary/File/Common/LoopFileFailures.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XFormatErrors.h"
#include "Failure/Raising/Raise.h"

namespace NSLOPDLL {

void RaiseFormatViolation(const std::string& text) {
    NSLichen::RaiseWithTarget(NSLichen::XFormatViolation(text), NSLichen::LopFileWord());
}

void RaiseUnsupportedFormat(const std::string& text) {
    NSLichen::RaiseWithTarget(NSLichen::XUnsupportedFormat(text), NSLichen::LopFileWord());
}

void RaiseVersionTooNew(const std::string& text) {
    NSLichen::RaiseWithTarget(NSLichen::XVersionTooNew(text), NSLichen::LopFileWord());
}

} // namespace NSLOPDLL
