#include "FileLib/Source/Win/KnownErrors.h"

#include "Failure/FailureQuestions.h"
#include "Failure/ObjectTypeWords.h"
#include "Failure/RaisingSteps.h"

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

struct SRow {
    uint32_t fCode;
    int32_t fFailureCode;
    const char* fText;
};

template <class Call>
void ExpectRow(const SRow& row, Call call) {
    try {
        call(row.fCode);
        FAIL() << "nothing raised for " << row.fText;
    } catch (const std::exception& exception) {
        EXPECT_EQ(NSLichen::ClassifyException(&exception).fCode, row.fFailureCode) << row.fText;
        EXPECT_STREQ(exception.what(), row.fText);
        if (row.fCode == 4) {
            EXPECT_TRUE(NSLichen::HasTargetObjectType(NSLichen::GetExceptionBody(exception),
                                                      NSLichen::FileHandleWord()));
        }
    }
}

TEST(KnownErrors, EveryRowOfTheErrorTable) {
    const SRow kRows[] = {
        {0, 9, "WinThrowExceptionForKnownError(NO_ERROR)"},
        {2, 34, "WinThrowExceptionForKnownError(ERROR_FILE_NOT_FOUND)"},
        {3, 34, "WinThrowExceptionForKnownError(ERROR_PATH_NOT_FOUND)"},
        {4, 28, "WinThrowExceptionForKnownError(ERROR_TOO_MANY_OPEN_FILES)"},
        {5, 36, "WinThrowExceptionForKnownError(ERROR_ACCESS_DENIED)"},
        {8, 16, "bad allocation"},
        {15, 34, "WinThrowExceptionForKnownError(ERROR_INVALID_DRIVE)"},
        {19, 37, "WinThrowExceptionForKnownError(ERROR_WRITE_PROTECT)"},
        {21, 9, "WinThrowExceptionForKnownError(ERROR_NOT_READY)"},
        {29, 26, "WinThrowExceptionForKnownError(ERROR_WRITE_FAULT)"},
        {30, 25, "WinThrowExceptionForKnownError(ERROR_READ_FAULT)"},
        {32, 37, "WinThrowExceptionForKnownError(ERROR_SHARING_VIOLATION)"},
        {33, 37, "WinThrowExceptionForKnownError(ERROR_LOCK_VIOLATION)"},
        {39, 27, "WinThrowExceptionForKnownError(ERROR_HANDLE_DISK_FULL)"},
        {82, 29, "WinThrowExceptionForKnownError(ERROR_CANNOT_MAKE)"},
        {87, 9, "WinThrowExceptionForKnownError(ERROR_INVALID_PARAMETER)"},
        {112, 27, "WinThrowExceptionForKnownError(ERROR_DISK_FULL)"},
        {1237, 9, "WinThrowExceptionForKnownError(ERROR_RETRY)"},
    };
    size_t raised = 0;
    for (uint32_t code = 0; code < 2000; ++code) {
        try {
            WinThrowExceptionForKnownError(code);
        } catch (const std::exception&) {
            ++raised;
        }
    }
    EXPECT_EQ(raised, std::size(kRows)) << "every other code returns";
    for (const SRow& row : kRows) {
        ExpectRow(row, [](uint32_t code) { WinThrowExceptionForKnownError(code); });
    }
}

TEST(KnownErrors, EveryRowOfTheTableOfComResults) {
    for (const SRow& row : {
             SRow{0x80070005, 36, "WinHandleOLEError E_ACCESSDENIED"},
             SRow{0x80070015, 39, "WinHandleOLEError OLE_ERROR_DEVICE_NOT_READY"},
             SRow{0x80070035, 34, "WinHandleOLEError OLE_ERROR_NETWORK_PATH_NOT_FOUND"},
             SRow{0x80070040, 34, "WinHandleOLEError OLE_ERROR_NETWORK_NAME_NO_LONGER_AVAILABLE"},
             SRow{0x80070043, 34, "WinHandleOLEError OLE_ERROR_NETWORK_NAME_NOT_FOUND"},
             SRow{0x800704DC, 36, "WinHandleOLEError OLE_ERROR_NETWORK_USER_NOT_AUTHENTICATED"},
             SRow{0x80004005, 33, "WinHandleOLEError unrecognized OLE error"},
         }) {
        ExpectRow(row, [](uint32_t code) { WinHandleOLEError(code); });
    }
    EXPECT_NO_THROW(WinHandleOLEError(0));
    EXPECT_NO_THROW(WinHandleOLEError(1));
}

} // namespace

} // namespace NSFileLibInternals
