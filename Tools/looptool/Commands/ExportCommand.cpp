#include "looptool/Audio/CAudioWriter.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Commands/MidiFile.h"
#include "looptool/Commands/OutputTasks.h"
#include "looptool/Console/Numbers.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Loop/CLoop.h"
#include "looptool/Loop/SliceFiles.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <memory>

namespace NSLoopTool {

namespace {

// C1 where middle C, note 60, is C3. Slices beyond the highest key go on at C1 of the next channel.
constexpr int32_t kFirstKey = 36;
constexpr int32_t kKeys = 128 - kFirstKey;
constexpr int32_t kChannels = 16;

struct SExportOptions {
    std::vector<std::string> fFiles;
    std::string fFolder;
    double fTempo = 0.0; // 0 keeps the loop's own
    int32_t fRate = 0;
    std::string fBits;
    int32_t fJobs = 0;
};

// A name that an .sfz can hold: its lines know no quotes.
std::string PlainStem(const std::string& file) {
    std::string stem = SafeText(StemOf(file));
    std::replace_if(
        stem.begin(), stem.end(),
        [](char letter) { return std::string("<>=$#\\/:*?\"|").find(letter) != std::string::npos; },
        '_');
    return stem;
}

SMidiSong SongOf(const CLoop& loop, double tempo) {
    const LOPInfo& info = loop.GetInfo();
    const double units = tempo != 0.0 ? tempo : info.fStoredTempo / 1000.0;
    SMidiSong song;
    song.fQuartersPerMinute = units * 4.0 / info.fTimeSignatureDenominator;
    song.fNumerator = info.fTimeSignatureNumerator;
    song.fDenominator = info.fTimeSignatureDenominator;
    song.fLength = info.fPPQLength;
    for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
        const int64_t start = loop.GetSliceInfo(slice).fPPQPosition;
        if (!song.fNotes.empty()) {
            song.fNotes.back().fEnd = std::max(start, song.fNotes.back().fStart + 1);
        }
        song.fNotes.push_back(
            {start, std::max(song.fLength, start + 1), slice / kKeys, kFirstKey + slice % kKeys});
    }
    return song;
}

void ExportOne(const SExportOptions& options, const std::string& file,
               const ProgressFunction& progress) {
    SFormatWish wish;
    wish.fContainer = "wav";
    wish.fBits = options.fBits;
    const SAudioFormat format = ChooseAudioFormat(wish, "", EEncoding::kFloat);
    CLoop loop(file, [&progress](int64_t percent) { progress(percent / 2); });
    loop.SetOutputSampleRate(options.fRate);
    const int32_t count = loop.GetInfo().fSliceCount;
    if (count > kKeys * kChannels) {
        throw CToolFailure(loop.GetName() + ": has " + std::to_string(count) +
                           " slices; keys and channels reach for " +
                           std::to_string(kKeys * kChannels));
    }
    const std::string stem = PlainStem(file);
    const auto target = [&options](const std::string& name) {
        return PathInFolder(options.fFolder, name);
    };
    const SMidiSong song = SongOf(loop, options.fTempo);
    std::string sfz = "// " + stem + ": " + std::to_string(count) + " slices from C1 (note 36); " +
                      stem + ".mid plays them in time at " + DecimalText(song.fQuartersPerMinute) +
                      " quarter notes per minute\n" + "<group> loop_mode=one_shot\n";
    for (int32_t slice = 0; slice < count; ++slice) {
        StopIfInterrupted();
        const std::string name = SliceFileName(stem + ".x", slice, count, ".wav");
        WriteFloatFile(target(name), format, loop.GetOutputSampleRate(), loop.RenderSlice(slice));
        const SMidiNote& note = song.fNotes[static_cast<size_t>(slice)];
        const std::string channel = std::to_string(note.fChannel + 1);
        sfz.append("<region> key=").append(std::to_string(note.fKey));
        if (count > kKeys) {
            sfz.append(" lochan=").append(channel).append(" hichan=").append(channel);
        }
        sfz.append(" sample=").append(name).append("\n");
        progress(50 + int64_t{slice + 1} * 50 / count);
    }
    const std::vector<uint8_t> midi = MidiFileBytes(song);
    WriteOutputFile(target(stem + ".mid"), midi.data(), midi.size());
    WriteOutputFile(target(stem + ".sfz"), sfz.data(), sfz.size());
}

int RunExport(const SExportOptions& options) {
    RefuseSameNames(options.fFiles,
                    [](const std::string& file) { return PlainStem(file) + ".mid"; });
    MakeFolder(options.fFolder);
    return RunJobs(options.fFiles.size(), options.fJobs, "exporting " + NameOfAll(options.fFiles),
                   [&options](size_t index, const ProgressFunction& progress) {
                       ExportOne(options, options.fFiles[index], progress);
                   });
}

} // namespace

void AddExportCommand(CCommandLine& line) {
    const auto options = std::make_shared<SExportOptions>();
    CCommand command =
        line.AddCommand("export", "Write slices, a MIDI file and an .sfz for any sampler",
                        [options] { return RunExport(*options); });
    command.AddFiles("FILE", options->fFiles, "Loop files; - is standard input");
    command.AddOutput(options->fFolder, "Folder for the files");
    command.AddDecimal("--tempo", options->fTempo, kLeastTempo, kGreatestTempo,
                       "Beats per minute of the MIDI file; else the stored tempo");
    AddRate(command, options->fRate);
    command.AddChoice("--bits", options->fBits, {"16", "24", "float"},
                      "Depth of the slices; else floats");
    AddJobs(command, options->fJobs);
    command.SetExample("looptool export drums.lop2 -o drums");
}

} // namespace NSLoopTool
