#include "Text/NumberGrouping.h"

#include "Text/PlatformText.h"

#include <locale>
#include <utility>

namespace NSTextPackage {

namespace {

using Unit = std::wios::char_type;

// The number format of a named locale with a grouping of its own. The base is that of the one
// locale that every standard library knows: only the signs differ, and the system tells those.
class CNumPunctGroupingOverride : public std::numpunct_byname<Unit> {
public:
    CNumPunctGroupingOverride(const std::string& localeName, std::string grouping)
        : std::numpunct_byname<Unit>("C"), fLocaleName(localeName),
          fSigns(PlatformNumberSigns(localeName)), fGrouping(std::move(grouping)) {}

    bool Is(const std::string& localeName, const std::string& grouping) const {
        return fLocaleName == localeName && fGrouping == grouping;
    }

protected:
    ~CNumPunctGroupingOverride() override = default;
    Unit do_decimal_point() const override { return fSigns.fDecimalPoint; }
    Unit do_thousands_sep() const override { return fSigns.fGroupSeparator; }
    std::string do_grouping() const override { return fGrouping; }

private:
    // A locale that holds a facet of ours has no name any more ("*"), so the name is kept here.
    std::string fLocaleName;
    SNumberSigns fSigns;
    std::string fGrouping;
};

bool HasFormat(const std::wios& stream, const std::string& localeName,
               const std::string& grouping) {
    const std::locale locale = stream.getloc();
    const auto* facet = dynamic_cast<const CNumPunctGroupingOverride*>(
        &std::use_facet<std::numpunct<Unit>>(locale));
    return facet != nullptr && facet->Is(localeName, grouping);
}

} // namespace

void SetNumberGrouping(int32_t mode, std::wios& stream, const std::string& localeName,
                       const std::string& grouping) {
    const bool wanted =
        mode == kNumberGrouping_Always ||
        (mode == kNumberGrouping_WhenDifferent && !HasFormat(stream, localeName, grouping));
    if (wanted) {
        // The locale owns its facets and deletes them.
        stream.imbue(
            std::locale(stream.getloc(), new CNumPunctGroupingOverride(localeName, grouping)));
    }
}

} // namespace NSTextPackage
