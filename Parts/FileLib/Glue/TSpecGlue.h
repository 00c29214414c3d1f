#pragma once

#include "Failure/Classes/XLogicErrors.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Interface/ISpecs.h"
#include "Text/Comparison.h"

#include <cstdint>
#include <string>
#include <utility>

namespace NSFileLibInternals {

/// What the three kinds of spec share: a native path behind one of the interfaces. TGlue is the
/// class itself. An empty path makes an invalid object.
template <class ISpec, class TGlue>
class TSpecGlue : public ISpec {
public:
    using TInterface = ISpec;

    explicit TSpecGlue(std::u16string path) : fPath(std::move(path)) {}

    ISpec* CreateCopy(int32_t* status) const override {
        return CreateGuarded<ISpec>(CheckCall(IsValid(), {}), status,
                                    [this] { return new TGlue(fPath); });
    }

    int32_t IsEqual(const ISpec* other, int32_t* equal) const override {
        const int32_t check = CheckCall(IsValid(), {other, equal});
        return RunGuarded(check, [&] {
            PutUnfinished(equal);
            PutFlag(equal, NSTextPackage::TextEqualsIgnoreCase(fPath, PathOf(other)));
        });
    }

    int32_t IsValid() const override { return fPath.empty() ? 0 : 1; }

    /// The path of a spec of this library. XInvariantCorrupt for an invalid one, or one of another
    /// making.
    static const std::u16string& PathOf(const ISpec* spec) {
        const auto* const own = dynamic_cast<const TGlue*>(spec);
        if (own == nullptr || own->IsValid() == 0) {
            NSLichen::Raise(NSLichen::XInvariantCorrupt(""));
        }
        return own->fPath;
    }

private:
    std::u16string fPath;
};

} // namespace NSFileLibInternals
