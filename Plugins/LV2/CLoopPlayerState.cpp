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
        return LV2_STATE_ERR_NO_PROPERTY; // a preset of controls alone leaves the file as it is
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
    // The audio call does not run beside a restore, so what is its own may be written here.
    Show(path.c_str(), static_cast<uint32_t>(path.size()));
    fLoadDue = false;

    auto* schedule =
        static_cast<LV2_Worker_Schedule*>(lv2_features_data(features, LV2_WORKER__schedule));
    if (fActive && schedule != nullptr) {
        SJob job{};
        job.fKind = SJob::kLoad;
        job.fTurn = fTurn;
        std::memcpy(job.fPath, fShownPath, path.size() + 1);
        if (schedule->schedule_work(schedule->handle,
                                    kFreeSize + static_cast<uint32_t>(path.size()) + 1,
                                    &job) == LV2_WORKER_SUCCESS) {
            return LV2_STATE_SUCCESS;
        }
    }
    // A file that is gone is not a failure: the session keeps its path, and the log tells.
    Replace(Load(fShownPath));
    fScheduler.Reset();
    FreeFading();
    return LV2_STATE_SUCCESS;
}
