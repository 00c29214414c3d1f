// Save and restore of the plug-in's one property, the file.
#include "CLoopPlayer.h"

#include <lv2/core/lv2_util.h>

#include <cstdlib>
#include <cstring>

LV2_State_Status CLoopPlayer::Save(LV2_State_Store_Function store, LV2_State_Handle handle,
                                   const LV2_Feature* const* features) {
    const std::string path = fPath.Load();
    auto* mapPath =
        static_cast<LV2_State_Map_Path*>(lv2_features_data(features, LV2_STATE__mapPath));
    auto* freePath =
        static_cast<LV2_State_Free_Path*>(lv2_features_data(features, LV2_STATE__freePath));
    char* mapped = nullptr;
    if (mapPath != nullptr && !path.empty()) {
        mapped = mapPath->abstract_path(mapPath->handle, path.c_str());
    }
    // An empty path is stored too: it says that no loop was chosen.
    const char* stored = mapped != nullptr ? mapped : path.c_str();
    const LV2_State_Status status =
        store(handle, fUris.fFile, stored, std::strlen(stored) + 1,
              path.empty() ? fUris.fString : fUris.fPath, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
    if (mapped != nullptr) {
        if (freePath != nullptr) {
            freePath->free_path(freePath->handle, mapped);
        } else {
            std::free(mapped);
        }
    }
    return status;
}

LV2_State_Status CLoopPlayer::Restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                                      const LV2_Feature* const* features) {
    std::size_t size = 0;
    uint32_t type = 0;
    uint32_t flags = 0;
    const void* value = retrieve(handle, fUris.fFile, &size, &type, &flags);
    if (value == nullptr) {
        return LV2_STATE_ERR_NO_PROPERTY;
    }
    if (type != fUris.fPath && type != fUris.fString) {
        return LV2_STATE_ERR_BAD_TYPE;
    }
    std::string path(static_cast<const char*>(value),
                     strnlen(static_cast<const char*>(value), size));
    auto* mapPath =
        static_cast<LV2_State_Map_Path*>(lv2_features_data(features, LV2_STATE__mapPath));
    auto* freePath =
        static_cast<LV2_State_Free_Path*>(lv2_features_data(features, LV2_STATE__freePath));
    if (mapPath != nullptr && !path.empty()) {
        if (char* absolute = mapPath->absolute_path(mapPath->handle, path.c_str())) {
            path = absolute;
            if (freePath != nullptr) {
                freePath->free_path(freePath->handle, absolute);
            } else {
                std::free(absolute);
            }
        }
    }
    if (path.size() > CPathSlot::kLongest) {
        return LV2_STATE_ERR_UNKNOWN;
    }
    fPath.Store(path.c_str(), static_cast<uint32_t>(path.size()));
    // The audio call does not run beside a restore, so its own copy may be written here.
    std::memcpy(fShownPath, path.c_str(), path.size() + 1);
    fShownSize = static_cast<uint32_t>(path.size());
    fNotifyDue = true;
    ++fTurn;

    auto* schedule =
        static_cast<LV2_Worker_Schedule*>(lv2_features_data(features, LV2_WORKER__schedule));
    if (fActive && schedule != nullptr) {
        SJob job{};
        job.fKind = SJob::kLoad;
        job.fTurn = fTurn;
        std::memcpy(job.fPath, path.c_str(), path.size() + 1);
        schedule->schedule_work(schedule->handle,
                                kFreeSize + static_cast<uint32_t>(path.size()) + 1, &job);
        return LV2_STATE_SUCCESS;
    }
    return LoadNow(path) ? LV2_STATE_SUCCESS : LV2_STATE_ERR_UNKNOWN;
}

// Outside the audio call, which does not run meanwhile.
bool CLoopPlayer::LoadNow(const std::string& path) {
    std::string reason;
    std::unique_ptr<CLoadedLoop> loop =
        path.empty() ? nullptr : CLoadedLoop::Load(path, fRate, reason);
    if (loop == nullptr && !path.empty()) {
        lv2_log_error(&fLogger, "%s: %s\n", path.c_str(), reason.c_str());
    }
    const bool done = loop != nullptr || path.empty();
    fLoop = std::move(loop);
    fScheduler.SetLoop(fLoop != nullptr ? fLoop->GetSlices().data() : nullptr,
                       fLoop != nullptr ? fLoop->GetSlices().size() : 0,
                       fLoop != nullptr ? fLoop->GetQuarters() : 0.0);
    return done;
}
