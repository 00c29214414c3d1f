#pragma once

#include <filesystem>
#include <string>

// From a path with drive and "\", of plain names.
std::filesystem::path ToSystemPath(std::u16string text);

std::string ReadWholeFile(const std::filesystem::path& path);

// A folder of its own below the temporary folder, gone with the object.
class CTestFolder {
public:
    CTestFolder();
    ~CTestFolder();
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    const std::filesystem::path& GetPath() const { return fPath; }
    // With drive, and "\" at its end.
    std::u16string GetText() const;
    std::string GetUtf8Text() const;

private:
    std::filesystem::path fPath;
};

// This program stands in for what the system knows of the user, so that no test writes into a
// person's folders: they are "Documents" and "Desktop" below this one. At first, and with an empty
// path again, there is no user.
void SetUserHome(const std::filesystem::path& home);

// How often a file was told to reach its disk.
int GetFileFlushCount();
