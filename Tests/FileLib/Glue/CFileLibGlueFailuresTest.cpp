#include "FileLib/Glue/FileLibFailures.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Chain/PartKeys.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "Failure/Raising/RaisingSteps.h"
#include "FileLib/Glue/ByteStreamNumbers.h"
#include "FileLib/Glue/FileLibAccess.h"
#include "FileLib/Glue/GlueGuard.h"
#include "Tests/FileLib/CClientStream.h"

#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSFileLib;
using namespace NSLichen;

template <class TBody>
int32_t Guarded(const TBody& body) {
    return RunGuarded(kFileLibStatus_OK, body);
}

} // namespace

TEST(CFileLibGlueFailures, EveryRowOfTheMapGivesItsStatusAndComesBack) {
    const auto expect = [](int32_t code, int32_t status, const CFixedName& type) {
        SCOPED_TRACE(status);
        try {
            ThrowIfFileLibError(status);
            ADD_FAILURE();
        } catch (const std::exception& exception) {
            EXPECT_EQ(ClassifyException(&exception).fCode, code);
            EXPECT_EQ(GetPartValue(GetExceptionBody(exception), TargetObjectTypeKey()),
                      type.IsEmpty() ? CFailureValue() : CFailureValue::FromWord(type));
            EXPECT_EQ(CurrentExceptionStatus(), status);
        }
    };
    const int32_t codes[] = {16, 11, 15, 14, 9, 29, 37, 39, 36, 25, 26, 22, 21, 33, 34, 17};
    const int32_t statuses[] = {5001, 5002, 5003, 5004, 5005, 5007, 5010, 5011,
                                5012, 5013, 5014, 5015, 5016, 5017, 5020, 5023};
    for (size_t i = 0; i < std::size(codes); ++i) {
        expect(codes[i], statuses[i], {});
    }
    expect(41, 100000 + 0x290000BA, {});
    expect(27, 5006, DiskWord());
    expect(33, 5018, ReferenceWord());
    expect(28, 5021, FileHandleWord());
    expect(20, 5022, FileHandleWord());
    ThrowIfFileLibError(kFileLibStatus_OK);
    ThrowIfByteStreamError(kByteStreamStatus_OK);
}

TEST(CFileLibGlueFailures, AnyTargetTakesTheRowWithoutOne) {
    EXPECT_EQ(Guarded([] { Raise(XOutOfSpace("")); }), 5006);
    EXPECT_EQ(Guarded([] { RaiseWithTarget(XOutOfSpace(""), DiskWord()); }), 5006);
    EXPECT_EQ(Guarded([] { RaiseWithTarget(XResolve(""), PathWord()); }), 5017);
    EXPECT_EQ(Guarded([] { RaiseWithTarget(XOutOfItems(""), ItemWord()); }), 5021);
    EXPECT_EQ(Guarded([] { RaiseWithTarget(XAbort(""), FileWord()); }), 100000 + 0x290109BA);
    EXPECT_THROW(ThrowIfFileLibError(5019), XNotFound);
    EXPECT_THROW(ThrowIfFileLibError(4999), NSLichenDetails::XStdException);
}

TEST(CFileLibGlueFailures, NothingLeavesTheGuardButAStatus) {
    EXPECT_EQ(Guarded([] {}), 5000);
    EXPECT_EQ(Guarded([] { throw 5; }), 5023);
    EXPECT_EQ(Guarded([] { throw std::bad_alloc(); }), 5001);
    // A chain that names no failure cannot be encoded.
    EXPECT_EQ(Guarded([] {
                  CExceptionBodyMixin body{CFailureSite()};
                  body.fItems.emplace_back();
                  throw XOpen(body, "");
              }),
              5023);
    EXPECT_EQ(GetCurrentExceptionCode(CFailureSite()), 5023);
}

TEST(CFileLibGlueFailures, NumbersAreBigEndianAndAClientsStatusGoesThroughUnchanged) {
    CClientStream stream;
    int64_t end = 0;
    WriteU32(stream, end, 0x81020304u);
    WriteU8(stream, end, 0xFE);
    EXPECT_EQ(stream.fBytes, (std::vector<uint8_t>{0x81, 2, 3, 4, 0xFE}));
    end = 0;
    EXPECT_EQ(ReadU32(stream, end), 0x81020304u);
    EXPECT_EQ(ReadU8(stream, end), 0xFE);
    EXPECT_EQ(end, 5);
    for (const int32_t status : {100077, 100000 + 0x160109BA, -2}) {
        stream.fBytes = {1, 2, 3, 4};
        stream.fStatus = status;
        int64_t position = 0;
        EXPECT_EQ(Guarded([&] { ReadU32(stream, position); }), status);
        EXPECT_EQ(Guarded([&] { WriteU8(stream, position, 9); }), status);
        EXPECT_EQ(position, 0);
    }
    stream.fStatus = 5013;
    int64_t position = 0;
    EXPECT_THROW(ReadU8(stream, position), XRead);
}

TEST(CFileLibGlueFailures, OnlyOneNameOpensTheLibrary) {
    const auto open = [](const char* name) {
        int32_t status = 0;
        const std::unique_ptr<IFileLib> fileLib(OpenFileLibByName(name, &status));
        EXPECT_EQ(fileLib != nullptr, status == 5000);
        return status;
    };
    EXPECT_EQ(open("IFileLib"), 5000);
    EXPECT_EQ(open("IFileLibX"), 5016);
    EXPECT_EQ(open("ifilelib"), 5016);
    EXPECT_EQ(open(""), 5002);
    EXPECT_EQ(open(nullptr), 5003);
    EXPECT_EQ(OpenFileLibByName(kFileLibName, nullptr), nullptr);
    try {
        StartFileLib("IFileLibX");
        ADD_FAILURE();
    } catch (const XOpen& exception) {
        EXPECT_STREQ(exception.what(), "Failed to open File support library");
        EXPECT_TRUE(HasTargetObjectType(exception, DllWord()));
    }
}

TEST(CFileLibGlueFailures, TheSingletonIsMadeOnFirstUse) {
    IFileLib* const fileLib = GetFileLibSingleton();
    EXPECT_EQ(fileLib, GetFileLibSingleton());
    EXPECT_EQ(fileLib->IsValid(), 1);
    ReleaseFileLibSingleton();
    EXPECT_NE(GetFileLibSingleton(), nullptr);
    ReleaseFileLibSingleton();
    ReleaseFileLibSingleton();
}

} // namespace NSFileLibInternals
