#pragma once

#include <cstdint>
#include <string>

namespace NSLoopTool {

/// A line on standard error that shows how far a piece of work is. Shows nothing where standard
/// error is no terminal. Removes itself when it goes.
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
    int64_t fShown = -1;
};

} // namespace NSLoopTool
