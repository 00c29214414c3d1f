#include "CLoopPlayer.h"

#include "AtomWalk.h"

#include <lv2/core/lv2_util.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace {

template <class Feature>
Feature* FindFeature(const LV2_Feature* const* features, const char* uri) {
    return static_cast<Feature*>(lv2_features_data(features, uri));
}

LV2_URID_Map& RequireMap(const LV2_Feature* const* features) {
    auto* map = FindFeature<LV2_URID_Map>(features, LV2_URID__map);
    if (map == nullptr) {
        throw std::runtime_error("the host lacks urid:map");
    }
    return *map;
}

} // namespace

CLoopPlayer::CLoopPlayer(double rate, const LV2_Feature* const* features)
    : fRate(rate), fMap(&RequireMap(features)),
      fSchedule(FindFeature<LV2_Worker_Schedule>(features, LV2_WORKER__schedule)), fUris(*fMap),
      fTransport(fUris, rate), fFree(rate) {
    lv2_log_logger_init(&fLogger, fMap, FindFeature<LV2_Log_Log>(features, LV2_LOG__log));
    lv2_atom_forge_init(&fForge, fMap);
    fScheduler.SetSampleRate(rate);
}

void CLoopPlayer::ConnectPort(uint32_t port, void* data) noexcept {
    if (port < kPort_Count) {
        fPorts[port] = data;
    }
}

void CLoopPlayer::Activate() noexcept {
    fScheduler.Reset();
    FreeFading();
    fTransport.Reset();
    fFree.MoveTo(0.0);
    fWasPlaying = false;
    fNotifyDue = true;
    fActive = true;
}

void CLoopPlayer::Run(uint32_t frames) noexcept {
    std::fill_n(static_cast<float*>(fPorts[kPort_Left]), frames, 0.0F);
    std::fill_n(static_cast<float*>(fPorts[kPort_Right]), frames, 0.0F);
    const auto decibels = static_cast<double>(Control(kPort_Gain, -90.0F, 24.0F));
    fScheduler.SetGain(static_cast<float>(std::pow(10.0, decibels / 20.0)));
    fScheduler.SetStartSlice(static_cast<std::size_t>(Control(kPort_StartSlice, 0.0F, 999.0F)));
    const auto bpm = static_cast<double>(Control(kPort_Tempo, 20.0F, 450.0F));
    fFree.SetBpm(bpm);
    fTransport.SetTempoWithoutHost(bpm);

    fDone = 0;
    TakeEvents(frames);
    RenderTo(frames);
    if (fLoadDue) {
        AskWorker();
    }
    FreeDoomed();
    Notify();
}

void CLoopPlayer::TakeEvents(uint32_t frames) noexcept {
    const auto& control = *static_cast<const LV2_Atom_Sequence*>(fPorts[kPort_Control]);
    AtomWalk::ForEachEvent(control, [&](const LV2_Atom_Event& event) {
        // One that comes behind its time happens now.
        const int64_t frame = std::clamp<int64_t>(event.time.frames, fDone, frames);
        const LV2_Atom& atom = event.body;
        if (atom.type == fUris.fMidiEvent) {
            TakeMidi(reinterpret_cast<const uint8_t*>(&atom + 1), atom.size, frame);
        } else if ((atom.type == fUris.fObject || atom.type == fUris.fBlank) &&
                   atom.size >= sizeof(LV2_Atom_Object_Body)) {
            RenderTo(frame); // what it changes, it changes from here on
            TakeObject(reinterpret_cast<const LV2_Atom_Object&>(atom));
        }
    });
}

void CLoopPlayer::TakeMidi(const uint8_t* message, uint32_t size, int64_t frame) noexcept {
    if (size < 3 || message[1] > 127 || message[2] > 127) {
        return;
    }
    const int kind = message[0] & 0xF0;
    if (kind == 0x90 && message[2] > 0 && message[1] >= kFirstKey) {
        fScheduler.Trigger(static_cast<std::size_t>(message[1] - kFirstKey),
                           static_cast<float>(message[2]) / 127.0F, frame - fDone);
    } else if (kind == 0xB0 && (message[1] == LV2_MIDI_CTL_ALL_SOUNDS_OFF ||
                                message[1] == LV2_MIDI_CTL_ALL_NOTES_OFF)) {
        RenderTo(frame);
        fScheduler.Silence();
    }
}

