#include "looptool/NativePath.h"

#include "looptool/ToolFailure.h"

#include <filesystem>

namespace NSLoopTool {

std::u16string NativePathOfArgument(const std::string& argument) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(argument, error);
    if (error) {
        throw CToolFailure(argument + ": " + error.message());
    }
    return absolute.u16string();
}

} // namespace NSLoopTool
