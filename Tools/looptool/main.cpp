#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/VersionText.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Loop/CLibrary.h"
#include "looptool/System/Arguments.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/Terminal.h"
#include "looptool/System/ToolFailure.h"

#include <cstdio>
#include <exception>
#include <string>

namespace {

using namespace NSLoopTool;

int Run(int argc, char** argv) {
    CCommandLine line("Inspect, check, render, play and make sliced audio loops.", VersionText());
    AddInfoCommand(line);
    AddSlicesCommand(line);
    AddListCommand(line);
    AddCheckCommand(line);
    AddRenderCommand(line);
    AddPreviewCommand(line);
    AddDecodeCommand(line);
    AddPlotCommand(line);
    AddPlayCommand(line);
    AddExportCommand(line);
    AddMakeCommand(line);
    const RunFunction run = line.Parse(Arguments(argc, argv));
    if (!run) {
        return 0;
    }
    CatchInterrupts();
    const CLibrary library;
    const int exitCode = run();
    FinishStandardOutput();
    return exitCode;
}

int Fail(const std::string& text, int exitCode) {
    std::fflush(stdout);
    std::fprintf(stderr, "looptool: %s\n", text.c_str());
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    MakeTerminalUtf8();
    HaveWritesFail();
    try {
        return Run(argc, argv);
    } catch (const CToolFailure& failure) {
        return Fail(failure.what(), failure.GetExitCode());
    } catch (const std::bad_alloc&) {
        return Fail("not enough memory", kExitCode_Failed);
    } catch (const std::exception& exception) {
        return Fail(SafeText(exception.what()), kExitCode_Failed);
    }
}
