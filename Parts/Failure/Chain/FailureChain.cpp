#include "Failure/Chain/FailureChain.h"

#include "Failure/Codes/ThrowByFailureCode.h"

#include <algorithm>
#include <utility>

namespace NSLichen {

std::vector<CFailureItem> ExpandBodyItems(const CExceptionBodyMixin& body) {
    if (body.fEmpty || !body.fItems.empty() || body.fCode == kFailureCode_UndefinedException) {
        return body.fItems;
    }
    return {CFailureItem{body.fSite, body.fCode, {}, {}}};
}

CExceptionBodyMixin CombineBody(const CExceptionBodyMixin& body, const CFailureItem& item) {
    CExceptionBodyMixin combined(body.fSite);
    combined.fItems = ExpandBodyItems(body);
    combined.fItems.push_back(item);
    const auto root =
        std::find_if(combined.fItems.begin(), combined.fItems.end(), [](const CFailureItem& each) {
            return each.fCode != kFailureCode_UndefinedException;
        });
    if (root != combined.fItems.end()) {
        combined.fCode = root->fCode;
    }
    return combined;
}

std::vector<CFailureItem> FlattenFailureItems(const CExceptionBodyMixin& body) {
    const std::vector<CFailureItem> items = ExpandBodyItems(body);
    std::vector<CFailureItem> flattened;
    if (items.empty()) {
        return flattened;
    }
    const auto emit = [&flattened](CFailureItem group) {
        group.fParts = DeduplicateParts(group.fParts);
        flattened.push_back(std::move(group));
    };
    CFailureItem group = items.front();
    for (auto item = items.begin() + 1; item != items.end(); ++item) {
        if (item->fCode == kFailureCode_UndefinedException) {
            group.fParts.insert(group.fParts.end(), item->fParts.begin(), item->fParts.end());
        } else {
            emit(std::move(group));
            group = *item;
        }
    }
    if (group.fCode != kFailureCode_UndefinedException) {
        emit(std::move(group));
    }
    return flattened;
}

std::vector<CFailurePart> DeduplicateParts(const std::vector<CFailurePart>& parts) {
    std::vector<CFailurePart> latest;
    for (const CFailurePart& part : parts) {
        std::erase_if(latest,
                      [&part](const CFailurePart& earlier) { return earlier.fKey == part.fKey; });
        latest.push_back(part);
    }
    return latest;
}

std::optional<CFailureItem> FindPrimaryFailureItem(const CExceptionBodyMixin& body) {
    std::vector<CFailureItem> items = FlattenFailureItems(body);
    if (items.empty()) {
        return std::nullopt;
    }
    return std::move(items.back());
}

CFailureItem GetPrimaryFailureItem(const CExceptionBodyMixin& body) {
    std::optional<CFailureItem> item = FindPrimaryFailureItem(body);
    if (!item.has_value()) {
        ThrowByFailureCode(kFailureCode_UndefinedException, body, std::string());
    }
    return std::move(*item);
}

} // namespace NSLichen
