#include "looptool/CommandLine/CCommand.h"

#include <CLI/CLI.hpp>

namespace NSLoopTool {

void CCommand::AddFile(const std::string& name, std::string& target,
                       const std::string& description) {
    fCommand.add_option(name, target, description)->required()->type_name("");
}

void CCommand::AddFiles(const std::string& name, std::vector<std::string>& target,
                        const std::string& description) {
    fCommand.add_option(name, target, description)->required()->type_name("");
}

void CCommand::AddOutput(std::string& target, const std::string& description) {
    fCommand.add_option("-o,--output", target, description)->required()->type_name("PATH");
}

void CCommand::AddFlag(const std::string& name, bool& target, const std::string& description) {
    fCommand.add_flag(name, target, description);
}

void CCommand::AddText(const std::string& name, const std::string& type, std::string& target,
                       const std::string& description) {
    fCommand.add_option(name, target, description)->type_name(type);
}

void CCommand::AddTexts(const std::string& name, std::vector<std::string>& target,
                        const std::string& description) {
    fCommand.add_option(name, target, description)->type_name("TEXT")->expected(1)->take_all();
}

void CCommand::AddChoice(const std::string& name, std::string& target,
                         const std::vector<std::string>& choices, const std::string& description) {
    std::string list;
    for (const std::string& choice : choices) {
        list += (list.empty() ? "" : "|") + choice;
    }
    fCommand
        .add_option_function<std::string>(
            name,
            [&target, choices, name, list](const std::string& text) {
                if (std::find(choices.begin(), choices.end(), text) == choices.end()) {
                    throw CLI::ValidationError(name, "must be one of " + list);
                }
                target = text;
            },
            description)
        ->type_name(list);
}

void CCommand::AddInteger(const std::string& name, const std::function<void(int64_t)>& take,
                          int64_t least, int64_t greatest, const std::string& description,
                          const std::string& group) {
    CLI::Option* const option =
        fCommand
            .add_option_function<std::string>(
                name,
                [take, least, greatest, name](const std::string& text) {
                    const std::optional<int64_t> value = ParseInteger(text);
                    if (!value || *value < least || *value > greatest) {
                        throw CLI::ValidationError(name, "must be a whole number from " +
                                                             std::to_string(least) + " to " +
                                                             std::to_string(greatest));
                    }
                    take(*value);
                },
                description)
            ->type_name("N");
    if (!group.empty()) {
        option->group(group);
    }
}

void CCommand::AddDecimal(const std::string& name, double& target, double least, double greatest,
                          const std::string& description) {
    fCommand
        .add_option_function<std::string>(
            name,
            [&target, least, greatest, name](const std::string& text) {
                const std::optional<double> value = ParseDecimal(text);
                if (!value || *value < least || *value > greatest) {
                    throw CLI::ValidationError(name, "must be a number from " + DecimalText(least) +
                                                         " to " + DecimalText(greatest));
                }
                target = *value;
            },
            description)
        ->type_name("X");
}

void CCommand::SetExample(const std::string& example) {
    fCommand.footer("Example: " + example);
}

} // namespace NSLoopTool
