#pragma once

#include "looptool/CommandLine/CCommand.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace NSLoopTool {

/// Does the work of a command and answers the exit code. Raises CToolFailure when it cannot do what
/// was asked.
using RunFunction = std::function<int()>;

/// The commands of the program, and the parser of its arguments.
class CCommandLine {
public:
    CCommandLine(const std::string& description, const std::string& version);
    ~CCommandLine();
    CCommandLine(const CCommandLine&) = delete;
    CCommandLine& operator=(const CCommandLine&) = delete;

    /// `run` is called when the arguments name the command and hold no fault.
    CCommand AddCommand(const std::string& name, const std::string& description, RunFunction run);

    /// What the arguments ask for. Empty when they asked for help or the version, which is printed.
    /// CToolFailure, with the exit code of wrong usage, for any fault: one line that says which.
    RunFunction Parse(std::vector<std::string> arguments);

private:
    void CheckCommand(const std::vector<std::string>& arguments) const;

    std::unique_ptr<CLI::App> fApp;
    RunFunction fChosen;
};

} // namespace NSLoopTool
