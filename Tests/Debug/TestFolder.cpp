#include "Tests/Debug/TestFolder.h"

#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

fs::path ToSystemPath(std::u16string text) {
    if (fs::path::preferred_separator == '/') {
        text.erase(0, 2); // "C:"
        std::replace(text.begin(), text.end(), u'\\', u'/');
    }
    return text;
}

std::string ReadWholeFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

CTestFolder::CTestFolder() {
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    fPath = fs::temp_directory_path() / ("LoopDebugTest" + std::to_string(now));
    fs::create_directory(fPath);
}

CTestFolder::~CTestFolder() {
    std::error_code ignored;
    fs::remove_all(fPath, ignored);
}

std::u16string CTestFolder::GetText() const {
    std::u16string text = fPath.u16string() + u"\\";
    std::replace(text.begin(), text.end(), u'/', u'\\');
    return text.front() == u'\\' ? u"C:" + text : text;
}

std::string CTestFolder::GetUtf8Text() const {
    return NSTextPackage::Utf16ToUtf8(GetText());
}
