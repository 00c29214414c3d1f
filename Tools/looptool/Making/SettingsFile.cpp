#include "looptool/Making/SettingsFile.h"

#include "looptool/Console/Numbers.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/InputFile.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace NSLoopTool {

namespace {

using nlohmann::json;

class CSettingsParser {
public:
    explicit CSettingsParser(const std::string& path) : fName(InputName(path)) {
        const std::vector<uint8_t> bytes = ReadInputFile(path);
        fRoot = json::parse(bytes.begin(), bytes.end(), nullptr, false);
        if (!fRoot.is_object()) {
            Fail("not the JSON object that \"looptool info --settings\" prints");
        }
    }

    SKnownLoop Parse() const {
        SKnownLoop known;
        if (!fRoot.contains("settings")) {
            AddSettings(fRoot, "", known.fSettings);
            return known;
        }
        AddSettings(fRoot["settings"], "", known.fSettings);
        known.fKind = Get<std::string>("kind").value_or("");
        known.fBars = Get<int32_t>("bars");
        known.fBeats = Get<int32_t>("beats");
        if (Get<bool>("tempo_is_stored").value_or(true)) {
            known.fTempo = Get<double>("stored_tempo");
        }
        known.fLoopStart = Get<int64_t>("loop_start");
        known.fLoopEnd = Get<int64_t>("loop_end");
        known.fTexts =
            Get<std::vector<std::string>>("creator_texts").value_or(std::vector<std::string>{});
        if (const auto parts = Get<std::vector<int32_t>>("time_signature")) {
            known.fSignature = parts->size() == 2
                                   ? ParseSignature(std::to_string(parts->front()) + "/" +
                                                    std::to_string(parts->back()))
                                   : std::nullopt;
            if (!known.fSignature) {
                Fail("\"time_signature\" must be two numbers from 1 to 15");
            }
        }
        return known;
    }

private:
    [[noreturn]] void Fail(const std::string& text) const {
        throw CToolFailure(fName + ": " + text);
    }

    template <class Value>
    std::optional<Value> Get(const char* key) const {
        if (!fRoot.contains(key)) {
            return std::nullopt;
        }
        try {
            return fRoot[key].get<Value>();
        } catch (const json::exception&) {
            Fail(std::string("\"") + key + "\" is not of its type");
        }
    }

    void AddSettings(const json& object, const std::string& prefix, CLoopSettings& settings) const {
        if (!object.is_object()) {
            Fail("\"settings\" is not an object");
        }
        for (const auto& [name, value] : object.items()) {
            const std::string key = prefix + name;
            if (value.is_object() && prefix.empty()) {
                AddSettings(value, key + ".", settings);
                continue;
            }
            const SSettingRow* const row = FindSettingRow(key);
            if (row == nullptr) {
                Fail("unknown setting \"" + SafeText(key) + "\"");
            }
            const bool isFlag = row->IsFlag() && value.is_boolean();
            if (!isFlag && !value.is_number_integer()) {
                Fail("\"" + key + "\" must be " +
                     (row->IsFlag() ? "true or false" : "a whole number"));
            }
            const int64_t number = isFlag ? int64_t{value.get<bool>()} : value.get<int64_t>();
            if (!row->fRange.Holds(number)) {
                Fail("\"" + key + "\" must be " + std::to_string(row->fRange.fLeast) + " to " +
                     std::to_string(row->fRange.fGreatest));
            }
            settings[key] = number;
        }
    }

    const std::string fName;
    json fRoot;
};

} // namespace

SKnownLoop ReadSettingsFile(const std::string& path) {
    return CSettingsParser(path).Parse();
}

std::optional<SSignature> ParseSignature(const std::string& text) {
    const size_t slash = text.find('/');
    if (slash == std::string::npos) {
        return std::nullopt;
    }
    const std::optional<int64_t> numerator = ParseInteger(text.substr(0, slash));
    const std::optional<int64_t> denominator = ParseInteger(text.substr(slash + 1));
    if (!numerator || !denominator || !NSLOPDLL::kSignaturePartRange.Holds(*numerator) ||
        !NSLOPDLL::kSignaturePartRange.Holds(*denominator)) {
        return std::nullopt;
    }
    return SSignature{static_cast<int32_t>(*numerator), static_cast<int32_t>(*denominator)};
}

} // namespace NSLoopTool
