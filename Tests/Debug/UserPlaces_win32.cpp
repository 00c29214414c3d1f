#include "Tests/Debug/TestFolder.h"

#include <windows.h>

#include <shlobj.h>

static std::filesystem::path gHome;
static int gFlushCount = 0;

void SetUserHome(const std::filesystem::path& home) {
    gHome = home;
}

int GetFileFlushCount() {
    return gFlushCount;
}

static HRESULT WINAPI FindFolder(HWND, int number, LPITEMIDLIST* item) {
    const auto path = gHome / (number == CSIDL_DESKTOP ? L"Desktop" : L"Documents");
    *item = gHome.empty() ? nullptr : ILCreateFromPathW(path.c_str());
    return *item != nullptr ? S_OK : E_FAIL;
}

static BOOL WINAPI CountFlush(HANDLE) {
    ++gFlushCount;
    return TRUE;
}

// Calls into the system's libraries go through these pointers; the program's own come first.
extern "C" {
extern decltype(&FindFolder) const __imp_SHGetSpecialFolderLocation = &FindFolder;
extern decltype(&CountFlush) const __imp_FlushFileBuffers = &CountFlush;
}
