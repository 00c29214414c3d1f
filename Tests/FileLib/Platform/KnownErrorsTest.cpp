#include "FileLib/Platform/KnownErrors.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Raising/RaisingSteps.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

// Codes that raise, each with the code of the failure and what stands after `before` in its text.
std::map<uint32_t, std::string> FindRaised(void (*raise)(uint32_t), uint32_t first, uint32_t end,
                                           const std::string& before) {
    std::map<uint32_t, std::string> rows;
    for (uint32_t code = first; code < end; ++code) {
        try {
            raise(code);
        } catch (const std::exception& exception) {
            const std::string text = exception.what();
            rows[code] = std::to_string(ClassifyException(&exception).fCode) + " " +
                         (text.starts_with(before) ? text.substr(before.size()) : text);
            EXPECT_EQ(HasTargetObjectType(GetExceptionBody(exception), FileHandleWord()),
                      code == 4);
        }
    }
    return rows;
}

TEST(KnownErrors, EveryRowOfTheErrorTableAndNoOtherCode) {
    const std::map<uint32_t, std::string> kRows = {{0, "9 NO_ERROR)"},
                                                   {2, "34 ERROR_FILE_NOT_FOUND)"},
                                                   {3, "34 ERROR_PATH_NOT_FOUND)"},
                                                   {4, "28 ERROR_TOO_MANY_OPEN_FILES)"},
                                                   {5, "36 ERROR_ACCESS_DENIED)"},
                                                   {8, "16 bad allocation"},
                                                   {15, "34 ERROR_INVALID_DRIVE)"},
                                                   {19, "37 ERROR_WRITE_PROTECT)"},
                                                   {21, "9 ERROR_NOT_READY)"},
                                                   {29, "26 ERROR_WRITE_FAULT)"},
                                                   {30, "25 ERROR_READ_FAULT)"},
                                                   {32, "37 ERROR_SHARING_VIOLATION)"},
                                                   {33, "37 ERROR_LOCK_VIOLATION)"},
                                                   {39, "27 ERROR_HANDLE_DISK_FULL)"},
                                                   {82, "29 ERROR_CANNOT_MAKE)"},
                                                   {87, "9 ERROR_INVALID_PARAMETER)"},
                                                   {112, "27 ERROR_DISK_FULL)"},
                                                   {1237, "9 ERROR_RETRY)"}};
    const auto raise = [](uint32_t code) { WinThrowExceptionForKnownError(code); };
    EXPECT_EQ(FindRaised(raise, 0, 2000, "WinThrowExceptionForKnownError("), kRows);
}

TEST(KnownErrors, EveryRowOfTheTableOfComResults) {
    std::map<uint32_t, std::string> rows = {
        {0x80070005, "36 E_ACCESSDENIED"},
        {0x80070015, "39 OLE_ERROR_DEVICE_NOT_READY"},
        {0x80070035, "34 OLE_ERROR_NETWORK_PATH_NOT_FOUND"},
        {0x80070040, "34 OLE_ERROR_NETWORK_NAME_NO_LONGER_AVAILABLE"},
        {0x80070043, "34 OLE_ERROR_NETWORK_NAME_NOT_FOUND"},
        {0x800704DC, "36 OLE_ERROR_NETWORK_USER_NOT_AUTHENTICATED"}};
    EXPECT_EQ(
        FindRaised(WinThrowExceptionForKnownOLEError, 0x80070000, 0x80070800, "WinHandleOLEError "),
        rows);
    for (uint32_t code = 0x80070000; code < 0x80070800; ++code) {
        rows.emplace(code, "33 unrecognized OLE error");
    }
    EXPECT_EQ(FindRaised(WinHandleOLEError, 0x80070000, 0x80070800, "WinHandleOLEError "), rows);
    EXPECT_TRUE(FindRaised(WinHandleOLEError, 0, 2000, "").empty()) << "successes";
}

} // namespace

} // namespace NSFileLibInternals
