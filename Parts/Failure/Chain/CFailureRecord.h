#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"

namespace NSLichen {

/// A failure being raised: the body so far and the item under construction. Lives on the stack of
/// the raising code.
struct CFailureRecord {
    CFailureRecord() = default;
    explicit CFailureRecord(const CFailureSite& site) { fItem.fSite = site; }

    CExceptionBodyMixin fBody;
    CFailureItem fItem;
};

} // namespace NSLichen
