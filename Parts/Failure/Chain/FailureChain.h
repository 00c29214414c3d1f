#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <optional>
#include <vector>

namespace NSLichen {

/// The body's items; a body that has none but names a failure answers one item made of its site and
/// code.
std::vector<CFailureItem> ExpandBodyItems(const CExceptionBodyMixin& body);
/// The body with one more item behind its own.
CExceptionBodyMixin CombineBody(const CExceptionBodyMixin& body, const CFailureItem& item);
/// One item for each failure of the chain, with the parts of the context items behind it folded in.
std::vector<CFailureItem> FlattenFailureItems(const CExceptionBodyMixin& body);
/// The latest value of each key, in the order of those latest values.
std::vector<CFailurePart> DeduplicateParts(const std::vector<CFailurePart>& parts);

/// The latest failure of the chain, if the chain names one.
std::optional<CFailureItem> FindPrimaryFailureItem(const CExceptionBodyMixin& body);
/// The same for a chain that must name one. Throws the integer 5, the answer to a failure without a
/// code, when it does not.
CFailureItem GetPrimaryFailureItem(const CExceptionBodyMixin& body);

} // namespace NSLichen
