#include "looptool/Playing/Player.h"

#include "looptool/Loop/CExactPreview.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/Terminal.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <portaudio.h>
#include <unistd.h>

namespace NSLoopTool {

namespace {

constexpr int kTickMilliseconds = 50;

// What the callback and the player share. The callback waits for nothing.
struct SPlaying {
    LOPHandle fLoop = 0;
    int fChannels = 1;
    std::atomic<uint64_t> fFrames{0};
};

extern "C" {
static int FillBlock(const void* /*input*/, void* output, unsigned long frames,
                     const PaStreamCallbackTimeInfo* /*time*/, PaStreamCallbackFlags /*flags*/,
                     void* user) {
    auto& playing = *static_cast<SPlaying*>(user);
    auto* const* planes = static_cast<float* const*>(output);
    unsigned long done = 0;
    while (done < frames) {
        const auto count = std::min<unsigned long>(frames - done, LOP_MAX_BATCH_FRAMES);
        LOPRenderBuffers buffers{planes[0] + done,
                                 playing.fChannels == 2 ? planes[1] + done : nullptr};
        LOPRenderPreviewBatch(playing.fLoop, static_cast<int32_t>(count), &buffers);
        done += count;
    }
    playing.fFrames.fetch_add(frames, std::memory_order_relaxed);
    return paContinue;
}
}

void Check(PaError error, const char* what) {
    if (error != paNoError) {
        throw CToolFailure(std::string("cannot ") + what + ": " + Pa_GetErrorText(error));
    }
}

// Drivers that look for devices write to standard error, which is not theirs.
class CQuietErrors {
public:
    CQuietErrors() : fSaved(dup(STDERR_FILENO)) {
        const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (nothing >= 0) {
            dup2(nothing, STDERR_FILENO);
            close(nothing);
        }
    }
    ~CQuietErrors() {
        if (fSaved >= 0) {
            dup2(fSaved, STDERR_FILENO);
            close(fSaved);
        }
    }
    CQuietErrors(const CQuietErrors&) = delete;
    CQuietErrors& operator=(const CQuietErrors&) = delete;

private:
    const int fSaved;
};

class CSystemSound {
public:
    CSystemSound() {
        const CQuietErrors quiet;
        Check(Pa_Initialize(), "start the sound system");
    }
    ~CSystemSound() { Pa_Terminate(); }
    CSystemSound(const CSystemSound&) = delete;
    CSystemSound& operator=(const CSystemSound&) = delete;
};

class CSoundStream {
public:
    CSoundStream(SPlaying& playing, int rate) {
        const CQuietErrors quiet;
        Check(Pa_OpenDefaultStream(&fStream, 0, playing.fChannels, paFloat32 | paNonInterleaved,
                                   rate, paFramesPerBufferUnspecified, FillBlock, &playing),
              "open the sound output");
        Check(Pa_StartStream(fStream), "start the sound output");
    }
    ~CSoundStream() {
        Pa_StopStream(fStream);
        Pa_CloseStream(fStream);
    }
    CSoundStream(const CSoundStream&) = delete;
    CSoundStream& operator=(const CSoundStream&) = delete;

private:
    PaStream* fStream = nullptr;
};

// Keys, the line, and where in the loop the sound is.
class CPlayer {
public:
    CPlayer(CLoop& loop, double tempo, double loops)
        : fLoop(loop), fTempo(tempo), fLoops(loops), fIsShown(IsTerminal(stderr)) {
        fPlaying.fLoop = loop.GetHandle();
        fPlaying.fChannels = loop.IsStereo() ? 2 : 1;
    }

    void Play() {
        const CSystemSound sound;
        SetTempo(fTempo);
        fLoop.StartPreview();
        {
            const CSoundStream stream(fPlaying, fLoop.GetOutputSampleRate());
            CKeyboard keyboard;
            while (!fIsOver && !WasInterrupted()) {
                TakeKey(keyboard.WaitForKey(kTickMilliseconds));
                Advance();
                ShowLine();
            }
        }
        if (fIsShown) {
            std::fprintf(stderr, "\r%*s\r", TerminalWidth(stderr) - 1, "");
        }
        StopIfInterrupted();
    }

private:
    void SetTempo(double tempo) {
        fTempo = std::clamp(tempo, LOP_MIN_TEMPO / 1000.0, LOP_MAX_TEMPO / 1000.0);
        fLoop.SetPreviewTempo(static_cast<int32_t>(std::lround(fTempo * 1000.0)));
    }
    void TakeKey(char key) {
        switch (key) {
        case '+':
        case '=':
        case kKey_Up:
            SetTempo(fTempo + 1.0);
            break;
        case '-':
        case kKey_Down:
            SetTempo(fTempo - 1.0);
            break;
        case ' ':
            fIsStopped ? fLoop.StartPreview() : fLoop.StopPreview();
            fIsStopped = !fIsStopped;
            fPasses = fIsStopped ? fPasses : std::floor(fPasses);
            break;
        case 'q':
            fIsOver = true;
            break;
        default:
            break;
        }
    }
    void Advance() {
        const uint64_t frames = fPlaying.fFrames.load(std::memory_order_relaxed);
        if (!fIsStopped) {
            fPasses += static_cast<double>(frames - fSeenFrames) / PassFrames(fLoop, fTempo);
        }
        fSeenFrames = frames;
        fIsOver = fIsOver || (fLoops > 0.0 && fPasses >= fLoops);
    }
    void ShowLine() const {
        if (!fIsShown) {
            return;
        }
        const LOPInfo& info = fLoop.GetInfo();
        const double beats =
            static_cast<double>(info.fPPQLength) / LOP_PPQ * info.fTimeSignatureDenominator / 4.0;
        const auto beat = static_cast<int>((fPasses - std::floor(fPasses)) * beats);
        char text[128];
        std::snprintf(text, sizeof text, "%s  bar %d  beat %d  %.1f BPM  [+ - space q] ",
                      fIsStopped ? "stopped" : "playing", beat / info.fTimeSignatureNumerator + 1,
                      beat % info.fTimeSignatureNumerator + 1, fTempo);
        std::fprintf(stderr, "\r%.*s", TerminalWidth(stderr) - 1, text); // never a second line
        std::fflush(stderr);
    }

    CLoop& fLoop;
    double fTempo;
    const double fLoops;
    const bool fIsShown;
    SPlaying fPlaying;
    uint64_t fSeenFrames = 0;
    double fPasses = 0.0;
    bool fIsStopped = false;
    bool fIsOver = false;
};

} // namespace

bool HasPortAudio() {
    return true;
}

void PlayLoop(CLoop& loop, double tempo, double loops) {
    CPlayer(loop, tempo != 0.0 ? tempo : loop.GetInfo().fStoredTempo / 1000.0, loops).Play();
}

} // namespace NSLoopTool
