#pragma once

#include <functional>
#include <string>
#include <vector>

namespace NSLoopTool {

/// The regular files among `paths` and below the folders among them, each folder's in the order of
/// their names; links to folders are not followed. What cannot be walked is told to `complain` and
/// passed over; a path that is not there raises CToolFailure.
std::vector<std::string> FilesBelow(const std::vector<std::string>& paths,
                                    const std::function<void(const std::string& words)>& complain);

} // namespace NSLoopTool
