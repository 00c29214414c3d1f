#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/EachFile.h"
#include "looptool/Console/CTable.h"
#include "looptool/Loop/LoopJson.h"

#include <cstdio>

#include <memory>

namespace NSLoopTool {

namespace {

struct SSlicesOptions {
    std::vector<std::string> fFiles;
    bool fJson = false;
};

std::string Fixed(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.4f", value);
    return text;
}

std::string StateOf(const SMark& mark) {
    if (mark.fIsHidden) {
        return "hidden";
    }
    if (!mark.fIsActive) {
        return "too weak";
    }
    return mark.fIsMuted ? "muted" : (mark.fIsForced ? "forced" : "");
}

void PrintTable(const CLoop& loop, const SLoopModel& model) {
    CTable table({{"slice", true},
                  {"start frame", true},
                  {"seconds", true},
                  {"quarter note", true},
                  {"frames", true},
                  {"state", false}});
    for (const SMark& mark : model.fMarks) {
        std::vector<std::string> cells = {
            "-",
            std::to_string(mark.fFrame),
            Fixed(static_cast<double>(mark.fFrame) / model.fSampleRate),
            "-",
            "-",
            StateOf(mark)};
        if (mark.fSlice >= 0) {
            const LOPSliceInfo slice = loop.GetSliceInfo(mark.fSlice);
            cells[0] = std::to_string(mark.fSlice);
            cells[3] = Fixed(static_cast<double>(slice.fPPQPosition) / LOP_PPQ);
            cells[4] = std::to_string(slice.fFrameCount);
        }
        table.Add(cells);
    }
    table.Print();
}

int RunSlices(const SSlicesOptions& options) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    bool isFirst = true;
    const int exitCode = ForEachFile(options.fFiles, [&](const std::string& file) {
        const CLoop loop(file);
        const SLoopModel model = ReadLoopModel(loop);
        if (options.fJson) {
            list.push_back(SlicesJson(loop, model));
            return;
        }
        if (options.fFiles.size() > 1) {
            std::printf("%s%s\n", isFirst ? "" : "\n", loop.GetName().c_str());
        }
        PrintTable(loop, model);
        isFirst = false;
    });
    if (options.fJson) {
        std::puts(JsonText(options.fFiles.size() == 1 ? list.front() : list).c_str());
    }
    return exitCode;
}

} // namespace

void AddSlicesCommand(CCommandLine& line) {
    const auto options = std::make_shared<SSlicesOptions>();
    CCommand command =
        line.AddCommand("slices", "List the slices of loop files, hidden and muted cuts too",
                        [options] { return RunSlices(*options); });
    command.AddFiles("FILE", options->fFiles, "Loop files; - is standard input");
    command.AddFlag("--json", options->fJson, "Print JSON");
    command.SetExample("looptool slices drums.lop2 --json");
}

} // namespace NSLoopTool
