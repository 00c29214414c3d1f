#include "Fuzz/CByteSource.h"
#include "Fuzz/Promise.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"
#include "FileLib/Rules/PosixNameCodec.h"

#include <sstream>
#include <string>

namespace {

using namespace NSFileLibInternals;

// Every path that a POSIX system allows, repeated "/" folded, comes back byte for byte.
void CheckCodec(const std::string& path) {
    std::string folded = "/";
    std::istringstream components(path);
    for (std::string component; std::getline(components, component, '/');) {
        std::erase(component, '\0');
        component.resize(std::min<size_t>(component.size(), 255));
        if (!component.empty()) {
            PROMISE(IsValidFileName(NativeNameFromPosix(component)));
            PROMISE(PosixNameFromNative(NativeNameFromPosix(component)) == component);
            folded += component + '/';
        }
    }
    if (folded.size() > 1 && path.back() != '/') {
        folded.pop_back();
    }
    const std::u16string native = NativeFromPosix(folded);
    PROMISE(IsPathWithin(native, kMinPathLength, kNoPathLimit));
    PROMISE(PosixFromNative(native) == folded);
}

void CheckMaking(const std::u16string& name, size_t limit) {
    std::u16string stem;
    std::u16string extension;
    SplitFileName(name, stem, extension);
    PROMISE(stem + extension == name);
    std::u16string folder;
    std::u16string last;
    SplitPath(name, folder, last);
    PROMISE(folder + last == name);
    try {
        const std::u16string made = MakeValidFileName(name, limit);
        // A reserved name grows by one behind the cut.
        PROMISE(made.size() <= std::min<size_t>(limit, kMaxNameLength) + 1);
        PROMISE(!IsReservedName(made) || made.empty());
    } catch (const NSLichen::XOutOfSpace&) {
    }
    WinIsValidPath(name);
    WinIsValidVolumePath(name);
}

} // namespace

// Name and path rules on any text, and the translation of POSIX paths both ways.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    const size_t limit = source.Byte() + size_t{1};
    const std::vector<uint8_t> rest = source.Rest();
    CheckCodec({rest.begin(), rest.end()});
    CheckMaking({rest.begin(), rest.end()}, limit);
    std::u16string units;
    for (size_t i = 0; i + 1 < rest.size(); i += 2) {
        units.push_back(static_cast<char16_t>(rest[i] << 8 | rest[i + 1]));
    }
    CheckMaking(units, limit);
    PosixFromNative(units);
    return 0;
}
