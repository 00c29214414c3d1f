#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <cstdint>
#include <string>

namespace NSLichen {

/// Throws the class that the code names, made from body and text. kFailureCode_UndefinedException
/// and every value that is not a code throw the plain integer 5, which no handler for exceptions
/// takes.
[[noreturn]] void ThrowByFailureCode(int32_t code, const CExceptionBodyMixin& body,
                                     const std::string& text);
/// Throws a body as the class of its latest failure.
[[noreturn]] void ThrowFailureBody(const CExceptionBodyMixin& body);

} // namespace NSLichen
