// Shell links and special folders.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/WindowsText.h"

#include <string>

#include <windows.h>

#include <objbase.h>
#include <objidl.h>
#include <shlobj.h>

namespace NSFileLibInternals {

namespace {

uint32_t ResultOf(HRESULT result) {
    return static_cast<uint32_t>(result);
}

// COM for this thread while a link is at work. A host that has set it up another way already keeps
// its own.
class CComScope {
public:
    CComScope() : fResult(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~CComScope() {
        if (SUCCEEDED(fResult)) {
            CoUninitialize();
        }
    }
    CComScope(const CComScope&) = delete;
    CComScope& operator=(const CComScope&) = delete;

private:
    HRESULT fResult;
};

// An owned reference on a COM object.
template <class Interface>
class CComReference {
public:
    CComReference() = default;
    ~CComReference() {
        if (fObject != nullptr) {
            fObject->Release();
        }
    }
    CComReference(const CComReference&) = delete;
    CComReference& operator=(const CComReference&) = delete;

    Interface* operator->() const { return fObject; }
    void** GetPlace() { return reinterpret_cast<void**>(&fObject); }

private:
    Interface* fObject = nullptr;
};

class CShellLink {
public:
    HRESULT Create() {
        const HRESULT result = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER,
                                                IID_IShellLinkW, fLink.GetPlace());
        return FAILED(result) ? result : fLink->QueryInterface(IID_IPersistFile, fFile.GetPlace());
    }

    HRESULT Save(const std::u16string& path, const std::u16string& source,
                 const std::u16string& description) {
        HRESULT result = fLink->SetPath(WideOf<wchar_t>(source).c_str());
        if (SUCCEEDED(result)) {
            result = fLink->SetDescription(WideOf<wchar_t>(description).c_str());
        }
        return SUCCEEDED(result) ? fFile->Save(WideOf<wchar_t>(path).c_str(), TRUE) : result;
    }

    HRESULT Load(const std::u16string& path) {
        return fFile->Load(WideOf<wchar_t>(path).c_str(), STGM_READ);
    }

    HRESULT GetTarget(PIDLIST_ABSOLUTE& target) { return fLink->GetIDList(&target); }

private:
    CComScope fCom;
    CComReference<IShellLinkW> fLink;
    CComReference<IPersistFile> fFile;
};

ShellItem TakeItem(PIDLIST_ABSOLUTE list) {
    ShellItem item;
    if (list != nullptr) {
        try {
            const auto* const bytes = reinterpret_cast<const uint8_t*>(list);
            item.assign(bytes, bytes + ILGetSize(list));
        } catch (...) {
            CoTaskMemFree(list);
            throw;
        }
        CoTaskMemFree(list);
    }
    return item;
}

} // namespace

uint32_t CSystemFileOps::LocateSpecialFolder(int32_t number, ShellItem& item) {
    PIDLIST_ABSOLUTE list = nullptr;
    const HRESULT result = SHGetSpecialFolderLocation(nullptr, number, &list);
    if (SUCCEEDED(result)) {
        item = TakeItem(list);
    }
    return ResultOf(result);
}

uint32_t CSystemFileOps::CreateShellLink(const std::u16string& link, const std::u16string& source,
                                         const std::u16string& description) {
    CShellLink shellLink;
    const HRESULT result = shellLink.Create();
    return ResultOf(FAILED(result) ? result : shellLink.Save(link, source, description));
}

uint32_t CSystemFileOps::LoadShellLink(const std::u16string& link, ShellItem& target,
                                       ELinkStep& step) {
    step = ELinkStep::kCreate;
    CShellLink shellLink;
    HRESULT result = shellLink.Create();
    if (FAILED(result)) {
        return ResultOf(result);
    }
    step = ELinkStep::kLoad;
    result = shellLink.Load(link);
    if (FAILED(result)) {
        return ResultOf(result);
    }
    step = ELinkStep::kGetTarget;
    PIDLIST_ABSOLUTE list = nullptr;
    result = shellLink.GetTarget(list);
    if (FAILED(result)) {
        return ResultOf(result);
    }
    step = ELinkStep::kDone;
    target = TakeItem(list);
    return ResultOf(result);
}

bool CSystemFileOps::ReadShellItemPath(const ShellItem& item, std::u16string& path) {
    wchar_t buffer[MAX_PATH + 1] = {};
    // Vectors hold their bytes at the alignment that any structure wants.
    const auto* const list = reinterpret_cast<PCIDLIST_ABSOLUTE>(item.data());
    if (item.empty() || !SHGetPathFromIDListW(list, buffer)) {
        return false;
    }
    path = Utf16Of(buffer);
    return true;
}

} // namespace NSFileLibInternals
