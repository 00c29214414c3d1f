#include "looptool/Commands/OutputTasks.h"

#include "looptool/Console/SafeText.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Files/InputFile.h"
#include "looptool/Loop/SliceFiles.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <map>

namespace NSLoopTool {

bool IsFolderOutput(const std::vector<std::string>& inputs, const std::string& output) {
    if (inputs.size() > 1 && output == "-") {
        throw CToolFailure("several files go to a folder, not to standard output", kExitCode_Usage);
    }
    const std::filesystem::path path = PathOfArgument(output);
    std::error_code error;
    return inputs.size() > 1 || (!output.empty() && path.filename().empty()) ||
           std::filesystem::is_directory(path, error);
}

std::string NameOfAll(const std::vector<std::string>& inputs) {
    return inputs.size() == 1 ? InputName(inputs.front())
                              : std::to_string(inputs.size()) + " files";
}

std::string PathInFolder(const std::string& folder, const std::string& name) {
    return ArgumentOfPath(PathOfArgument(folder) / PathOfArgument(name));
}

void RefuseSameNames(const std::vector<std::string>& inputs,
                     const std::function<std::string(const std::string& input)>& nameOf) {
    std::map<std::string, std::string> makers;
    for (const std::string& input : inputs) {
        const std::string name = nameOf(input);
        const auto [maker, isNew] = makers.try_emplace(name, input);
        if (!isNew) {
            throw CToolFailure(SafeText(maker->second) + " and " + SafeText(input) +
                                   " would both become " + SafeText(name),
                               kExitCode_Usage);
        }
    }
}

std::vector<SOutputTask> PlanOutputs(const std::vector<std::string>& inputs,
                                     const std::string& output, bool isFolder,
                                     const std::string& suffix) {
    if (!isFolder) {
        return {{inputs.front(), output}};
    }
    const auto nameOf = [&suffix](const std::string& input) { return StemOf(input) + suffix; };
    RefuseSameNames(inputs, nameOf);
    MakeFolder(output);
    std::vector<SOutputTask> tasks;
    tasks.reserve(inputs.size());
    for (const std::string& input : inputs) {
        tasks.push_back({input, PathInFolder(output, nameOf(input))});
    }
    return tasks;
}

} // namespace NSLoopTool
