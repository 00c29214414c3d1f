#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace NSLoopTool {

/// A line on standard error that shows how far a piece of work is, once the work has taken half a
/// second. It fits the terminal's width, shows nothing where standard error is not a terminal, and
/// removes itself when it goes.
class CProgressBar {
public:
    explicit CProgressBar(const std::string& label);
    ~CProgressBar();
    CProgressBar(const CProgressBar&) = delete;
    CProgressBar& operator=(const CProgressBar&) = delete;

    /// 0 to 100; anything beyond is cut to that.
    void Show(int64_t percent);

private:
    const std::string fLabel;
    const bool fVisible;
    const std::chrono::steady_clock::time_point fStart = std::chrono::steady_clock::now();
    int64_t fShown = -1;
};

} // namespace NSLoopTool
