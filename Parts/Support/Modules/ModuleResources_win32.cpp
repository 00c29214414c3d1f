#include "Support/Modules/ModuleResources.h"

#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "Support/Modules/OwnModule_win32.h"
#include "Support/Modules/WideText_win32.h"
#include "Text/Comparison.h"
#include "Text/UnicodeConversion.h"

namespace NSSupport {

namespace {

BOOL CALLBACK AddName(HMODULE, const wchar_t*, wchar_t* name, LONG_PTR names) {
    if (!IS_INTRESOURCE(name)) {
        const std::u16string text(reinterpret_cast<const char16_t*>(name));
        // NOLINTNEXTLINE(performance-no-int-to-ptr): how the call hands on its argument.
        reinterpret_cast<std::vector<std::string>*>(names)->push_back(
            NSTextPackage::Utf16ToUtf8(NSTextPackage::ToLowerUtf16(text)));
    }
    return TRUE;
}

} // namespace

std::unique_ptr<NSPorter::CMedia> OpenModuleResource(const std::string& kind,
                                                     const std::string& name) {
    const HMODULE module = FindOwnModule();
    const HRSRC resource = FindResourceW(module, Wide(NSTextPackage::Utf8ToUtf16Default(name)),
                                         Wide(NSTextPackage::Utf8ToUtf16Default(kind)));
    if (resource == nullptr) {
        return nullptr;
    }
    // Both stay valid while the module is loaded; there is nothing to give back.
    const HGLOBAL loaded = LoadResource(module, resource);
    const void* const data = loaded == nullptr ? nullptr : LockResource(loaded);
    if (data == nullptr) {
        return nullptr;
    }
    return std::make_unique<NSPorter::CMemoryMedia>(
        static_cast<int64_t>(SizeofResource(module, resource)), static_cast<const uint8_t*>(data));
}

std::vector<std::string> ListModuleResources(const std::string& kind) {
    std::vector<std::string> names;
    EnumResourceNamesW(FindOwnModule(), Wide(NSTextPackage::Utf8ToUtf16Default(kind)), AddName,
                       reinterpret_cast<LONG_PTR>(&names));
    return names;
}

} // namespace NSSupport
