#pragma once

#include <functional>
#include <string>
#include <vector>

namespace NSLoopTool {

/// Does the work for each file in turn. One that fails is told on standard error and does not stop
/// the rest; the answer is the exit code of the worst. Ctrl-C stops it.
int ForEachFile(const std::vector<std::string>& files,
                const std::function<void(const std::string& file)>& work);

} // namespace NSLoopTool
