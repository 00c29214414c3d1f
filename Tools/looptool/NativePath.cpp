#include "looptool/NativePath.h"

#include "looptool/ToolFailure.h"

namespace NSLoopTool {

std::u16string NativePathOfArgument(const std::string& argument) {
    std::error_code error;
    const std::filesystem::path absolute =
        std::filesystem::absolute(PathOfArgument(argument), error);
    if (error) {
        throw CToolFailure(argument + ": " + error.message());
    }
    return NativeOfAbsolutePath(absolute);
}

} // namespace NSLoopTool
