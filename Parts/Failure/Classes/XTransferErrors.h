#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <stdexcept>
#include <string>

namespace NSLichen {

// Bytes and items that could not be moved.

class XRead : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XRead(const std::string& text) : std::runtime_error(text) {}
    XRead(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XWrite : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XWrite(const std::string& text) : std::runtime_error(text) {}
    XWrite(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// A medium is full.
class XOutOfSpace : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XOutOfSpace(const std::string& text) : std::runtime_error(text) {}
    XOutOfSpace(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// A supply of countable things has run out: handles, names, slots.
class XOutOfItems : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XOutOfItems(const std::string& text) : std::runtime_error(text) {}
    XOutOfItems(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

} // namespace NSLichen
