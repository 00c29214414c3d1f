#include "looptool/Files/FolderWalk.h"

#include "looptool/Console/SafeText.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <filesystem>

namespace NSLoopTool {

namespace fs = std::filesystem;

std::vector<std::string> FilesBelow(const std::vector<std::string>& paths,
                                    const std::function<void(const std::string& words)>& complain) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        std::error_code error;
        const fs::file_status status = fs::status(PathOfArgument(path), error);
        if (!fs::exists(status)) {
            throw CToolFailure(SafeText(path) + ": no such file or folder");
        }
        if (!fs::is_directory(status)) {
            files.push_back(path);
            continue;
        }
        const auto first = static_cast<std::ptrdiff_t>(files.size());
        fs::recursive_directory_iterator walk(PathOfArgument(path), error);
        while (!error && walk != fs::recursive_directory_iterator()) {
            StopIfInterrupted();
            std::error_code unknown;
            if (walk->is_regular_file(unknown)) {
                files.push_back(ArgumentOfPath(walk->path()));
            }
            const fs::path here = walk->path();
            walk.increment(error);
            if (error) {
                complain(SafeText(ArgumentOfPath(here)) + ": " + error.message());
                walk.disable_recursion_pending();
                error.clear();
                walk.increment(error);
            }
        }
        if (error) {
            complain(SafeText(path) + ": " + error.message());
        }
        std::sort(files.begin() + first, files.end());
    }
    return files;
}

} // namespace NSLoopTool
