#include "LoopLibrary/File/LoopFileFailures.h"

#include "Failure/ObjectTypeWords.h"
#include "Failure/Raise.h"
#include "Failure/XFormatErrors.h"

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
