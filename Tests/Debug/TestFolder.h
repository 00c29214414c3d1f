#pragma once

#include <filesystem>
#include <string>
#include <vector>

// Between the system's paths and those with drive and "\".
std::filesystem::path ToSystemPath(const std::u16string& path);
std::u16string FromSystemPath(const std::filesystem::path& path);

std::string ReadWholeFile(const std::filesystem::path& path);

// A folder of its own below the temporary folder, gone with the object.
class CTestFolder {
public:
    CTestFolder();
    ~CTestFolder();
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    const std::filesystem::path& GetPath() const { return fPath; }
    // With "\" at its end.
    std::u16string GetText() const { return FromSystemPath(fPath) + u"\\"; }
    std::string GetUtf8Text() const;

private:
    std::filesystem::path fPath;
};
