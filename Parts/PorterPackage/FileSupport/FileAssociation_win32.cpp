#include "PorterPackage/FileSupport/FileAssociation.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Platform/WindowsText.h"

#include <string>
#include <vector>

#include <windows.h>

#include <shlwapi.h>

namespace NSFileLibSupport {

namespace {

class CClassKey {
public:
    explicit CClassKey(const std::wstring& fileClass) {
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, fileClass.c_str(), 0, KEY_QUERY_VALUE, &fKey) !=
            ERROR_SUCCESS) {
            fKey = nullptr;
        }
    }
    ~CClassKey() {
        if (fKey != nullptr) {
            RegCloseKey(fKey);
        }
    }
    CClassKey(const CClassKey&) = delete;
    CClassKey& operator=(const CClassKey&) = delete;

    HKEY Get() const { return fKey; }

private:
    HKEY fKey = nullptr;
};

} // namespace

std::u16string FindAssociatedProgram(const std::u16string& fileClass) {
    const CClassKey key(NSFileLibInternals::WideOf<wchar_t>(fileClass));
    DWORD size = 0;
    // With no buffer the answer is the size needed, its terminator included.
    if (key.Get() != nullptr && AssocQueryStringByKeyW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, key.Get(),
                                                       nullptr, nullptr, &size) == S_FALSE) {
        std::vector<wchar_t> path(size + 1);
        if (AssocQueryStringByKeyW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, key.Get(), nullptr,
                                   path.data(), &size) == S_OK) {
            return NSFileLibInternals::Utf16Of(path.data());
        }
    }
    NSLichen::Raise(NSLichen::XNotFound("AssocQueryStringByKey failed"));
}

} // namespace NSFileLibSupport
