#pragma once

#include "CLoadedLoop.h"
#include "CLoopStore.h"
#include "CPathSlot.h"
#include "CTransport.h"
#include "Uris.h"

#include <lv2/atom/forge.h>
#include <lv2/core/lv2.h>
#include <lv2/log/logger.h>
#include <lv2/state/state.h>
#include <lv2/worker/worker.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

/// The plug-in: plays the slices of a loop in time with the host, and single slices by MIDI keys.
///
/// The audio call (Run) does arithmetic on what a worker has made ready: it calls nothing of the
/// library, allocates nothing and waits for nothing. A loop travels to it by the worker's response,
/// and the one that it replaces fades out and
/// goes back to the worker to be freed.
class CLoopPlayer {
public:
    enum EPort : uint32_t {
        kPort_Control,
        kPort_Notify,
        kPort_Left,
        kPort_Right,
        kPort_Gain,
        kPort_Speed,
        kPort_StartSlice,
        kPort_FollowHost,
        kPort_Tempo,
        kPort_Count
    };
    static constexpr uint8_t kFirstKey = 36; // C1, where C4 is 60

    /// Throws std::runtime_error when the host lacks urid:map. In a host without a worker a file is
    /// loaded by a restored state alone.
    CLoopPlayer(double rate, const LV2_Feature* const* features);
    CLoopPlayer(const CLoopPlayer&) = delete;
    CLoopPlayer& operator=(const CLoopPlayer&) = delete;

    void ConnectPort(uint32_t port, void* data) noexcept;
    void Activate() noexcept;
    void Deactivate() noexcept { fActive = false; }
    void Run(uint32_t frames) noexcept;

    LV2_Worker_Status Work(LV2_Worker_Respond_Function respond, LV2_Worker_Respond_Handle handle,
                           uint32_t size, const void* data) noexcept;
    LV2_Worker_Status WorkResponse(uint32_t size, const void* data) noexcept;

    LV2_State_Status Save(LV2_State_Store_Function store, LV2_State_Handle handle,
                          const LV2_Feature* const* features);
    LV2_State_Status Restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                             const LV2_Feature* const* features);

private:
    // What is handed to the worker and back, by value.
    struct SJob {
        enum EKind : uint32_t { kLoad, kFree } fKind;
        uint32_t fTurn;     // counts the requests, so that a late answer to an old one is dropped
        CLoadedLoop* fLoop; // kFree, and every answer
        char fPath[CPathSlot::kLongest + 1];
    };
    static constexpr uint32_t kFreeSize = offsetof(SJob, fPath);

    void TakeEvents(uint32_t frames) noexcept;
    void TakeMidi(const uint8_t* message, uint32_t size, int64_t frame) noexcept;
    void TakeObject(const LV2_Atom_Object& object) noexcept;
    void RenderTo(int64_t frame) noexcept;
    void AskWorker() noexcept;
    void AskFor(const char* path, uint32_t size) noexcept;
    void Replace(CLoadedLoop* loop) noexcept;
    void PassFade(int64_t frames) noexcept;
    void FreeFading() noexcept;
    void Free(CLoadedLoop* loop) noexcept;
    void FreeDoomed() noexcept;
    void Notify() noexcept;
    void Show(const char* path, uint32_t length) noexcept;
    CLoadedLoop* Load(const char* path) noexcept;
    // A control within its range; the lowest value for what is not a number.
    float Control(EPort port, float lowest, float highest) const noexcept {
        const float value = *static_cast<const float*>(fPorts[port]);
        return value >= lowest ? std::min(value, highest) : lowest;
    }

    double fRate;
    LV2_URID_Map* fMap = nullptr;
    LV2_Worker_Schedule* fSchedule = nullptr;
    LV2_Log_Logger fLogger{};
    SUris fUris;
    LV2_Atom_Forge fForge{};
    void* fPorts[kPort_Count] = {};

    LoopLibrary::SliceScheduler fScheduler{64};
    CTransport fTransport;
    LoopLibrary::TempoClock fFree; // when the host is not followed
    CLoopStore fStore;
    CLoadedLoop* fLoop = nullptr; // that is played
    uint32_t fTurn = 0;
    bool fWasPlaying = false;
    bool fNotifyDue = false;
    bool fLoadDue = false; // the worker has not taken the request yet
    bool fActive = false;
    int64_t fDone = 0; // frames of the block that are rendered
    SJob fJob{};       // scratch of the audio call

    CLoadedLoop* fFading = nullptr; // loops that were replaced and are still heard
    CLoadedLoop* fDoomed = nullptr; // loops that the worker has not taken yet

    // The file that was asked for last, loaded or not: what a save stores and a host is told.
    CPathSlot fPath;
    char fShownPath[CPathSlot::kLongest + 1] = {}; // the audio call's own copy
    uint32_t fShownSize = 0;
};
