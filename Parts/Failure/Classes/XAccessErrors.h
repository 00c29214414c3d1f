#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <stdexcept>
#include <string>

namespace NSLichen {

// Objects, mostly of a file system, that could not be made, reached or had.

class XCreate : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XCreate(const std::string& text) : std::runtime_error(text) {}
    XCreate(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XOpen : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XOpen(const std::string& text) : std::runtime_error(text) {}
    XOpen(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XClose : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XClose(const std::string& text) : std::runtime_error(text) {}
    XClose(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XDelete : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XDelete(const std::string& text) : std::runtime_error(text) {}
    XDelete(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// A reference that leads nowhere: an alias, a path, a name.
class XResolve : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XResolve(const std::string& text) : std::runtime_error(text) {}
    XResolve(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XNotFound : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XNotFound(const std::string& text) : std::runtime_error(text) {}
    XNotFound(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XAlreadyExists : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XAlreadyExists(const std::string& text) : std::runtime_error(text) {}
    XAlreadyExists(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XPermission : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XPermission(const std::string& text) : std::runtime_error(text) {}
    XPermission(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

/// In use by somebody else.
class XLocked : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XLocked(const std::string& text) : std::runtime_error(text) {}
    XLocked(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XReadOnly : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XReadOnly(const std::string& text) : std::runtime_error(text) {}
    XReadOnly(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

} // namespace NSLichen
