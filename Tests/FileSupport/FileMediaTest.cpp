#include "Failure/Classes/XClasses.h"
#include "FileLib/Glue/GlueGuard.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "PorterPackage/Core/Media/CPartialMedia.h"
#include "PorterPackage/FileSupport/CCMediaByteStreams.h"
#include "PorterPackage/FileSupport/CMediaBridge.h"
#include "PorterPackage/FileSupport/COpenFile.h"
#include "PorterPackage/FileSupport/COpenReadFileBridge.h"
#include "PorterPackage/FileSupport/COpenTemporaryFile.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"
#include "Tests/FileLib/CClientStream.h"
#include "Tests/FileLib/CFakeFileOps.h"

#include <string>

#include <gtest/gtest.h>

namespace NSFileLibSupport {

namespace {

using namespace NSLichen;
using NSFileLibInternals::CFakeFileOps;
using NSPorter::CMedia;
using NSPorter::CMemoryMedia;

const std::u16string kFile = u"C:\\Temp\\a.txt";

std::string ReadText(const CMedia& media) {
    std::string text(static_cast<size_t>(media.GetLength()), '\0');
    media.ReadBytes(0, media.GetLength(), reinterpret_cast<uint8_t*>(text.data()));
    return text;
}

void WriteText(CMedia& media, const std::string& text) {
    media.WriteBytes(0, static_cast<int64_t>(text.size()),
                     reinterpret_cast<const uint8_t*>(text.data()));
}

class FileMedia : public testing::Test {
protected:
    FileMedia() { fOps.AddFile(kFile, "text"); }
    ~FileMedia() override { NSFileLib::ReleaseFileLibSingleton(); }

