#include "Tests/Debug/TestFolder.h"

#include <cerrno>
#include <string>

#include <pwd.h>
#include <unistd.h>

static std::string gHome;
static int gFlushCount = 0;

void SetUserHome(const std::filesystem::path& home) {
    gHome = home.string();
}

int GetFileFlushCount() {
    return gFlushCount;
}

// The program's own functions come before those of the C library.
extern "C" int getpwuid_r(uid_t, passwd* entry, char* buffer, size_t size, passwd** found) {
    *found = nullptr;
    if (size <= gHome.size()) {
        return ERANGE;
    }
    if (!gHome.empty()) {
        *entry = {};
        buffer[gHome.copy(buffer, size - 1)] = '\0';
        entry->pw_dir = buffer;
        *found = entry;
    }
    return 0;
}

extern "C" int fsync(int) {
    ++gFlushCount;
    return 0;
}
