#pragma once

#include "looptool/Loop/CLoop.h"
#include "looptool/Loop/LoopModel.h"
#include "looptool/Loop/LoopSettings.h"

#include <nlohmann/json.hpp>

namespace NSLoopTool {

/// The keys are an interface: the man page documents them, `make --settings` reads them.
nlohmann::ordered_json InfoJson(const CLoop& loop, const SLoopModel& model, bool withSettings);
nlohmann::ordered_json SlicesJson(const CLoop& loop, const SLoopModel& model);

/// As text. Names and texts that are not UTF-8 get replacement characters.
std::string JsonText(const nlohmann::ordered_json& json, int indent = 2);

} // namespace NSLoopTool
