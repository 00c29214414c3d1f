#include "Support/Modules/OwnModule_win32.h"
#include "Support/Modules/WideText_win32.h"
#include "Support/Version/VersionInfo.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <vector>

namespace NSSupport {

namespace {

class CVersionInfoWin : public IVersionInfo {
public:
    explicit CVersionInfoWin(std::vector<uint8_t> block) : fBlock(std::move(block)) {}

    std::optional<SVersionLanguage> GetLanguage() const override {
        void* data = nullptr;
        UINT size = 0;
        if (!VerQueryValueW(fBlock.data(), L"\\VarFileInfo\\Translation", &data, &size) ||
            size < 2 * sizeof(WORD)) {
            return std::nullopt;
        }
        const auto* const words = static_cast<const WORD*>(data);
        return SVersionLanguage{words[0], words[1]};
    }

    std::optional<std::string> GetText(const std::string& subBlock) const override {
        void* data = nullptr;
        UINT length = 0;
        const std::u16string path = NSTextPackage::Utf8ToUtf16Default(subBlock);
        if (!VerQueryValueW(fBlock.data(), Wide(path), &data, &length)) {
            return std::nullopt;
        }
        // A damaged block may claim more than it holds, or call a text binary and count its bytes.
        const auto* const units = static_cast<const char16_t*>(data);
        const auto* const end = reinterpret_cast<const char16_t*>(fBlock.data() + fBlock.size());
        std::u16string text(units, std::min<size_t>(length, static_cast<size_t>(end - units)));
        // The length counts the terminator, where the resource has one.
        text.resize(std::min(text.size(), text.find(u'\0')));
        return NSTextPackage::Utf16ToUtf8(text);
    }

private:
    const std::vector<uint8_t> fBlock;
};

} // namespace

std::unique_ptr<IVersionInfo> OpenFileVersionInfo(const std::u16string& path) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(Wide(path), &ignored);
    std::vector<uint8_t> block(size);
    if (size == 0 || !GetFileVersionInfoW(Wide(path), 0, size, block.data())) {
        return nullptr;
    }
    return std::make_unique<CVersionInfoWin>(std::move(block));
}

std::unique_ptr<IVersionInfo> OpenModuleVersionInfo() {
    std::u16string path(MAX_PATH, u'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(FindOwnModule(), reinterpret_cast<wchar_t*>(path.data()),
                               static_cast<DWORD>(path.size()));
        if (length == 0) {
            return nullptr;
        }
        if (length < path.size()) {
            path.resize(length);
            return OpenFileVersionInfo(path);
        }
        path.resize(path.size() * 2);
    }
}

} // namespace NSSupport