void CLoopPlayer::TakeObject(const LV2_Atom_Object& object) noexcept {
    if (object.body.otype == fUris.fPosition) {
        fTransport.Update(object);
    } else if (object.body.otype == fUris.fPatchGet) {
        fNotifyDue = true;
    } else if (object.body.otype == fUris.fPatchSet) {
        const LV2_Atom* const property = AtomWalk::FindValue(object, fUris.fPatchProperty);
        const LV2_Atom* const value = AtomWalk::FindValue(object, fUris.fPatchValue);
        if (property == nullptr || property->type != fUris.fUrid || value == nullptr ||
            (value->type != fUris.fPath && value->type != fUris.fString)) {
            return;
        }
        const auto* const urid = AtomWalk::ReadBody<LV2_URID>(*property);
        if (urid != nullptr && *urid == fUris.fFile) {
            AskFor(reinterpret_cast<const char*>(value + 1), value->size);
        }
    }
}

// The block up to a frame, by the host's transport or the plug-in's own.
void CLoopPlayer::RenderTo(int64_t frame) noexcept {
    const int64_t frames = frame - fDone;
    if (frames <= 0) {
        return;
    }
    float* const left = static_cast<float*>(fPorts[kPort_Left]) + fDone;
    float* const right = static_cast<float*>(fPorts[kPort_Right]) + fDone;
    const bool follows = Control(kPort_FollowHost, 0.0F, 1.0F) > 0.5F;
    const double bpm = follows ? fTransport.GetBpm() : fFree.GetBpm();
    const bool plays = fLoop != nullptr && bpm > 0.0 && (!follows || fTransport.IsRolling());
    if (plays) {
        static constexpr double kSpeeds[] = {0.5, 1.0, 2.0};
        const auto choice = static_cast<std::size_t>(Control(kPort_Speed, 0.0F, 2.0F));
        const double speed = kSpeeds[choice];
        const double quarter = follows ? fTransport.GetQuarter() : fFree.GetQuarter();
        fScheduler.Render(quarter * speed, bpm * speed, left, right, frames);
    } else {
        if (fWasPlaying) {
            fScheduler.Stop();
        }
        fScheduler.Ring(left, right, frames);
    }
    fWasPlaying = plays;
    fTransport.Advance(frames);
    if (!follows) {
        fFree.Advance(frames);
    }
    fDone = frame;
    PassFade(frames);
}

void CLoopPlayer::AskFor(const char* path, uint32_t size) noexcept {
    // The size of a string atom counts its zero, but not every host sends one.
    const auto length = static_cast<uint32_t>(strnlen(path, size));
    if (length > CPathSlot::kLongest) {
        fNotifyDue = true; // the host learns that the old one holds
        return;
    }
    Show(path, length);
    AskWorker();
}

// The file that is asked for from now on, though it is not loaded yet.
void CLoopPlayer::Show(const char* path, uint32_t length) noexcept {
    std::memcpy(fShownPath, path, length);
    fShownPath[length] = 0;
    fShownSize = length;
    fPath.Store(path, length);
    fNotifyDue = true;
    ++fTurn;
}

// For a load of the shown file. A worker that is full is asked again in the next block.
void CLoopPlayer::AskWorker() noexcept {
    if (fSchedule == nullptr) {
        return;
    }
    fJob.fKind = SJob::kLoad;
    fJob.fTurn = fTurn;
    fJob.fLoop = nullptr;
    std::memcpy(fJob.fPath, fShownPath, fShownSize + 1);
    fLoadDue = fSchedule->schedule_work(fSchedule->handle, kFreeSize + fShownSize + 1, &fJob) !=
               LV2_WORKER_SUCCESS;
}

// Null for an empty path, and for what cannot be loaded, which the log then tells.
CLoadedLoop* CLoopPlayer::Load(const char* path) noexcept {
    if (*path == 0) {
        return nullptr;
    }
    try {
        std::string reason;
        if (auto loop = CLoadedLoop::Load(path, fRate, reason)) {
            return fStore.Keep(std::move(loop));
        }
        lv2_log_error(&fLogger, "%s: %s\n", path, reason.c_str());
    } catch (const std::exception& failure) {
        lv2_log_error(&fLogger, "%s: %s\n", path, failure.what());
    }
    return nullptr;
}

