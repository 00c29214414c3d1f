#include "FileLib/Platform/KnownErrors.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Raising/RaisingSteps.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

// The codes that raise, each with the code of the failure and what stands behind `before` in its
// text.
std::string FindRaised(void (*raise)(uint32_t), uint32_t first, const std::string& before) {
    std::ostringstream rows;
    for (uint32_t code = first; code < first + 2000; ++code) {
        try {
            raise(code);
        } catch (const std::exception& exception) {
            const std::string text = exception.what();
            rows << code - first << ':' << ClassifyException(&exception).fCode << ' '
                 << (text.starts_with(before) ? text.substr(before.size()) : text) << ' ';
            EXPECT_EQ(HasTargetObjectType(GetExceptionBody(exception), FileHandleWord()),
                      code == 4);
        }
    }
    return rows.str();
}

TEST(KnownErrors, EveryRowOfTheErrorTableAndNoOtherCode) {
    EXPECT_EQ(FindRaised([](uint32_t code) { WinThrowExceptionForKnownError(code); }, 0,
                         "WinThrowExceptionForKnownError("),
              "0:9 NO_ERROR) 2:34 ERROR_FILE_NOT_FOUND) 3:34 ERROR_PATH_NOT_FOUND) "
              "4:28 ERROR_TOO_MANY_OPEN_FILES) 5:36 ERROR_ACCESS_DENIED) 8:16 bad allocation "
              "15:34 ERROR_INVALID_DRIVE) 19:37 ERROR_WRITE_PROTECT) 21:9 ERROR_NOT_READY) "
              "29:26 ERROR_WRITE_FAULT) 30:25 ERROR_READ_FAULT) 32:37 ERROR_SHARING_VIOLATION) "
              "33:37 ERROR_LOCK_VIOLATION) 39:27 ERROR_HANDLE_DISK_FULL) 82:29 ERROR_CANNOT_MAKE) "
              "87:9 ERROR_INVALID_PARAMETER) 112:27 ERROR_DISK_FULL) 1237:9 ERROR_RETRY) ");
}

TEST(KnownErrors, EveryRowOfTheTableOfComResults) {
    EXPECT_EQ(FindRaised(WinThrowExceptionForKnownOLEError, 0x80070000, "WinHandleOLEError "),
              "5:36 E_ACCESSDENIED 21:39 OLE_ERROR_DEVICE_NOT_READY "
              "53:34 OLE_ERROR_NETWORK_PATH_NOT_FOUND "
              "64:34 OLE_ERROR_NETWORK_NAME_NO_LONGER_AVAILABLE "
              "67:34 OLE_ERROR_NETWORK_NAME_NOT_FOUND "
              "1244:36 OLE_ERROR_NETWORK_USER_NOT_AUTHENTICATED ");
    const std::string all = FindRaised(WinHandleOLEError, 0x80070000, "WinHandleOLEError ");
    EXPECT_TRUE(all.starts_with("0:33 unrecognized OLE error 1:33 unrecognized OLE error "));
    EXPECT_NE(all.find(" 5:36 E_ACCESSDENIED 6:33 unrecognized"), std::string::npos);
    EXPECT_EQ(FindRaised(WinHandleOLEError, 0, ""), "") << "successes";
}

} // namespace

} // namespace NSFileLibInternals
