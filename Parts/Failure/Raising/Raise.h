#pragma once

#include "Failure/Chain/CFixedName.h"

#include <exception>
#include <type_traits>

namespace NSLichen {

/// What the templates below call.
[[noreturn]] void RaiseException(const std::exception& exception);
[[noreturn]] void RaiseExceptionWithTarget(const std::exception& exception,
                                           const CFixedName& targetObjectType);

/// Throws the exception with its failure recorded in its body: Raise(XFormatViolation("...")). A
/// standard exception is thrown as its stand-in of the family; one that was caught and is raised
/// again gains an annotation. When memory runs out on the way, std::bad_alloc is thrown instead.
template <class X>
[[noreturn]] void Raise(const X& exception) {
    static_assert(std::is_base_of_v<std::exception, X>);
    RaiseException(exception);
}

/// The same, saying what kind of object the failure is about.
template <class X>
[[noreturn]] void RaiseWithTarget(const X& exception, const CFixedName& targetObjectType) {
    static_assert(std::is_base_of_v<std::exception, X>);
    RaiseExceptionWithTarget(exception, targetObjectType);
}

} // namespace NSLichen
