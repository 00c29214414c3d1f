#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <stdexcept>
#include <string>

namespace NSLichen {

// Mistakes of the calling code.

/// An operation at a time when it may not be called.
class XIllegalCallSequence : public std::logic_error, public CExceptionBodyMixin {
public:
    explicit XIllegalCallSequence(const std::string& text) : std::logic_error(text) {}
    XIllegalCallSequence(const CExceptionBodyMixin& body, const std::string& text)
        : std::logic_error(text), CExceptionBodyMixin(body) {}
};

/// An object found in a state that it must never have.
class XInvariantCorrupt : public std::logic_error, public CExceptionBodyMixin {
public:
    explicit XInvariantCorrupt(const std::string& text) : std::logic_error(text) {}
    XInvariantCorrupt(const CExceptionBodyMixin& body, const std::string& text)
        : std::logic_error(text), CExceptionBodyMixin(body) {}
};

} // namespace NSLichen
