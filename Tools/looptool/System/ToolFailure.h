#pragma once

#include <stdexcept>
#include <string>

namespace NSLoopTool {

/// Exit codes of the tool: 0 is success.
constexpr int kExitCode_Usage = 1;
constexpr int kExitCode_Failed = 2;
constexpr int kExitCode_Interrupted = 130; // as shells say it of a program ended by Ctrl-C

/// What ends a command: a text that names the file and what was wrong with it.
class CToolFailure : public std::runtime_error {
public:
    explicit CToolFailure(const std::string& text, int exitCode = kExitCode_Failed)
        : std::runtime_error(text), fExitCode(exitCode) {}

    int GetExitCode() const { return fExitCode; }

private:
    int fExitCode;
};

} // namespace NSLoopTool
