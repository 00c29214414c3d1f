#include "Tests/Debug/TestFolder.h"

#include "Text/UnicodeConversion.h"

#include <chrono>
#include <fstream>
#include <sstream>

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

CTestFolder::CTestFolder() {
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    fPath = std::filesystem::temp_directory_path() / ("LoopDebugTest" + std::to_string(now));
    std::filesystem::create_directory(fPath);
}

CTestFolder::~CTestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(fPath, ignored);
}

std::string CTestFolder::GetUtf8Text() const {
    return NSTextPackage::Utf16ToUtf8(GetText());
}
