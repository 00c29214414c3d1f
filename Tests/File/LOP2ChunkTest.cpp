#include "LoopLibrary/File/CLOP2HeadChunk.h"
#include "LoopWriter/LOP2File.h"
#include "Tests/File/LoadTools.h"

#include <gtest/gtest.h>

#include <tuple>

namespace NSLOPDLL {

namespace {

using namespace NSLoopWriter;

std::string OutcomeWith(const SField& field, int64_t value) {
    SLOP2File file;
    file.fTesselExtraInfo.emplace();
    file.fGeneralInfo.fBeats = 1;
    file.fEdit = [&](SIFFChunk& root) { Poke(root, field, value); };
    return Load(WriteLOP2(file)).fOutcome;
}

TEST(LOP2Chunks, Ranges) {
    struct SRow {
        SField fField;
        int64_t fLeast; // below 0 in signed fields
        int64_t fGreatest;
    };
    const std::pair<std::string, std::vector<SRow>> chunks[] = {
        {"open: " + Violation("invalid data in general info chunk"),
         {{{"GLOB", 4, 2}, 0, 999},
          {{"GLOB", 6, 1}, 0, 7},
          {{"GLOB", 7, 1}, 0, 15},
          {{"GLOB", 8, 1}, 0, 15},
          {{"GLOB", 9, 1}, 0, 99},
          {{"GLOB", 10, 2}, 0, 999},
          {{"GLOB", 12, 2}, 0, 7943},
          {{"GLOB", 14, 2}, -2400, 2400},
          {{"GLOB", 16, 4}, 20000, 450000}}},
        {"open: " + Violation("invalid data in tessel info chunk"),
         {{{"TESL", 7, 4}, 0, INT32_MAX}, {{"TESL", 11, 4}, 0, INT32_MAX}}},
        {"settings: " + Violation("invalid data in transient shaper chunk"),
         {{{"TRSH", 1, 2}, 0, 1023}, {{"TRSH", 3, 2}, 0, 1023}, {{"TRSH", 5, 2}, 0, 100}}},
        {"settings: " + Violation("invalid data in equalizer chunk"),
         {{{"EQ  ", 1, 2}, 15, 12000},
          {{"EQ  ", 3, 2}, 20, 3000},
          {{"EQ  ", 5, 2}, -18000, 18000},
          {{"EQ  ", 7, 2}, 500, 10000},
          {{"EQ  ", 9, 2}, 1500, 16000},
          {{"EQ  ", 11, 2}, -18000, 18000},
          {{"EQ  ", 13, 2}, 500, 10000},
          {{"EQ  ", 15, 2}, 100, 20000}}},
        {"settings: " + Violation("invalid data in compressor chunk"),
         {{{"COMP", 1, 2}, 0, 127},
          {{"COMP", 3, 2}, 0, 127},
          {{"COMP", 5, 2}, 0, 1023},
          {{"COMP", 7, 2}, 0, 1023}}},
        {"slices: " + Violation("invalid data in slice chunk"), {{{"SLCE", 8, 2}, 0, 32767}}},
        {"open: " + Violation("invalid data in sample info chunk"), // of 64 frames
         {{{"SINF", 0, 1}, 1, 2},
          {{"SINF", 2, 4}, 1000, 1000000},
          {{"SINF", 6, 4}, 64, INT32_MAX},
          {{"SINF", 10, 4}, 0, 63},
          {{"SINF", 14, 4}, 0, 64}}}};
    for (const auto& [failure, rows] : chunks) {
        for (const SRow& row : rows) {
            SCOPED_TRACE(testing::Message() << row.fField.fID << " at " << row.fField.fOffset);
            EXPECT_NE(OutcomeWith(row.fField, row.fLeast), failure);
            EXPECT_NE(OutcomeWith(row.fField, row.fGreatest), failure);
            EXPECT_EQ(OutcomeWith(row.fField, row.fGreatest + 1), failure);
            if (row.fLeast != 0) {
                EXPECT_EQ(OutcomeWith(row.fField, row.fLeast - 1), failure);
            }
        }
    }
}

TEST(LOP2Chunks, SingleRules) {
    const std::string head = "open: XVersionTooNew[lop_file] old head chunk";
    const std::string uuid = "open: " + Violation("non-zero uuid in header");
    const std::string general = "open: " + Violation("invalid data in general info chunk");
    const std::string tessel = "open: " + Violation("invalid data in tessel info chunk");
    const std::string grid = "open: " + Violation("invalid grid/unit byte tessel info chunk");
    const std::string slice = "slices: " + Violation("invalid data in slice chunk");
    const std::string audio = "open: " + Violation("invalid data in sample info chunk");
    const std::tuple<SField, int64_t, std::string> rows[] = {
        {{"HEAD", 4, 4}, 0xBC010000, "loaded"},
        {{"HEAD", 4, 4}, 0xBC0309FF, "loaded"},
        {{"HEAD", 4, 4}, 0xBC040000, head},
        {{"HEAD", 4, 4}, 0xBC000900, head},
        {{"HEAD", 4, 1}, 189, "open: XFormatViolation "},
        {{"HEAD", 24, 1}, 1, uuid},
        {{"HEAD", 5, 5}, 0x0400000001, uuid}, // ahead of the version
        {{"HEAD", 25, 4}, 1, "open: XFormatViolation "},
        {{"GLOB", 4, 3}, 0, general},
        {{"GLOB", 16, 4}, 0xFFFFFFFF, general},
        {{"TESL", 0, 4}, 0xBC000000, "loaded"},
        {{"TESL", 0, 4}, 0xBC000005, tessel},
        {{"TESL", 0, 4}, 0xBC000100, tessel},
        {{"TESL", 0, 4}, 0xBC010909, tessel},
        {{"TESL", 0, 4}, 0xBC090000, "loaded"},
        {{"TESL", 6, 1}, 2, grid},
        {{"TESL", 6, 1}, 13, grid},
        {{"TESL", 6, 5}, 0x0980000000, grid}, // ahead of the last fields
        {{"TSLX", 0, 4}, 0xBC010909, "loaded"},
        {{"TSLX", 0, 4}, 0xBC020000, "edit: XVersionTooNew[lop_file] old extra info chunk"},
        {{"TSLX", 0, 4}, 0xBC000909, "edit: XVersionTooNew[lop_file] old extra info chunk"},
        {{"SLCE", 10, 1}, 6, "loaded"},
        {{"SLCE", 10, 1}, 3, slice},
        {{"SLCE", 10, 1}, 7, slice},
        {{"SLCE", 8, 3}, 0x800008, "slices: " + Violation("bad flags in slice chunk")},
        {{"SINF", 1, 1}, 0, audio},
        {{"SINF", 1, 1}, 1, audio},
        {{"SINF", 1, 1}, 4, audio},
        {{"SINF", 1, 1}, 7, audio},
        {{"SINF", 6, 12}, 0, audio}, // no frames at all
        {{"SINF", 10, 4}, INT32_MIN, audio},
        {{"SINF", 10, 8}, 0x3F0000003F, "loaded"}}; // an empty loop inside the audio
    for (const auto& [field, value, outcome] : rows) {
        EXPECT_EQ(OutcomeWith(field, value), outcome)
            << field.fID << " at " << field.fOffset << ": " << value;
    }

    SLOP2File file;
    file.fHead.fMagic = 1;
    file.fHead.fUUID[0] = 1;
    SIFFChunk chunks = BuildLOP2Chunks(file);
    NSPorter::CMemoryMedia media = MediaOver(FindChunk(chunks, ID("HEAD")).fBody);
    EXPECT_EQ(OutcomeOf([&] { CLOP2HeadChunk chunk(media); }),
              Violation("bad magic number in header chunk"));
}

TEST(LOP2Chunks, CreatorTextLimit) {
    const std::string failure = "creator: " + Violation("invalid data in creator info chunk");
    const std::u16string lineEnds = std::u16string(253, u'x') + u"\r\ny";
    using EForm = SStoredText::EForm;
    const std::tuple<std::u16string, EForm, std::string> rows[] = {
        {std::u16string(255, u'x'), EForm::kPlain, "loaded"},
        {std::u16string(256, u'x'), EForm::kPlain, failure},
        {std::u16string(255, u'\u03b1'), EForm::kLong, "loaded"},
        {std::u16string(256, u'\u03b1'), EForm::kLong, failure},
        {lineEnds, EForm::kPlain, "loaded"}, // where a line end becomes one unit
        {lineEnds, EForm::kLong, failure}};
    for (const auto& [text, form, outcome] : rows) {
        SLOP2File file;
        file.fCreatorInfo.emplace().fTexts[4].fText = text;
        file.fCreatorInfo->fTexts[4].fForm = form;
        EXPECT_EQ(Load(WriteLOP2(file)).fOutcome, outcome);
    }
}

TEST(LOP2Chunks, EndWithTheirLastField) {
    struct SRow {
        const char* fID;
        size_t fSize;
        std::string fOutcome;
    };
    const SRow rows[] = {{"HEAD", 29, "open: XRead "},     {"CREI", 20, "creator: XRead "},
                         {"GLOB", 22, "open: XRead "},     {"TESL", 15, "open: XRead "},
                         {"TSLX", 21, "edit: XRead "},     {"TRSH", 7, "settings: XRead "},
                         {"EQ  ", 17, "settings: XRead "}, {"COMP", 9, "settings: XRead "},
                         {"SLCE", 11, "slices: XRead "},   {"SINF", 18, "open: XRead "}};
    for (const SRow& row : rows) {
        SLOP2File file;
        file.fCreatorInfo.emplace();
        file.fTesselExtraInfo.emplace();
        file.fEdit = [&](SIFFChunk& root) { TruncateChunk(root, ID(row.fID), row.fSize - 1); };
        EXPECT_EQ(Load(WriteLOP2(file)).fOutcome, row.fOutcome);
        file.fEdit = [&](SIFFChunk& root) {
            FindChunk(root, ID(row.fID)).fBody.resize(row.fSize + 8, 255);
        };
        EXPECT_EQ(Load(WriteLOP2(file)).fOutcome, "loaded");
    }
}

} // namespace

} // namespace NSLOPDLL
