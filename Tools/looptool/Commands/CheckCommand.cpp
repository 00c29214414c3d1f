#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Console/Colour.h"
#include "looptool/Files/FolderWalk.h"
#include "looptool/Files/InputFile.h"
#include "looptool/Loop/LoadReport.h"
#include "looptool/Loop/LoopSettings.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace NSLoopTool {

namespace {

constexpr int kExitCode_CheckFailed = 1;

struct SCheckOptions {
    std::vector<std::string> fPaths;
    int32_t fJobs = 0;
};

struct SVerdict {
    bool fIsShown = false;
    std::string fFault; // empty: the file loads
};

bool HasLoopSuffix(const std::string& path) {
    const std::filesystem::path suffix = PathOfArgument(path).extension();
    return suffix == ".lop2" || suffix == ".tsl" || suffix == ".lop";
}

// Of the files in folders those are meant that are loops, or are called so.
SVerdict Check(const std::string& path, bool isNamed, const ProgressFunction& progress) {
    try {
        const std::vector<uint8_t> bytes = ReadInputFile(path);
        if (!isNamed && KindOfBytes(bytes).empty() && !HasLoopSuffix(path)) {
            return {};
        }
        const SLoadReport report = ReportLoad(bytes, [&progress](int64_t percent) {
            progress(percent);
            return WasInterrupted();
        });
        StopIfInterrupted();
        return {true, report.fResult == kLOPResult_OK ? ""
                                                      : LoadFaultText(bytes, report) + " [" +
                                                            std::to_string(report.fResult) + "]"};
    } catch (const CToolFailure& failure) {
        if (failure.GetExitCode() == kExitCode_Interrupted) {
            throw;
        }
        const std::string prefix = InputName(path) + ": ";
        const std::string words = failure.what();
        return {isNamed || HasLoopSuffix(path),
                words.starts_with(prefix) ? words.substr(prefix.size()) : words};
    }
}

int RunCheck(const SCheckOptions& options) {
    bool isComplete = true;
    std::vector<std::string> files;
    std::vector<bool> isNamed;
    for (const std::string& path : options.fPaths) {
        const std::vector<std::string> below =
            path == "-" ? std::vector<std::string>{path}
                        : FilesBelow({path}, [&isComplete](const std::string& words) {
                              isComplete = false;
                              std::fprintf(stderr, "looptool: %s\n", words.c_str());
                          });
        files.insert(files.end(), below.begin(), below.end());
        isNamed.resize(files.size(), below.size() == 1 && below.front() == path);
    }
    std::vector<SVerdict> verdicts(files.size());
    RunJobs(files.size(), options.fJobs, "checking",
            [&](size_t index, const ProgressFunction& progress) {
                verdicts[index] = Check(files[index], isNamed[index], progress);
            });
    bool isGood = isComplete;
    for (size_t i = 0; i < files.size(); ++i) {
        const SVerdict& verdict = verdicts[i];
        if (!verdict.fIsShown) {
            continue;
        }
        const std::string name = InputName(files[i]);
        isGood = isGood && verdict.fFault.empty();
        if (verdict.fFault.empty()) {
            std::printf("%s   %s\n", Coloured("OK", EColour::kGood).c_str(), name.c_str());
        } else {
            std::printf("%s  %s: %s\n", Coloured("BAD", EColour::kBad).c_str(), name.c_str(),
                        verdict.fFault.c_str());
        }
    }
    return isGood ? 0 : kExitCode_CheckFailed;
}

} // namespace

void AddCheckCommand(CCommandLine& line) {
    const auto options = std::make_shared<SCheckOptions>();
    CCommand command = line.AddCommand("check", "Load files to the end and say what is wrong",
                                       [options] { return RunCheck(*options); });
    command.AddFiles("FILE", options->fPaths,
                     "Loop files, and folders with them; - is standard input");
    AddJobs(command, options->fJobs);
    command.SetExample("looptool check ~/loops && echo all sound");
}

} // namespace NSLoopTool
