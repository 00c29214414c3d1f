#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "Tests/File/LoadTools.h"

namespace NSLOPDLL {

static std::string OutcomeWith(const ChunkEdit& edit) {
    SLOP2File file;
    file.fCreatorInfo.emplace();
    file.fTesselExtraInfo.emplace();
    file.fGeneralInfo.fBeats = 1;
    file.fEdit = edit;
    return Load(WriteLOP2(file)).fOutcome;
}

static std::string Invalid(const std::string& step, const std::string& chunk) {
    return step + ": " + Violation("invalid data in " + chunk + " chunk");
}

static const std::string kHead = "open: XVersionTooNew[lop_file] old head chunk";
static const std::string kUUID = "open: " + Violation("non-zero uuid in header");
static const std::string kGeneral = Invalid("open", "general info");
static const std::string kTessel = Invalid("open", "tessel info");
static const std::string kGrid = "open: " + Violation("invalid grid/unit byte tessel info chunk");
static const std::string kAudio = Invalid("open", "sample info");
static const std::string kSlice = Invalid("slices", "slice");
static const std::string kFlags = "slices: " + Violation("bad flags in slice chunk");
static const std::string kShaper = Invalid("settings", "transient shaper");
static const std::string kEqualizer = Invalid("settings", "equalizer");
static const std::string kCompressor = Invalid("settings", "compressor");
static const std::string kExtra = "edit: XVersionTooNew[lop_file] old extra info chunk";
static const std::string kCreator = Invalid("creator", "creator info");

TEST(LOP2Chunks, Ranges) {
    // Place, width, least (below 0 in signed fields) and greatest value. There are 64 frames.
    using Fields = std::vector<std::array<int64_t, 4>>;
    const Fields general = {{4, 2, 0, 999},   {6, 1, 0, 7},         {7, 1, 0, 15},
                            {8, 1, 0, 15},    {9, 1, 0, 99},        {10, 2, 0, 999},
                            {12, 2, 0, 7943}, {14, 2, -2400, 2400}, {16, 4, 20000, 450000}};
    const Fields equalizer = {{1, 2, 15, 12000},   {3, 2, 20, 3000},    {5, 2, -18000, 18000},
                              {7, 2, 500, 10000},  {9, 2, 1500, 16000}, {11, 2, -18000, 18000},
                              {13, 2, 500, 10000}, {15, 2, 100, 20000}};
    const Fields compressor = {{1, 2, 0, 127}, {3, 2, 0, 127}, {5, 2, 0, 1023}, {7, 2, 0, 1023}};
    const Fields audio = {
        {0, 1, 1, 2}, {2, 4, 1000, 1000000}, {6, 4, 64, INT32_MAX}, {10, 4, 0, 63}, {14, 4, 0, 64}};
    const std::tuple<const char*, Fields, std::string> chunks[] = {
        {"GLOB", general, kGeneral},
        {"TESL", {{7, 4, 0, INT32_MAX}, {11, 4, 0, INT32_MAX}}, kTessel},
        {"TRSH", {{1, 2, 0, 1023}, {3, 2, 0, 1023}, {5, 2, 0, 100}}, kShaper},
        {"EQ  ", equalizer, kEqualizer},
        {"COMP", compressor, kCompressor},
        {"SLCE", {{8, 2, 0, 32767}}, kSlice},
        {"SINF", audio, kAudio}};
    for (const auto& [id, fields, failure] : chunks) {
        for (const auto& [offset, width, least, greatest] : fields) {
            SCOPED_TRACE(testing::Message() << id << " at " << offset);
            const auto outcome = [&, chunk = id, place = offset, size = width](int64_t value) {
                return OutcomeWith(Poke(chunk, place, size, value));
            };
            EXPECT_NE(outcome(least), failure);
            EXPECT_NE(outcome(greatest), failure);
            EXPECT_EQ(outcome(greatest + 1), failure);
            EXPECT_TRUE(least == 0 || outcome(least - 1) == failure);
        }
    }
}

TEST(LOP2Chunks, SingleRules) {
    const std::pair<std::string, std::vector<ChunkEdit>> rules[] = {
        {kHead, {Poke("HEAD", 4, 4, 0xBC000900)}},
        {"open: XFormatViolation ",
         {Poke("HEAD", 4, 1, 189), Poke("HEAD", 25, 4, 1), Without("GLOB")}},
        {kUUID, {Poke("HEAD", 5, 5, 0x0400000001)}}, // ahead of the version
        {kGeneral, {Poke("GLOB", 4, 3, 0)}},
        {kTessel,
         {Poke("TESL", 0, 4, 0xBC000005), Poke("TESL", 0, 4, 0xBC000100),
          Poke("TESL", 0, 4, 0xBC010909)}},
        // The second one with a fault of the fields behind it.
        {kGrid, {Poke("TESL", 6, 1, 13), Poke("TESL", 6, 5, 0x0980000000)}},
        {kSlice, {Poke("SLCE", 10, 1, 3), Poke("SLCE", 10, 1, 7)}},
        {kFlags, {Poke("SLCE", 8, 3, 0x800008)}},
        {"slices: XFormatViolation ", {Without("SLCL")}},
        {"settings: XFormatViolation ", {Without("DEVL")}},
        {kExtra, {Poke("TSLX", 0, 4, 0xBC000909)}},
        // Depths 1, 4 and 7; no frames at all; a loop that starts before the audio.
        {kAudio,
         {Poke("SINF", 1, 1, 1), Poke("SINF", 1, 1, 4), Poke("SINF", 1, 1, 7),
          Poke("SINF", 6, 12, 0), Poke("SINF", 10, 4, INT32_MIN)}},
        // The last is an empty loop inside the audio.
        {"loaded",
         {Poke("HEAD", 4, 4, 0xBC0309FF), Poke("TESL", 0, 4, 0xBC090000),
          Poke("TESL", 0, 4, 0xBC000000), Poke("TSLX", 0, 4, 0xBC010909), Poke("SLCE", 10, 1, 6),
          Without("TSLX"), Without("CREI"), Poke("SINF", 10, 8, 0x3F0000003F)}}};
    for (const auto& [outcome, edits] : rules) {
        for (size_t i = 0; i < edits.size(); ++i) {
            EXPECT_EQ(OutcomeWith(edits[i]), outcome) << i;
        }
    }

    // A version counts whole, its stage included, except where its major alone decides.
    using Versions = std::array<SStoredVersion, 3>;
    const std::pair<std::string, Versions> versions[] = {
        {kHead, Versions{{{1, 0, 0, 3}, {2}, {1}}}},
        {kTessel, Versions{{{2}, {2, 0, 0, 3}, {1}}}},
        {"loaded", Versions{{{3, 9, 9, 1}, {0, 0, 0, 1}, {1, 0, 0, 1}}}}};
    for (const auto& [outcome, stored] : versions) {
        SLOP2File file;
        file.fHead.fVersion = stored[0];
        file.fTesselInfo.fVersion = stored[1];
        file.fTesselExtraInfo.emplace().fVersion = stored[2];
        EXPECT_EQ(Load(WriteLOP2(file)).fOutcome, outcome);
    }

    // No file gets this far with another magic number, which comes ahead of UUID and version.
    Bytes head(29);
    head[4] = 188;
    head[9] = 1;
    NSPorter::CMemoryMedia media = MediaOver(head);
    EXPECT_EQ(OutcomeOf([&] { CLOP2HeadChunk chunk(media); }),
              Violation("bad magic number in header chunk"));
}

TEST(LOP2Chunks, OrderOfReadingDecidesWhichFaultIsReported) {
    const std::pair<ChunkEdit, std::string> faults[] = {
        {Poke("HEAD", 24, 1, 1), kUUID},
        {Poke("HEAD", 4, 4, 0xBC040000), kHead},
        {Poke("GLOB", 4, 2, 1000), kGeneral},
        {Poke("TESL", 6, 1, 2), kGrid},
        {Poke("SINF", 2, 4, 999), kAudio},
        {Without("SDAT"), "open: XFormatViolation "},
        {Cut("SDAT", 3), "audio: domain_error bad format"},
        {Poke("GLOB", 0, 4, 2),
         "slices: " + Violation("wrong # of chunks in kLOP2SliceCatIFFType cat")},
        {Poke("SLCE", 10, 1, 8), kFlags},
        {Poke("TRSH", 5, 2, 101), kShaper},
        {Poke("EQ  ", 7, 2, 0), kEqualizer},
        {Poke("COMP", 3, 2, 128), kCompressor},
        {Poke("TSLX", 0, 4, 0xBC020000), kExtra}};
    // Each file has one fault more than the last, in front of those that it had.
    ChunkEdit edit = [](SIFFChunk&) {};
    for (size_t first = std::size(faults); first-- > 0;) {
        edit = [behind = edit, front = faults[first].first](SIFFChunk& root) {
            behind(root);
            front(root);
        };
        EXPECT_EQ(OutcomeWith(edit), faults[first].second);
    }
}

TEST(LOP2Chunks, CreatorTextLimit) {
    const auto outcome = [](const std::u16string& text, SStoredText::EForm form) {
        SLOP2File file;
        file.fCreatorInfo.emplace().fTexts[4].fText = text;
        file.fCreatorInfo->fTexts[4].fForm = form;
        return Load(WriteLOP2(file)).fOutcome;
    };
    for (const auto form : {SStoredText::EForm::kPlain, SStoredText::EForm::kLong}) {
        EXPECT_EQ(outcome(std::u16string(255, u'x'), form), "loaded");
        EXPECT_EQ(outcome(std::u16string(256, u'x'), form), kCreator);
        // The plain form makes one unit of a line end.
        EXPECT_EQ(outcome(std::u16string(253, u'x') + u"\r\ny", form),
                  form == SStoredText::EForm::kPlain ? "loaded" : kCreator);
    }
}

TEST(LOP2Chunks, EndWithTheirLastField) {
    const std::tuple<const char*, size_t, std::string> rows[] = {
        {"HEAD", 29, "open"},     {"CREI", 20, "creator"}, {"GLOB", 22, "open"},
        {"TESL", 15, "open"},     {"TSLX", 21, "edit"},    {"TRSH", 7, "settings"},
        {"EQ  ", 17, "settings"}, {"COMP", 9, "settings"}, {"SLCE", 11, "slices"},
        {"SINF", 18, "open"}};
    for (const auto& [id, size, step] : rows) {
        EXPECT_EQ(OutcomeWith(Cut(id, size - 1)), step + ": XRead ");
        const ChunkEdit longer = [chunk = id, least = size](SIFFChunk& root) {
            FindChunk(root, ID(chunk)).fBody.resize(least + 8, 255);
        };
        EXPECT_EQ(OutcomeWith(longer), "loaded");
    }
}

} // namespace NSLOPDLL
