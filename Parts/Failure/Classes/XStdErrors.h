#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

// The members of the family that stand in for exceptions of the standard library, and the one for
// foreign integers. Code seldom names them: it raises std::out_of_range and the like, and what is
// thrown is the stand-in, which carries a body.
namespace NSLichen::NSLichenDetails {

/// Any exception that is known by no better class.
class XStdException : public std::exception, public CExceptionBodyMixin {
public:
    explicit XStdException(const std::string& text) : fText(text) {}
    XStdException(const CExceptionBodyMixin& body, const std::string& text)
        : std::exception(), CExceptionBodyMixin(body), fText(text) {}

    const char* what() const noexcept override { return fText.c_str(); }

private:
    std::string fText;
};

/// An integer of foreign code on its way through the system; its "error_code" part holds it.
class XTunneledError : public std::exception, public CExceptionBodyMixin {
public:
    explicit XTunneledError(const std::string& text) : fText(text) {}
    XTunneledError(const CExceptionBodyMixin& body, const std::string& text)
        : std::exception(), CExceptionBodyMixin(body), fText(text) {}

    const char* what() const noexcept override { return fText.c_str(); }

private:
    std::string fText;
};

class XStdLogicError : public std::logic_error, public CExceptionBodyMixin {
public:
    explicit XStdLogicError(const std::string& text) : std::logic_error(text) {}
    XStdLogicError(const CExceptionBodyMixin& body, const std::string& text)
        : std::logic_error(text), CExceptionBodyMixin(body) {}
};

class XStdDomainError : public std::domain_error, public CExceptionBodyMixin {
public:
    explicit XStdDomainError(const std::string& text) : std::domain_error(text) {}
    XStdDomainError(const CExceptionBodyMixin& body, const std::string& text)
        : std::domain_error(text), CExceptionBodyMixin(body) {}
};

class XStdInvalidArgument : public std::invalid_argument, public CExceptionBodyMixin {
public:
    explicit XStdInvalidArgument(const std::string& text) : std::invalid_argument(text) {}
    XStdInvalidArgument(const CExceptionBodyMixin& body, const std::string& text)
        : std::invalid_argument(text), CExceptionBodyMixin(body) {}
};

class XStdLengthError : public std::length_error, public CExceptionBodyMixin {
public:
    explicit XStdLengthError(const std::string& text) : std::length_error(text) {}
    XStdLengthError(const CExceptionBodyMixin& body, const std::string& text)
        : std::length_error(text), CExceptionBodyMixin(body) {}
};

class XStdOutOfRange : public std::out_of_range, public CExceptionBodyMixin {
public:
    explicit XStdOutOfRange(const std::string& text) : std::out_of_range(text) {}
    XStdOutOfRange(const CExceptionBodyMixin& body, const std::string& text)
        : std::out_of_range(text), CExceptionBodyMixin(body) {}
};

/// Has no text of its own: it must cost no further allocation.
class XStdBadAlloc : public std::bad_alloc, public CExceptionBodyMixin {
public:
    XStdBadAlloc() = default;
    explicit XStdBadAlloc(const CExceptionBodyMixin& body)
        : std::bad_alloc(), CExceptionBodyMixin(body) {}

    const char* what() const noexcept override { return "bad allocation"; }
};

class XStdRuntimeError : public std::runtime_error, public CExceptionBodyMixin {
public:
    explicit XStdRuntimeError(const std::string& text) : std::runtime_error(text) {}
    XStdRuntimeError(const CExceptionBodyMixin& body, const std::string& text)
        : std::runtime_error(text), CExceptionBodyMixin(body) {}
};

class XStdOverflowError : public std::overflow_error, public CExceptionBodyMixin {
public:
    explicit XStdOverflowError(const std::string& text) : std::overflow_error(text) {}
    XStdOverflowError(const CExceptionBodyMixin& body, const std::string& text)
        : std::overflow_error(text), CExceptionBodyMixin(body) {}
};

class XStdUnderflowError : public std::underflow_error, public CExceptionBodyMixin {
public:
    explicit XStdUnderflowError(const std::string& text) : std::underflow_error(text) {}
    XStdUnderflowError(const CExceptionBodyMixin& body, const std::string& text)
        : std::underflow_error(text), CExceptionBodyMixin(body) {}
};

class XStdRangeError : public std::range_error, public CExceptionBodyMixin {
public:
    explicit XStdRangeError(const std::string& text) : std::range_error(text) {}
    XStdRangeError(const CExceptionBodyMixin& body, const std::string& text)
        : std::range_error(text), CExceptionBodyMixin(body) {}
};

} // namespace NSLichen::NSLichenDetails
