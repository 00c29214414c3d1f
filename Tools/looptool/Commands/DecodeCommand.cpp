#include "looptool/Audio/CAudioWriter.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Commands/OutputTasks.h"
#include "looptool/Files/InputFile.h"
#include "looptool/Loop/StoredAudio.h"

#include <memory>

namespace NSLoopTool {

namespace {

struct SDecodeOptions {
    std::vector<std::string> fFiles;
    std::string fOutput;
    SFormatWish fFormat;
    bool fForce = false;
    int32_t fJobs = 0;
};

// The stored audio as it is, bit for bit, with no rendering.
void DecodeOne(const SDecodeOptions& options, const SOutputTask& task, bool isFolder,
               const ProgressFunction& progress) {
    if (isFolder && !options.fForce) {
        RefuseToReplace(task.fOutput);
    }
    const std::vector<uint8_t> bytes = ReadInputFile(task.fInput);
    const SAudio audio = ReadStoredAudio(bytes, InputName(task.fInput), progress);
    const EEncoding usual = audio.fBitDepth == 16 ? EEncoding::kPcm16 : EEncoding::kPcm24;
    WriteAudioFile(task.fOutput, ChooseAudioFormat(options.fFormat, task.fOutput, usual), audio);
}

int RunDecode(const SDecodeOptions& options) {
    const bool isFolder = IsFolderOutput(options.fFiles, options.fOutput);
    // A wish that cannot be met is told before the work.
    const SAudioFormat format = ChooseAudioFormat(
        options.fFormat, isFolder ? std::string() : options.fOutput, EEncoding::kPcm24);
    const std::vector<SOutputTask> tasks =
        PlanOutputs(options.fFiles, options.fOutput, isFolder, format.GetSuffix());
    return RunJobs(tasks.size(), options.fJobs, "decoding " + NameOfAll(options.fFiles),
                   [&](size_t index, const ProgressFunction& progress) {
                       DecodeOne(options, tasks[index], isFolder, progress);
                   });
}

} // namespace

void AddDecodeCommand(CCommandLine& line) {
    const auto options = std::make_shared<SDecodeOptions>();
    CCommand command = line.AddCommand("decode", "Write the stored audio, bit for bit",
                                       [options] { return RunDecode(*options); });
    command.AddFiles("FILE", options->fFiles, "Loop files; - is standard input");
    command.AddOutput(options->fOutput,
                      "Audio file, - is standard output; a folder for several files");
    AddFormat(command, options->fFormat, "those of the stored audio");
    AddForce(command, options->fForce, "Replace files that exist in a folder");
    AddJobs(command, options->fJobs);
    command.SetExample("looptool decode drums.lop2 -o drums.flac");
}

} // namespace NSLoopTool