    CFakeFileOps fOps;
    const DirHandle fTemp = MakeDirSpec(u"C:\\Temp\\");
};

} // namespace

TEST(CCMediaByteStreams, ServeAMediaAndTurnItsFailuresIntoStatuses) {
    CMemoryMedia media(int64_t{0});
    CCMediaByteWriter writer(&media);
    const uint8_t source[] = {1, 2, 3};
    EXPECT_EQ(writer.Write(1, 3, source), 5000);
    int64_t size = 0;
    EXPECT_EQ(writer.GetSize(&size), 5000);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(writer.GetSize(nullptr), 5002);

    NSPorter::CPartialMedia view(&media, 1, 2);
    CCMediaByteReader reader(&view);
    uint8_t bytes[3] = {};
    EXPECT_EQ(reader.Read(0, 2, bytes), 5000);
    EXPECT_EQ(bytes[1], 2);
    EXPECT_EQ(reader.Read(0, 3, bytes), 5013);
    CCMediaByteReader unchecked(&media); // memory does not look at its own end
    EXPECT_EQ(unchecked.Read(2, 3, bytes), 5013);
    EXPECT_EQ(unchecked.Read(-1, 1, bytes), 5002);
    EXPECT_EQ(unchecked.Read(9, 0, bytes), 5000);
    EXPECT_EQ(reader.Read(0, 1, nullptr), 5002);
    EXPECT_EQ(CCMediaByteWriter(&view).Write(0, 1, source), 5004);
}

TEST(CMediaBridge, LetsAForeignStatusThroughUnchanged) {
    NSFileLibInternals::CClientStream client;
    CMediaBridge bridge(&client, &client);
    WriteText(bridge, "text");
    EXPECT_EQ(ReadText(bridge), "text");
    client.fStatus = 100077;
    // A file library operation that ran over such a bridge answers the client's own number.
    const auto run = [](const auto& body) {
        return NSFileLibInternals::RunGuarded(NSFileLib::kFileLibStatus_OK, body);
    };
    uint8_t byte = 0;
    EXPECT_EQ(run([&] { bridge.ReadBytes(0, 1, &byte); }), 100077);
    EXPECT_EQ(run([&] { bridge.WriteBytes(0, 1, &byte); }), 100077);
    EXPECT_EQ(run([&] { static_cast<void>(bridge.GetLength()); }), 100077);
    EXPECT_NO_THROW(bridge.ReadBytes(0, 0, nullptr));
    EXPECT_NO_THROW(bridge.WriteBytes(0, 0, nullptr));
}

TEST_F(FileMedia, AReadBridgeReadsAndNothingElse) {
    COpenReadFileBridge bridge(MakeFileSpec(kFile));
    EXPECT_EQ(ReadText(bridge), "text");
    uint8_t bytes[4] = {};
    EXPECT_THROW(bridge.ReadBytes(1, 4, bytes), XRead);
    EXPECT_NO_THROW(bridge.ReadBytes(0, 0, nullptr));
    EXPECT_THROW(bridge.WriteBytes(0, 1, bytes), XIllegalCallSequence);
    EXPECT_THROW(COpenReadFileBridge(MakeFileSpec(u"C:\\Temp\\none")), XNotFound);
}

TEST_F(FileMedia, ASafeOpenKeepsTheFileUntilItsCommitAndAPlainOneEmptiesIt) {
    { // never committed
        COpenFile file(fTemp, u"a.txt", kOpenFile_SafeSave);
        WriteText(file, "lost");
    }
    EXPECT_EQ(fOps.TextOf(kFile), "text");
    COpenFile file(fTemp, u"a.txt", kOpenFile_SafeSave);
    WriteText(file, "saved");
    EXPECT_EQ(ReadText(file), "saved");
    file.Commit();
    EXPECT_EQ(fOps.TextOf(kFile), "saved");
    EXPECT_THROW(file.Commit(), XIllegalCallSequence);
    COpenFile plain(fTemp, u"a.txt", kOpenFile_Plain);
    EXPECT_EQ(plain.GetLength(), 0);
    EXPECT_NO_THROW(plain.ReadBytes(0, 0, nullptr));
    EXPECT_NO_THROW(plain.WriteBytes(0, 0, nullptr));
    WriteText(plain, "fresh");
    EXPECT_EQ(ReadText(plain), "fresh");
    plain.Commit();
    EXPECT_EQ(fOps.TextOf(kFile), "fresh");
    fOps.fFiles[kFile]->fAttributes |= NSFileLibInternals::kAttribute_ReadOnly;
    EXPECT_THROW(COpenFile(fTemp, u"a.txt", kOpenFile_SafeSave), XLocked);
}

TEST_F(FileMedia, ATemporaryFileGoesWithItsMedia) {
    const size_t filesBefore = fOps.fFiles.size();
    {
        COpenTemporaryFile file(u"x.wav");
        EXPECT_EQ(fOps.fFiles.size(), filesBefore + 1);
        EXPECT_TRUE(GetName(*file.GetFile()).ends_with(u".wav"));
        WriteText(file, "bytes");
        EXPECT_EQ(ReadText(file), "bytes");
    }
    EXPECT_EQ(fOps.fFiles.size(), filesBefore);
    { // cannot be deleted: left behind, and nothing is thrown
        const COpenTemporaryFile file(u"x.wav");
        fOps.Script("Delete", {NSFileLibInternals::kError_AccessDenied});
    }
    EXPECT_EQ(fOps.fFiles.size(), filesBefore + 1);
    // One that cannot be opened leaves nothing.
    fOps.Script("Open", {NSFileLibInternals::kError_SharingViolation});
    EXPECT_THROW(COpenTemporaryFile(u"y.wav"), XLocked);
    EXPECT_EQ(fOps.fFiles.size(), filesBefore + 1);
}

// On the system's own files.
TEST(COpenTemporaryFile, ServesTheRealSystem) {
    FileHandle name;
    {
        COpenTemporaryFile file(u"loop.tmp");
        WriteText(file, "0123456789");
        EXPECT_EQ(ReadText(file), "0123456789");
        name = file.GetFile();
        EXPECT_TRUE(DoesChildFileExist(GetParent(name), GetName(*name)));
    }
    EXPECT_FALSE(DoesChildFileExist(GetParent(name), GetName(*name)));
    NSFileLib::ReleaseFileLibSingleton();
}

} // namespace NSFileLibSupport
