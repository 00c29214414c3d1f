// The C entry of the plug-in: a table of functions that forward to CLoopPlayer.
#include "CLoopPlayer.h"

#include <cstring>
#include <exception>

namespace {

CLoopPlayer& Of(LV2_Handle instance) {
    return *static_cast<CLoopPlayer*>(instance);
}

LV2_Handle Instantiate(const LV2_Descriptor* /*descriptor*/, double rate, const char* /*bundle*/,
                       const LV2_Feature* const* features) {
    try {
        return new CLoopPlayer(rate, features);
    } catch (const std::exception&) {
        return nullptr; // the host tells the person
    }
}

// No exception may reach the host, which is C.
template <class Body>
LV2_State_Status WithoutExceptions(Body body) noexcept {
    try {
        return body();
    } catch (const std::exception&) {
        return LV2_STATE_ERR_UNKNOWN;
    }
}

void Cleanup(LV2_Handle instance) {
    delete &Of(instance);
}

const void* ExtensionData(const char* uri) {
    static const LV2_Worker_Interface worker = {
        [](LV2_Handle instance, LV2_Worker_Respond_Function respond,
           LV2_Worker_Respond_Handle handle, uint32_t size,
           const void* data) { return Of(instance).Work(respond, handle, size, data); },
        [](LV2_Handle instance, uint32_t size, const void* data) {
            return Of(instance).WorkResponse(size, data);
        },
        nullptr};
    static const LV2_State_Interface state = {
        [](LV2_Handle instance, LV2_State_Store_Function store, LV2_State_Handle handle,
           uint32_t /*flags*/, const LV2_Feature* const* features) {
            return WithoutExceptions([&] { return Of(instance).Save(store, handle, features); });
        },
        [](LV2_Handle instance, LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
           uint32_t /*flags*/, const LV2_Feature* const* features) {
            return WithoutExceptions(
                [&] { return Of(instance).Restore(retrieve, handle, features); });
        }};
    if (std::strcmp(uri, LV2_WORKER__interface) == 0) {
        return &worker;
    }
    return std::strcmp(uri, LV2_STATE__interface) == 0 ? &state : nullptr;
}

const LV2_Descriptor kDescriptor = {
    LOOP_PLAYER_URI,
    Instantiate,
    [](LV2_Handle instance, uint32_t port, void* data) { Of(instance).ConnectPort(port, data); },
    [](LV2_Handle instance) { Of(instance).Activate(); },
    [](LV2_Handle instance, uint32_t frames) { Of(instance).Run(frames); },
    [](LV2_Handle instance) { Of(instance).Deactivate(); },
    Cleanup,
    ExtensionData};

} // namespace

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index) {
    return index == 0 ? &kDescriptor : nullptr;
}
