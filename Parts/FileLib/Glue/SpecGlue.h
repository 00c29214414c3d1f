#pragma once

#include "FileLib/Glue/TSpecGlue.h"
#include "FileLib/Interface/ISpecs.h"

namespace NSFileLibInternals {

class CVolumeSpecGlue final : public TSpecGlue<NSFileLib::IVolumeSpec, CVolumeSpecGlue> {
public:
    using TSpecGlue::TSpecGlue;
};

class CDirSpecGlue final : public TSpecGlue<NSFileLib::IDirSpec, CDirSpecGlue> {
public:
    using TSpecGlue::TSpecGlue;

    int32_t GetName(char16_t* name) const override;
};

class CFileSpecGlue final : public TSpecGlue<NSFileLib::IFileSpec, CFileSpecGlue> {
public:
    using TSpecGlue::TSpecGlue;

    int32_t GetName(char16_t* name) const override;
};

inline const std::u16string& PathOf(const NSFileLib::IVolumeSpec* volume) {
    return CVolumeSpecGlue::PathOf(volume);
}
inline const std::u16string& PathOf(const NSFileLib::IDirSpec* folder) {
    return CDirSpecGlue::PathOf(folder);
}
inline const std::u16string& PathOf(const NSFileLib::IFileSpec* file) {
    return CFileSpecGlue::PathOf(file);
}

/// For an operation that returns a spec: the body answers its path.
template <class TGlue, class TBody>
typename TGlue::TInterface* CreateSpec(int32_t check, int32_t* status, const TBody& body) {
    return CreateGuarded<typename TGlue::TInterface>(check, status,
                                                     [&body] { return new TGlue(body()); });
}

} // namespace NSFileLibInternals
