#include "looptool/CommandLine/CCommandLine.h"

#include "looptool/CommandLine/SimilarWord.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/System/ToolFailure.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <utility>

namespace NSLoopTool {

namespace {

// The first argument that the command has no place for.
std::string UnknownText(const CLI::App& command) {
    const std::string word = command.remaining().front();
    if (!word.starts_with("-")) {
        return SafeText(word) + ": " + command.get_name() + " takes one file";
    }
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    const std::string similar = SimilarWord(word, names);
    return "unknown option \"" + SafeText(word) + "\"" +
           (similar.empty() ? "" : "; did you mean \"" + similar + "\"?");
}

} // namespace

CCommandLine::CCommandLine(const std::string& description, const std::string& version)
    : fApp(std::make_unique<CLI::App>(description, "looptool")) {
    fApp->set_version_flag("--version", version);
    fApp->require_subcommand(1);
    fApp->footer("\"looptool COMMAND --help\" tells about a command, \"man looptool\" about all.\n"
                 "Exit codes: 0 success, 1 wrong usage (of check: a file failed), 2 failure, "
                 "130 interrupted.");
}

CCommandLine::~CCommandLine() = default;

CCommand CCommandLine::AddCommand(const std::string& name, const std::string& description,
                                  RunFunction run) {
    CLI::App& command = *fApp->add_subcommand(name, description);
    command.callback([this, run = std::move(run)] { fChosen = run; });
    return CCommand(command);
}

// The parser's own words on a word that is not a command do not name it.
void CCommandLine::CheckCommand(const std::vector<std::string>& arguments) const {
    if (arguments.empty()) {
        throw CToolFailure("a command is needed; \"looptool --help\" lists them", kExitCode_Usage);
    }
    if (arguments.front().starts_with("-")) {
        return;
    }
    std::vector<std::string> names;
    for (const CLI::App* command : fApp->get_subcommands({})) {
        names.push_back(command->get_name());
    }
    const std::string& word = arguments.front();
    if (std::find(names.begin(), names.end(), word) == names.end()) {
        const std::string similar = SimilarWord(word, names);
        throw CToolFailure("unknown command \"" + SafeText(word) + "\"" +
                               (similar.empty() ? "" : "; did you mean \"" + similar + "\"?"),
                           kExitCode_Usage);
    }
}

RunFunction CCommandLine::Parse(std::vector<std::string> arguments) {
    if (!arguments.empty() && arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.resize(std::min<size_t>(arguments.size(), 1));
        arguments.emplace_back("--help");
    }
    CheckCommand(arguments);
    std::reverse(arguments.begin(), arguments.end()); // as the parser takes a vector
    try {
        fApp->parse(std::move(arguments));
        return fChosen;
    } catch (const CLI::ParseError& error) {
        const bool isQuestion = error.get_exit_code() == 0; // --help, --version
        if (isQuestion) {
            std::ostringstream answer;
            fApp->exit(error, answer, answer);
            std::fputs(answer.str().c_str(), stdout);
            FinishStandardOutput();
            return nullptr;
        }
        const auto chosen = fApp->get_subcommands();
        const std::string command = chosen.empty() ? "" : chosen.front()->get_name() + " ";
        const bool isUnknown = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
        throw CToolFailure(
            (isUnknown && !chosen.empty() ? UnknownText(*chosen.front()) : SafeText(error.what())) +
                " (\"looptool " + command + "--help\" tells more)",
            kExitCode_Usage);
    }
}

} // namespace NSLoopTool
