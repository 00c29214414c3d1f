#pragma once

#include "Failure/Chain/CFailureRecord.h"

#include <cstdint>
#include <exception>
#include <string>

namespace NSLichen {

// The steps that Raise.h takes in one call, for code that adds parts or a site of its own.

/// The body of an exception; a default one when the exception is not of the family.
CExceptionBodyMixin GetExceptionBody(const std::exception& exception);

struct SExceptionClass {
    int32_t fCode;
    std::string fText;
};
/// The failure code of an exception of any class, and its text. Null answers
/// kFailureCode_UndefinedException and no text.
SExceptionClass ClassifyException(const std::exception* exception);

/// Takes over the exception's body. An exception that has recorded nothing yet gives the record's
/// item its code and text; otherwise the item stays an annotation to what is recorded.
void AttachException(CFailureRecord& record, const std::exception& exception);
void AddPartToRecord(CFailureRecord& record, const CFailurePart& part);
/// Throws the body with the item behind it, as the class of the latest failure.
[[noreturn]] void RaiseRecord(const CFailureRecord& record);

} // namespace NSLichen
