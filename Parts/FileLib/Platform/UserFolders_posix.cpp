#include "FileLib/Platform/UserFolders_posix.h"

#include <cerrno>
#include <fstream>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NSFileLibInternals {

namespace {

// The folder that a line of the form XDG_DOCUMENTS_DIR="$HOME/Documents" names, empty for other
// lines. The value is a double-quoted word of the shell: absolute or below $HOME.
std::string FolderOfLine(const std::string& line, const std::string& key, const std::string& home) {
    const size_t first = line.find_first_not_of(" \t");
    const std::string head = "XDG_" + key + "_DIR=\"";
    if (first == std::string::npos || line.compare(first, head.size(), head) != 0) {
        return {};
    }
    std::string value;
    size_t position = first + head.size();
    if (line.compare(position, 5, "$HOME") == 0) {
        value = home;
        position += 5;
    }
    while (position < line.size() && line[position] != '"') {
        if (line[position] == '\\' && position + 1 < line.size()) {
            ++position;
        }
        value += line[position++];
    }
    while (value.size() > 1 && value.back() == '/') {
        value.pop_back();
    }
    return value.starts_with('/') ? value : std::string();
}

bool IsFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::string FindUserFolder(const std::string& home, const std::string& key,
                           const std::string& fallback) {
    if (home.empty()) {
        return {};
    }
    std::ifstream file(home + "/.config/user-dirs.dirs");
    std::string found;
    for (std::string line; std::getline(file, line);) {
        const std::string folder = FolderOfLine(line, key, home);
        // The shell that usually reads the file would keep the last assignment.
        found = folder.empty() ? found : folder;
    }
    if (found.empty() && IsFolder(home + "/" + fallback)) {
        found = home + "/" + fallback;
    }
    return found;
}

std::string FindHomeFolder() {
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    int error = 0;
    while ((error = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found)) == ERANGE) {
        buffer.resize(buffer.size() * 2);
    }
    return error == 0 && found != nullptr && entry.pw_dir != nullptr ? entry.pw_dir : std::string();
}

} // namespace NSFileLibInternals
