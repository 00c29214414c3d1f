#include "looptool/CProgressBar.h"

#include "looptool/Terminal.h"

#include <algorithm>
#include <cstdio>

namespace NSLoopTool {

namespace {

constexpr int kBarWidth = 30;

} // namespace

CProgressBar::CProgressBar(const std::string& label)
    : fLabel(label), fVisible(IsTerminal(stderr)) {}

CProgressBar::~CProgressBar() {
    if (fVisible && fShown >= 0) {
        const int width = static_cast<int>(fLabel.size()) + kBarWidth + 9;
        std::fprintf(stderr, "\r%*s\r", width, "");
    }
}

void CProgressBar::Show(int64_t percent) {
    const int64_t now = std::clamp<int64_t>(percent, 0, 100);
    if (!fVisible || now == fShown) {
        return;
    }
    fShown = now;
    const auto filled = static_cast<size_t>(now * kBarWidth / 100);
    const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, '.');
    std::fprintf(stderr, "\r%s [%s] %3d%%", fLabel.c_str(), bar.c_str(), static_cast<int>(now));
    std::fflush(stderr);
}

} // namespace NSLoopTool
