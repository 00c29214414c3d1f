#include "looptool/Commands/Jobs.h"

#include "looptool/Console/CProgressBar.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace NSLoopTool {

namespace {

// What the threads share.
class CJobRun {
public:
    CJobRun(size_t count, const std::string& label) : fPercents(count), fBar(label) {}

    void Work(const std::function<void(size_t, const ProgressFunction&)>& work) {
        for (;;) {
            const size_t index = fNext.fetch_add(1);
            if (index >= fPercents.size() || WasInterrupted() || HasFailed()) {
                return;
            }
            try {
                work(index, [this, index](int64_t percent) { Show(index, percent); });
                Show(index, 100);
            } catch (const CToolFailure& failure) {
                Note(failure);
            } catch (...) {
                const std::lock_guard lock(fMutex);
                fFailure = std::current_exception();
            }
        }
    }

    int Finish() {
        if (fFailure != nullptr) {
            std::rethrow_exception(fFailure);
        }
        StopIfInterrupted();
        return fExitCode;
    }

private:
    bool HasFailed() {
        const std::lock_guard lock(fMutex);
        return fFailure != nullptr;
    }
    void Note(const CToolFailure& failure) {
        const std::lock_guard lock(fMutex);
        if (fPercents.size() == 1) {
            fFailure = std::current_exception();
        } else if (failure.GetExitCode() != kExitCode_Interrupted) {
            std::fprintf(stderr, "looptool: %s\n", failure.what());
            fExitCode = std::max(fExitCode, failure.GetExitCode());
        }
    }
    void Show(size_t index, int64_t percent) {
        const std::lock_guard lock(fMutex);
        fTotal += percent - fPercents[index];
        fPercents[index] = percent;
        fBar.Show(fTotal / static_cast<int64_t>(fPercents.size()));
    }

    std::atomic<size_t> fNext{0};
    std::mutex fMutex; // guards the rest
    std::vector<int64_t> fPercents;
    int64_t fTotal = 0;
    CProgressBar fBar;
    int fExitCode = 0;
    std::exception_ptr fFailure;
};

} // namespace

int RunJobs(size_t count, int32_t jobs, const std::string& label,
            const std::function<void(size_t index, const ProgressFunction& progress)>& work) {
    const size_t wished = jobs > 0 ? static_cast<size_t>(jobs)
                                   : std::max<size_t>(std::thread::hardware_concurrency(), 1);
    CJobRun run(count, label);
    std::vector<std::jthread> helpers;
    for (size_t i = 1; i < std::min(wished, count); ++i) {
        helpers.emplace_back([&run, &work] { run.Work(work); });
    }
    run.Work(work);
    helpers.clear(); // waits for them
    return run.Finish();
}

} // namespace NSLoopTool
