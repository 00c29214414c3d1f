#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <exception>
#include <string>

namespace NSLichen {

/// A failed assertion that no debugger was there to take.
class XUnitTestFailure : public std::exception, public CExceptionBodyMixin {
public:
    explicit XUnitTestFailure(const std::string& text) : fText(text) {}
    XUnitTestFailure(const CExceptionBodyMixin& body, const std::string& text)
        : std::exception(), CExceptionBodyMixin(body), fText(text) {}

    const char* what() const noexcept override { return fText.c_str(); }

private:
    std::string fText;
};

} // namespace NSLichen
