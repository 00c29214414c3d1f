#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "Support/Loader/CDLLLoaderWin.h"
#include "Support/Modules/WideText_win32.h"

#include <windows.h>

namespace NSSupport {

namespace {

// The full path of the module; the search adds ".dll" to a name without extension. Empty when it
// finds none.
std::u16string FindModuleFile(const std::u16string& name) {
    std::u16string path(MAX_PATH, u'\0');
    for (;;) {
        const DWORD length =
            SearchPathW(nullptr, Wide(name), L".dll", static_cast<DWORD>(path.size()),
                        reinterpret_cast<wchar_t*>(path.data()), nullptr);
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(length);
    }
}

} // namespace

COpenDLLWin::~COpenDLLWin() {
    FreeLibrary(static_cast<HMODULE>(fModule));
}

IOpenDLL::Address COpenDLLWin::FindAddress(const std::string& name) const {
    return reinterpret_cast<Address>(
        reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(fModule), name.c_str())));
}

std::unique_ptr<IOpenDLL> CDLLLoaderWin::Open(const std::u16string& name) {
    const std::u16string path = FindModuleFile(name);
    const HMODULE module = path.empty() ? nullptr : LoadLibraryW(Wide(path));
    if (module == nullptr) {
        NSLichen::RaiseWithTarget(NSLichen::XNotFound("LoadLibrary failed"), NSLichen::DllWord());
    }
    return std::make_unique<COpenDLLWin>(module);
}

std::unique_ptr<IDLLLoader> MakeDLLLoader() {
    return std::make_unique<CDLLLoaderWin>();
}

} // namespace NSSupport
