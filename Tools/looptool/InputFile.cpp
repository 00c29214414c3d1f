#include "looptool/InputFile.h"

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/FileSupport/COpenReadFileBridge.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"
#include "looptool/NativePath.h"
#include "looptool/ToolFailure.h"

#include <exception>
#include <limits>

namespace NSLoopTool {

namespace {

constexpr int64_t kMaxBytes = std::numeric_limits<int32_t>::max();

std::string Reason(const std::exception& exception) {
    if (dynamic_cast<const NSLichen::XNotFound*>(&exception) != nullptr) {
        return "no such file";
    }
    if (dynamic_cast<const NSLichen::XPermission*>(&exception) != nullptr) {
        return "may not be read";
    }
    if (dynamic_cast<const NSLichen::XLocked*>(&exception) != nullptr) {
        return "in use by another program";
    }
    return "cannot be read";
}

std::vector<uint8_t> ReadAll(const std::u16string& nativePath, const std::string& path) {
    const NSFileLibSupport::COpenReadFileBridge file(NSFileLibSupport::MakeFileSpec(nativePath));
    const int64_t length = file.GetLength();
    if (length == 0) {
        throw CToolFailure(path + ": is empty");
    }
    if (length > kMaxBytes) {
        throw CToolFailure(path + ": too large");
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(length));
    file.ReadBytes(0, length, bytes.data());
    return bytes;
}

} // namespace

std::vector<uint8_t> ReadInputFile(const std::string& path) {
    try {
        return ReadAll(NativePathOfArgument(path), path);
    } catch (const CToolFailure&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& exception) {
        throw CToolFailure(path + ": " + Reason(exception));
    }
}

} // namespace NSLoopTool
