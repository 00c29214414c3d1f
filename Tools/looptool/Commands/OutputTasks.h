#pragma once

#include <functional>
#include <string>
#include <vector>

namespace NSLoopTool {

// What becomes of the files of a command that writes one or several outputs.

struct SOutputTask {
    std::string fInput;
    std::string fOutput;
};

/// Whether the output is a folder: for several inputs, where one stands, and where the path says so
/// by its end. CToolFailure, with the exit code of wrong usage, for several inputs to "-".
bool IsFolderOutput(const std::vector<std::string>& inputs, const std::string& output);

/// The inputs in the label of a progress bar.
std::string NameOfAll(const std::vector<std::string>& inputs);

/// A file in a folder.
std::string PathInFolder(const std::string& folder, const std::string& name);

/// CToolFailure, with the exit code of wrong usage, where two inputs would get one name.
void RefuseSameNames(const std::vector<std::string>& inputs,
                     const std::function<std::string(const std::string& input)>& nameOf);

/// The output of each input: the path itself, or in a folder the input's name with the suffix,
/// which has its point. The folder is made.
std::vector<SOutputTask> PlanOutputs(const std::vector<std::string>& inputs,
                                     const std::string& output, bool isFolder,
                                     const std::string& suffix);

} // namespace NSLoopTool
