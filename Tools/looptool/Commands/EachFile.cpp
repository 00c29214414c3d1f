#include "looptool/Commands/EachFile.h"

#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cstdio>

namespace NSLoopTool {

int ForEachFile(const std::vector<std::string>& files,
                const std::function<void(const std::string& file)>& work) {
    int exitCode = 0;
    for (const std::string& file : files) {
        try {
            work(file);
        } catch (const CToolFailure& failure) {
            if (files.size() == 1 || failure.GetExitCode() == kExitCode_Interrupted) {
                throw;
            }
            std::fflush(stdout);
            std::fprintf(stderr, "looptool: %s\n", failure.what());
            exitCode = std::max(exitCode, failure.GetExitCode());
        }
    }
    return exitCode;
}

} // namespace NSLoopTool
