#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

#include <string>

namespace NSLichen {

// Questions on a caught failure. They look at the latest failure of the chain; a body that names
// none has no parts.

/// The value of a part, nil when there is none.
CFailureValue GetPartValue(const CExceptionBodyMixin& body, const CFixedName& key);
/// The value as text, "<nil>" when there is none.
std::u16string GetPartValueText(const CExceptionBodyMixin& body, const CFixedName& key);
/// Whether the part's value equals the given one. A part that is not there has the value nil.
bool HasPartValue(const CExceptionBodyMixin& body, const CFixedName& key,
                  const CFailureValue& value);
bool HasTargetObjectType(const CExceptionBodyMixin& body, const CFixedName& word);

} // namespace NSLichen
