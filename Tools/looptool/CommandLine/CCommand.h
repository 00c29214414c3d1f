#pragma once

#include "looptool/Console/Numbers.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace NSLoopTool {

/// A command of the command line and its options. The targets that are passed by reference get
/// their values when the command line is parsed, and must live until the command has run; what they
/// hold before is the default. The description of an option names its default where there is one.
/// Numbers are decimal and nothing else. What is out of range is a wrong usage that names the
/// option and the range.
class CCommand {
public:
    /// Wraps a command of the parser, which owns it.
    explicit CCommand(CLI::App& command) : fCommand(command) {}

    /// Arguments without a name, each required.
    void AddFile(const std::string& name, std::string& target, const std::string& description);
    void AddFiles(const std::string& name, std::vector<std::string>& target,
                  const std::string& description);
    /// "-o,--output", required.
    void AddOutput(std::string& target, const std::string& description);

    void AddFlag(const std::string& name, bool& target, const std::string& description);
    void AddText(const std::string& name, const std::string& type, std::string& target,
                 const std::string& description);
    /// An option that may be given several times.
    void AddTexts(const std::string& name, std::vector<std::string>& target,
                  const std::string& description);
    void AddChoice(const std::string& name, std::string& target,
                   const std::vector<std::string>& choices, const std::string& description);
    template <class Integer>
    void AddInteger(const std::string& name, Integer& target, int64_t least, int64_t greatest,
                    const std::string& description, const std::string& group = "") {
        AddInteger(
            name, [&target](int64_t value) { target = static_cast<Integer>(value); }, least,
            greatest, description, group);
    }
    void AddInteger(const std::string& name, const std::function<void(int64_t)>& take,
                    int64_t least, int64_t greatest, const std::string& description,
                    const std::string& group);
    void AddDecimal(const std::string& name, double& target, double least, double greatest,
                    const std::string& description);

    /// One line that begins with "looptool".
    void SetExample(const std::string& example);

private:
    CLI::App& fCommand;
};

} // namespace NSLoopTool