LV2_Worker_Status CLoopPlayer::Work(LV2_Worker_Respond_Function respond,
                                    LV2_Worker_Respond_Handle handle, uint32_t size,
                                    const void* data) noexcept {
    SJob job{};
    std::memcpy(&job, data, std::min<std::size_t>(size, sizeof job - 1));
    if (job.fKind == SJob::kFree) {
        fStore.Free(job.fLoop);
        return LV2_WORKER_SUCCESS;
    }
    job.fLoop = Load(job.fPath);
    const LV2_Worker_Status status = respond(handle, kFreeSize, &job);
    if (status != LV2_WORKER_SUCCESS) {
        fStore.Free(job.fLoop);
        lv2_log_error(&fLogger, "%s: the host does not take it\n", job.fPath);
    }
    return status;
}

LV2_Worker_Status CLoopPlayer::WorkResponse(uint32_t size, const void* data) noexcept {
    SJob answer{};
    std::memcpy(&answer, data, std::min<std::size_t>(size, kFreeSize));
    if (answer.fTurn == fTurn) {
        Replace(answer.fLoop);
    } else {
        Free(answer.fLoop); // another file was asked for meanwhile
    }
    return LV2_WORKER_SUCCESS;
}

// In the audio call: the old loop fades out and then goes to the worker. A file that is not a loop
// leaves silence.
void CLoopPlayer::Replace(CLoadedLoop* loop) noexcept {
    if (fLoop != nullptr) {
        fLoop->fFadeLeft = LoopLibrary::SliceScheduler::kFadeFrames;
        fLoop->fNext = fFading;
        fFading = fLoop;
    }
    fLoop = loop;
    if (loop != nullptr) {
        fScheduler.ReplaceLoop(loop->GetSlices().data(), loop->GetSlices().size(),
                               loop->GetQuarters());
    } else {
        fScheduler.ReplaceLoop(nullptr, 0, 0.0);
    }
}

// So many frames are rendered: loops whose fade is over go to the worker.
void CLoopPlayer::PassFade(int64_t frames) noexcept {
    for (CLoadedLoop** link = &fFading; *link != nullptr;) {
        CLoadedLoop* const loop = *link;
        loop->fFadeLeft -= frames;
        if (loop->fFadeLeft > 0) {
            link = &loop->fNext;
        } else {
            *link = loop->fNext;
            Free(loop);
        }
    }
}

// Outside the audio call, when the scheduler plays none of them any more.
void CLoopPlayer::FreeFading() noexcept {
    while (fFading != nullptr) {
        fStore.Free(std::exchange(fFading, fFading->fNext));
    }
}

void CLoopPlayer::Free(CLoadedLoop* loop) noexcept {
    if (loop != nullptr) {
        loop->fNext = fDoomed;
        fDoomed = loop;
        FreeDoomed();
    }
}

// As far as the worker takes them; the rest waits for the next block.
void CLoopPlayer::FreeDoomed() noexcept {
    while (fDoomed != nullptr && fSchedule != nullptr) {
        CLoadedLoop* const next = fDoomed->fNext;
        fJob.fKind = SJob::kFree;
        fJob.fTurn = fTurn;
        fJob.fLoop = fDoomed;
        if (fSchedule->schedule_work(fSchedule->handle, kFreeSize, &fJob) != LV2_WORKER_SUCCESS) {
            return;
        }
        fDoomed = next;
    }
}

// Tells the host which file is asked for. In the audio call alone: only there the port is valid.
void CLoopPlayer::Notify() noexcept {
    auto* notify = static_cast<LV2_Atom_Sequence*>(fPorts[kPort_Notify]);
    const uint32_t capacity = notify->atom.size;
    if (capacity < sizeof(LV2_Atom_Sequence)) {
        return;
    }
    LV2_Atom_Forge_Frame sequence;
    lv2_atom_forge_set_buffer(&fForge, reinterpret_cast<uint8_t*>(notify), capacity);
    lv2_atom_forge_sequence_head(&fForge, &sequence, 0);
    if (fNotifyDue && capacity > fShownSize + 256) {
        LV2_Atom_Forge_Frame object;
        lv2_atom_forge_frame_time(&fForge, 0);
        lv2_atom_forge_object(&fForge, &object, 0, fUris.fPatchSet);
        lv2_atom_forge_key(&fForge, fUris.fPatchProperty);
        lv2_atom_forge_urid(&fForge, fUris.fFile);
        lv2_atom_forge_key(&fForge, fUris.fPatchValue);
        lv2_atom_forge_path(&fForge, fShownPath, fShownSize);
        lv2_atom_forge_pop(&fForge, &object);
        fNotifyDue = false;
    }
    lv2_atom_forge_pop(&fForge, &sequence);
}
