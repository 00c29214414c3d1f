#pragma once

#include "Failure/Chain/CFailureItem.h"

#include <cstdint>
#include <vector>

namespace NSLichen {

/// The record of a failure, mixed into every exception of the family: the chain of what went wrong,
/// oldest first, so that a failure keeps its cause and context while it is thrown again.
class CExceptionBodyMixin {
public:
    CExceptionBodyMixin() = default;
    explicit CExceptionBodyMixin(const CFailureSite& site) : fEmpty(false), fSite(site) {}

    friend bool operator==(const CExceptionBodyMixin&, const CExceptionBodyMixin&) = default;

    /// Nothing has been recorded: the exception's class and text are all there is.
    bool fEmpty = true;
    CFailureSite fSite;
    /// The root failure: that of the first coded item. The class thrown follows the last one.
    int32_t fCode = kFailureCode_UndefinedException;
    std::vector<CFailureItem> fItems;
};

} // namespace NSLichen
