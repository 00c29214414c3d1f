#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <stdexcept>
#include <string>

namespace NSLichen {

// Work that did not come to its end.

class XNotReady : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XNotReady(const std::string& text) : std::runtime_error(text) {}
    XNotReady(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XTimeout : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XTimeout(const std::string& text) : std::runtime_error(text) {}
    XTimeout(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// Stopped on request.
class XAbort : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XAbort(const std::string& text) : std::runtime_error(text) {}
    XAbort(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// Stopped on request, and nobody is to be told.
class XSilentAbort : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XSilentAbort(const std::string& text) : std::runtime_error(text) {}
    XSilentAbort(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

} // namespace NSLichen
