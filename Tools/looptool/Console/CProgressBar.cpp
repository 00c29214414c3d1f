#include "looptool/Console/CProgressBar.h"

#include "looptool/Console/SafeText.h"
#include "looptool/System/Terminal.h"

#include <algorithm>
#include <cstdio>

namespace NSLoopTool {

namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr int64_t kBarWidth = 30;
constexpr int64_t kFigures = 9; // of " [", "] 100%" and the last column

} // namespace

CProgressBar::CProgressBar(const std::string& label)
    : fLabel(SafeText(label)), fVisible(IsTerminal(stderr)) {}

CProgressBar::~CProgressBar() {
    if (fShown >= 0) {
        std::fprintf(stderr, "\r%*s\r", TerminalWidth(stderr) - 1, "");
    }
}

void CProgressBar::Show(int64_t percent) {
    const int64_t now = std::clamp<int64_t>(percent, 0, 100);
    if (!fVisible || now == fShown ||
        (fShown < 0 && std::chrono::steady_clock::now() - fStart < kPatience)) {
        return;
    }
    fShown = now;
    const int64_t room = std::max<int64_t>(TerminalWidth(stderr) - kFigures, 0);
    const int64_t width = std::min(kBarWidth, room / 2);
    const std::string label = KeepEnd(fLabel, static_cast<size_t>(room - width));
    const auto filled = static_cast<size_t>(now * width / 100);
    const std::string bar =
        std::string(filled, '#') + std::string(static_cast<size_t>(width) - filled, '.');
    std::fprintf(stderr, "\r%s [%s] %3d%%", label.c_str(), bar.c_str(), static_cast<int>(now));
    std::fflush(stderr);
}

} // namespace NSLoopTool
