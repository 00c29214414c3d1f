#pragma once

#include "looptool/Making/MakePlan.h"
#include "looptool/Making/SettingsFile.h"

#include <cstdint>
#include <vector>

namespace NSLoopTool {

/// What the audio tells of the loop's length beside what is known: sets bars and beats, and the
/// time signature, of a plan whose audio and loop are known. Says on standard error what it decided
/// and how sure it is; CToolFailure, which asks for numbers, when it is not sure enough.
void GuessLength(SMakePlan& plan, const SKnownLoop& known);

/// The cuts of `--slices auto`: just before each attack in the loop, at least one.
std::vector<SCut> FindCuts(const SMakePlan& plan, int32_t sensitivity);

} // namespace NSLoopTool
