#include "FileLib/Platform/KnownErrors.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Raising/RaisingSteps.h"

#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

// A code, the code of the failure that it becomes, and its name in the text.
using TRow = std::tuple<uint32_t, int32_t, std::string>;

void ExpectRow(const TRow& row, void (*raise)(uint32_t), const char* before, const char* after) {
    const auto& [code, failureCode, name] = row;
    try {
        raise(code);
        ADD_FAILURE() << "nothing raised for " << name;
    } catch (const std::exception& exception) {
        EXPECT_EQ(ClassifyException(&exception).fCode, failureCode) << name;
        EXPECT_EQ(exception.what(), code == 8 ? name : before + name + after);
        EXPECT_EQ(HasTargetObjectType(GetExceptionBody(exception), FileHandleWord()), code == 4);
    }
}

TEST(KnownErrors, EveryRowOfTheErrorTable) {
    const TRow kRows[] = {TRow(0, 9, "NO_ERROR"),
                          TRow(2, 34, "ERROR_FILE_NOT_FOUND"),
                          TRow(3, 34, "ERROR_PATH_NOT_FOUND"),
                          TRow(4, 28, "ERROR_TOO_MANY_OPEN_FILES"),
                          TRow(5, 36, "ERROR_ACCESS_DENIED"),
                          TRow(8, 16, "bad allocation"),
                          TRow(15, 34, "ERROR_INVALID_DRIVE"),
                          TRow(19, 37, "ERROR_WRITE_PROTECT"),
                          TRow(21, 9, "ERROR_NOT_READY"),
                          TRow(29, 26, "ERROR_WRITE_FAULT"),
                          TRow(30, 25, "ERROR_READ_FAULT"),
                          TRow(32, 37, "ERROR_SHARING_VIOLATION"),
                          TRow(33, 37, "ERROR_LOCK_VIOLATION"),
                          TRow(39, 27, "ERROR_HANDLE_DISK_FULL"),
                          TRow(82, 29, "ERROR_CANNOT_MAKE"),
                          TRow(87, 9, "ERROR_INVALID_PARAMETER"),
                          TRow(112, 27, "ERROR_DISK_FULL"),
                          TRow(1237, 9, "ERROR_RETRY")};
    const auto raise = [](uint32_t code) { WinThrowExceptionForKnownError(code); };
    for (const TRow& row : kRows) {
        ExpectRow(row, raise, "WinThrowExceptionForKnownError(", ")");
    }
    size_t raised = 0;
    for (uint32_t code = 0; code < 2000; ++code) {
        try {
            raise(code);
        } catch (const std::exception&) {
            ++raised;
        }
    }
    EXPECT_EQ(raised, std::size(kRows)) << "every other code returns";
}

TEST(KnownErrors, EveryRowOfTheTableOfComResults) {
    for (const TRow& row : {TRow(0x80070005, 36, "E_ACCESSDENIED"),
                            TRow(0x80070015, 39, "OLE_ERROR_DEVICE_NOT_READY"),
                            TRow(0x80070035, 34, "OLE_ERROR_NETWORK_PATH_NOT_FOUND"),
                            TRow(0x80070040, 34, "OLE_ERROR_NETWORK_NAME_NO_LONGER_AVAILABLE"),
                            TRow(0x80070043, 34, "OLE_ERROR_NETWORK_NAME_NOT_FOUND"),
                            TRow(0x800704DC, 36, "OLE_ERROR_NETWORK_USER_NOT_AUTHENTICATED"),
                            TRow(0x80004005, 33, "unrecognized OLE error")}) {
        ExpectRow(row, WinHandleOLEError, "WinHandleOLEError ", "");
    }
    EXPECT_NO_THROW(WinHandleOLEError(0));
    EXPECT_NO_THROW(WinHandleOLEError(1));
}

} // namespace

} // namespace NSFileLibInternals
