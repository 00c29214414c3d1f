#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Commands/LoopList.h"
#include "looptool/Console/SNumberRange.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/FolderWalk.h"
#include "looptool/Loop/ResultText.h"
#include "looptool/System/CMappedFile.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <map>
#include <memory>

namespace NSLoopTool {

namespace {

struct SListOptions {
    std::vector<std::string> fPaths;
    std::map<std::string, std::string> fFilters; // by the name of a column
    std::string fSort = "file";
    bool fReverse = false;
    bool fJsonLines = false;
    bool fCsv = false;
    int32_t fJobs = 0;
};

// A column of numbers takes a range, any other a part of the text.
class CFilter {
public:
    CFilter(const SListColumn& column, const std::string& wish) : fColumn(column), fWish(wish) {
        if (!column.IsNumber()) {
            return;
        }
        const std::optional<SNumberRange> range = ParseRange(wish);
        if (!range) {
            throw CToolFailure(std::string("--") + column.fName +
                                   ": must be a number, or a range like 90..100",
                               kExitCode_Usage);
        }
        fRange = *range;
    }

    bool Passes(const SListedLoop& loop) const {
        return fColumn.IsNumber() ? fRange.Has(fColumn.fNumber(loop))
                                  : fColumn.fText(loop).find(fWish) != std::string::npos;
    }

private:
    const SListColumn& fColumn;
    const std::string fWish;
    SNumberRange fRange;
};

void Complain(const std::string& words) {
    std::fprintf(stderr, "looptool: %s\n", words.c_str());
}

// Files that are not loops are passed over; a loop file that cannot be listed is told.
std::vector<SListedLoop> ReadLoops(const SListOptions& options, bool& isComplete) {
    const std::vector<std::string> files =
        FilesBelow(options.fPaths, [&isComplete](const std::string& words) {
            isComplete = false;
            Complain(words);
        });
    constexpr size_t kLotFiles = 64; // a piece of work for a thread
    std::vector<SListedLoop> all(files.size());
    const size_t lots = (files.size() + kLotFiles - 1) / kLotFiles;
    RunJobs(lots, options.fJobs, "listing", [&](size_t lot, const ProgressFunction& /*progress*/) {
        const size_t end = std::min((lot + 1) * kLotFiles, files.size());
        for (size_t i = lot * kLotFiles; i < end; ++i) {
            StopIfInterrupted();
            const CMappedFile file(PathOfArgument(files[i]));
            all[i] = {files[i], ReadLoopHeader(file.GetBytes())};
        }
    });
    std::vector<SListedLoop> loops;
    for (SListedLoop& loop : all) {
        if (loop.fHeader.fKind.empty()) {
            continue;
        }
        if (loop.fHeader.fResult == kLOPResult_OK) {
            loops.push_back(std::move(loop));
        } else {
            isComplete = false;
            Complain(SafeText(loop.fFile) + ": " + ResultText(loop.fHeader.fResult));
        }
    }
    return loops;
}

void Sort(std::vector<SListedLoop>& loops, const SListOptions& options) {
    const SListColumn& column = *FindListColumn(options.fSort);
    std::stable_sort(loops.begin(), loops.end(),
                     [&column](const SListedLoop& a, const SListedLoop& b) {
                         return column.IsNumber() ? column.fNumber(a) < column.fNumber(b)
                                                  : column.fText(a) < column.fText(b);
                     });
    if (options.fReverse) {
        std::reverse(loops.begin(), loops.end());
    }
}

int RunList(const SListOptions& options) {
    if (options.fJsonLines && options.fCsv) {
        throw CToolFailure("--json-lines and --csv: only one of them", kExitCode_Usage);
    }
    std::vector<CFilter> filters;
    for (const auto& [name, wish] : options.fFilters) {
        if (!wish.empty()) {
            filters.emplace_back(*FindListColumn(name), wish);
        }
    }
    bool isComplete = true;
    std::vector<SListedLoop> loops = ReadLoops(options, isComplete);
    std::erase_if(loops, [&filters](const SListedLoop& loop) {
        return !std::all_of(filters.begin(), filters.end(),
                            [&loop](const CFilter& filter) { return filter.Passes(loop); });
    });
    Sort(loops, options);
    if (options.fJsonLines) {
        PrintListJson(loops);
    } else if (options.fCsv) {
        PrintListCsv(loops);
    } else {
        PrintListTable(loops);
    }
    return isComplete ? 0 : kExitCode_Failed;
}

} // namespace

void AddListCommand(CCommandLine& line) {
    const auto options = std::make_shared<SListOptions>();
    CCommand command = line.AddCommand("list", "List the loops below folders, a line each",
                                       [options] { return RunList(*options); });
    command.AddFiles("DIR", options->fPaths, "Folders, or files");
    std::vector<std::string> names;
    for (const SListColumn& column : ListColumns()) {
        names.emplace_back(column.fName);
        command.AddText(std::string("--") + column.fName, column.IsNumber() ? "A..B" : "TEXT",
                        options->fFilters[column.fName],
                        column.IsNumber()
                            ? std::string("Only loops in that range: ") + column.fHelp
                            : std::string("Only loops with that text in ") + column.fHelp);
    }
    command.AddChoice("--sort", options->fSort, names, "Column to sort by; else file");
    command.AddFlag("--reverse", options->fReverse, "Greatest first");
    command.AddFlag("--json-lines", options->fJsonLines, "Print a JSON object a line");
    command.AddFlag("--csv", options->fCsv, "Print comma-separated values");
    AddJobs(command, options->fJobs);
    command.SetExample("looptool list ~/loops --tempo 90..100 --sort tempo");
}

} // namespace NSLoopTool
