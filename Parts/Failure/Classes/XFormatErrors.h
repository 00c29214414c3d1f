#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <stdexcept>
#include <string>

namespace NSLichen {

// Data that cannot be taken for what it claims to be.

/// Well formed, but of a kind that is not served.
class XUnsupportedFormat : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XUnsupportedFormat(const std::string& text) : std::runtime_error(text) {}
    XUnsupportedFormat(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// Not formed as its kind demands.
class XFormatViolation : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XFormatViolation(const std::string& text) : std::runtime_error(text) {}
    XFormatViolation(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// Of a version no longer read.
class XVersionTooOld : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XVersionTooOld(const std::string& text) : std::runtime_error(text) {}
    XVersionTooOld(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// Of a version not known yet.
class XVersionTooNew : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XVersionTooNew(const std::string& text) : std::runtime_error(text) {}
    XVersionTooNew(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

} // namespace NSLichen
