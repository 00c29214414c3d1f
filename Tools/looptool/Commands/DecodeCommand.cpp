#include "looptool/Audio/CAudioWriter.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Files/InputFile.h"
#include "looptool/Loop/StoredAudio.h"

#include <memory>

namespace NSLoopTool {

namespace {

struct SDecodeOptions {
    std::string fFile;
    std::string fOutput;
    SFormatWish fFormat;
};

// The stored audio as it is, bit for bit, with no rendering.
int RunDecode(const SDecodeOptions& options) {
    // A wish that cannot be met is told before the work.
    ChooseAudioFormat(options.fFormat, options.fOutput, EEncoding::kPcm24);
    const std::vector<uint8_t> bytes = ReadInputFile(options.fFile);
    const SAudio audio = ReadStoredAudio(bytes, InputName(options.fFile));
    const EEncoding usual = audio.fBitDepth == 16 ? EEncoding::kPcm16 : EEncoding::kPcm24;
    WriteAudioFile(options.fOutput, ChooseAudioFormat(options.fFormat, options.fOutput, usual),
                   audio);
    return 0;
}

} // namespace

void AddDecodeCommand(CCommandLine& line) {
    const auto options = std::make_shared<SDecodeOptions>();
    CCommand command = line.AddCommand("decode", "Write the stored audio, bit for bit",
                                       [options] { return RunDecode(*options); });
    command.AddFile("FILE", options->fFile, "Loop file; - is standard input");
    command.AddOutput(options->fOutput, "Audio file; - is standard output");
    AddFormat(command, options->fFormat, "those of the stored audio");
    command.SetExample("looptool decode drums.lop2 -o drums.flac");
}

} // namespace NSLoopTool
