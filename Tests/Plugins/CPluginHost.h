#pragma once

#include "Tests/Host/Measured/CountingAllocator.h"

#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include <lilv/lilv.h>
#include <lv2/atom/forge.h>
#include <lv2/atom/util.h>
#include <lv2/log/log.h>
#include <lv2/midi/midi.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

// One instance of the plug-in, found by its URI as hosts find it. The audio call and what it calls
// back use memory that is taken before; every audio call's own calls to the heap are counted.
class CPluginHost {
public:
    static constexpr const char* kUri = "urn:looplibrary:loop-player";
    static constexpr uint32_t kMostFrames = 8192;

    struct SPosition {
        double fQuarter;
        double fBpm;
        double fSpeed;
    };

    explicit CPluginHost(double rate, bool hasWorker = true) {
        fFeatures = {&fMapFeature, &fUnmapFeature, &fLogFeature,
                     hasWorker ? &fWorkFeature : nullptr, nullptr};
        fInstance.reset(lilv_plugin_instantiate(Plugin(), rate, fFeatures.data()));
        if (fInstance == nullptr) {
            throw std::runtime_error("the plug-in does not start");
        }
        fWorker = static_cast<const LV2_Worker_Interface*>(
            lilv_instance_get_extension_data(fInstance.get(), LV2_WORKER__interface));
        lv2_atom_forge_init(&fForge, &fMap);
        void* const ports[] = {fControl.data(), fNotify.data(), fLeft.data(), fRight.data()};
        for (uint32_t port = 0; port < 4; ++port) {
            lilv_instance_connect_port(fInstance.get(), port, ports[port]);
        }
        for (uint32_t port = 0; port < 5; ++port) {
            lilv_instance_connect_port(fInstance.get(), 4 + port, &fControls[port]);
        }
        ClearEvents();
        // Known before the first audio call, which sends them.
        for (const char* uri :
             {LV2_TIME__Position, LV2_TIME__bar, LV2_TIME__barBeat, LV2_TIME__beatsPerBar,
              LV2_TIME__beatUnit, LV2_TIME__beatsPerMinute, LV2_TIME__speed, LV2_TIME__frame,
              LV2_PATCH__Set, LV2_PATCH__property, LV2_PATCH__value, LV2_MIDI__MidiEvent}) {
            Urid(uri);
        }
    }
    CPluginHost(const CPluginHost&) = delete;
    CPluginHost& operator=(const CPluginHost&) = delete;

    ~CPluginHost() { Deactivate(); }

    void Deactivate() { lilv_instance_deactivate(fInstance.get()); }
    void Activate() { lilv_instance_activate(fInstance.get()); }

    // Events of the next block; frames ascend.
    void SendPosition(uint32_t frame, const SPosition& position) {
        Begin(LV2_TIME__Position);
        const auto bar = static_cast<int64_t>(std::floor(position.fQuarter / 4.0));
        PutLong(LV2_TIME__bar, bar);
        PutDouble(LV2_TIME__barBeat, position.fQuarter - 4.0 * static_cast<double>(bar));
        lv2_atom_forge_key(&fForge, Urid(LV2_TIME__beatsPerBar));
        lv2_atom_forge_float(&fForge, 4.0F);
        lv2_atom_forge_key(&fForge, Urid(LV2_TIME__beatUnit));
        lv2_atom_forge_int(&fForge, 4);
        PutDouble(LV2_TIME__beatsPerMinute, position.fBpm);
        PutDouble(LV2_TIME__speed, position.fSpeed);
        End(frame);
    }
    // A host that knows frames alone.
    void SendFrame(uint32_t frame, int64_t position) {
        Begin(LV2_TIME__Position);
        PutLong(LV2_TIME__frame, position);
        PutDouble(LV2_TIME__speed, 1.0);
        End(frame);
    }
    void SendFile(uint32_t frame, const std::string& path) {
        Begin(LV2_PATCH__Set);
        lv2_atom_forge_key(&fForge, Urid(LV2_PATCH__property));
        lv2_atom_forge_urid(&fForge, Urid(kFileUri));
        lv2_atom_forge_key(&fForge, Urid(LV2_PATCH__value));
        lv2_atom_forge_path(&fForge, path.c_str(), static_cast<uint32_t>(path.size()));
        End(frame);
    }
    void SendMidi(uint32_t frame, std::array<uint8_t, 3> message) {
        lv2_atom_forge_set_buffer(&fForge, fScratch.data() + 8, kBytes - 8);
        lv2_atom_forge_atom(&fForge, 3, Urid(LV2_MIDI__MidiEvent));
        lv2_atom_forge_write(&fForge, message.data(), 3);
        Append(frame);
    }

    // Overwrites a word of the events' buffer.
    void Break(uint32_t offset, uint32_t word) {
        std::memcpy(fControl.data() + offset, &word, sizeof word);
    }

    // One audio call; the block is fLeft and fRight, the path that it told, if any, fTold.
    void Run(uint32_t frames) {
        DeliverResponses();
        fNotify.fill(0xEE);
        auto* const notify = reinterpret_cast<LV2_Atom_Sequence*>(fNotify.data());
        notify->atom = {kBytes - sizeof(LV2_Atom), 0};
        FailAllocation(-1);
        lilv_instance_run(fInstance.get(), frames);
        fHeapCalls += CountedHeapCalls();
        ClearEvents();
        LV2_ATOM_SEQUENCE_FOREACH(notify, event) {
            const LV2_Atom* value = nullptr;
            lv2_atom_object_get(reinterpret_cast<const LV2_Atom_Object*>(&event->body),
                                Urid(LV2_PATCH__value), &value, 0);
            std::strncpy(fTold.data(), reinterpret_cast<const char*>(value + 1), kBytes - 1);
            ++fTimesTold;
        }
    }

    // What the worker has not done yet, in order. On any thread but one at a time.
    void Work() {
        SMessage message;
        while (Take(fRequests, message)) {
            fWorker->work(lilv_instance_get_handle(fInstance.get()), Respond, this, message.fSize,
                          message.fBytes.data());
        }
    }
    void LoadFile(const std::string& path) {
        SendFile(0, path);
        Run(1);
        Work();
        Run(64); // so long what it replaces fades out
    }

    void Save(const std::filesystem::path& folder) {
        const std::unique_ptr<LilvState, void (*)(LilvState*)> state(
            lilv_state_new_from_instance(Plugin(), fInstance.get(), &fMap, nullptr, nullptr,
                                         nullptr, folder.c_str(), nullptr, nullptr, 0, nullptr),
            lilv_state_free);
        if (lilv_state_save(World(), &fMap, &fUnmap, state.get(), nullptr, folder.c_str(),
                            "state.ttl") != 0) {
            throw std::runtime_error("the state cannot be saved");
        }
    }
    // As a host does whose own form of a path has a word in front.
    std::string SaveMapped() {
        std::string stored;
        State().save(
            lilv_instance_get_handle(fInstance.get()),
            [](LV2_State_Handle text, uint32_t, const void* value, size_t size, uint32_t,
               uint32_t) {
                static_cast<std::string*>(text)->assign(static_cast<const char*>(value), size - 1);
                return LV2_STATE_SUCCESS;
            },
            &stored, 0, fMapped.data());
        return stored;
    }
    void RestoreMapped(const std::string& stored) {
        fStored = stored;
        State().restore(
            lilv_instance_get_handle(fInstance.get()),
            [](LV2_State_Handle host, uint32_t, size_t* size, uint32_t* type,
               uint32_t*) -> const void* {
                auto& self = *static_cast<CPluginHost*>(host);
                *size = self.fStored.size() + 1;
                *type = self.Urid(LV2_ATOM__Path);
                return self.fStored.c_str();
            },
            this, 0, fMapped.data());
    }
    void Restore(const std::filesystem::path& folder, bool throughWorker = false) {
        const std::unique_ptr<LilvState, void (*)(LilvState*)> state(
            lilv_state_new_from_file(World(), &fMap, nullptr, (folder / "state.ttl").c_str()),
            lilv_state_free);
        if (state == nullptr) {
            throw std::runtime_error("the state cannot be read");
        }
        const LV2_Feature* const features[] = {&fWorkFeature, nullptr};
        lilv_state_restore(state.get(), fInstance.get(), nullptr, nullptr, 0,
                           throughWorker ? features : nullptr);
    }

    alignas(16) std::array<float, kMostFrames> fLeft{};
    alignas(16) std::array<float, kMostFrames> fRight{};
    // Gain in dB, speed, start slice, follow host, tempo.
    std::array<float, 5> fControls{0.0F, 1.0F, 0.0F, 1.0F, 120.0F};
    std::string fLog;
    int fTimesTold = 0;
    int64_t fHeapCalls = 0;
    bool fRefusesWork = false;
    std::string GetTold() const { return fTold.data(); }

private:
    static constexpr const char* kFileUri = "urn:looplibrary:loop-player#file";
    static constexpr uint32_t kBytes = 8192;
    using Buffer = std::array<uint8_t, kBytes>;
    struct SMessage {
        uint32_t fSize = 0;
        Buffer fBytes{};
    };
    struct SQueue {
        std::mutex fMutex;
        std::array<SMessage, 16> fMessages;
        uint64_t fPut = 0;
        uint64_t fTaken = 0;
    };

    static LilvWorld* World() {
        static const std::unique_ptr<LilvWorld, void (*)(LilvWorld*)> world = [] {
            std::unique_ptr<LilvWorld, void (*)(LilvWorld*)> made(lilv_world_new(),
                                                                  lilv_world_free);
            lilv_world_load_all(made.get()); // what LV2_PATH names
            return made;
        }();
        return world.get();
    }
    static const LilvPlugin* Plugin() {
        static const LilvPlugin* const plugin = [] {
            const std::unique_ptr<LilvNode, void (*)(LilvNode*)> uri(lilv_new_uri(World(), kUri),
                                                                     lilv_node_free);
            return lilv_plugins_get_by_uri(lilv_world_get_all_plugins(World()), uri.get());
        }();
        if (plugin == nullptr) {
            throw std::runtime_error("LV2_PATH does not lead to the plug-in");
        }
        return plugin;
    }

    // Allocates for a new name alone.
    LV2_URID Urid(const char* uri) {
        const auto known = fUrids.find(uri);
        return known != fUrids.end()
                   ? known->second
                   : fUrids.emplace(uri, static_cast<LV2_URID>(fUrids.size() + 1)).first->second;
    }

    void Begin(const char* type) {
        lv2_atom_forge_set_buffer(&fForge, fScratch.data() + 8, kBytes - 8);
        lv2_atom_forge_object(&fForge, &fObject, 0, Urid(type));
    }
    void PutLong(const char* key, int64_t value) {
        lv2_atom_forge_key(&fForge, Urid(key));
        lv2_atom_forge_long(&fForge, value);
    }
    void PutDouble(const char* key, double value) {
        lv2_atom_forge_key(&fForge, Urid(key));
        lv2_atom_forge_double(&fForge, value);
    }
    void End(uint32_t frame) {
        lv2_atom_forge_pop(&fForge, &fObject);
        Append(frame);
    }
    // The atom behind the first eight bytes of fScratch becomes an event.
    void Append(uint32_t frame) {
        auto* const event = reinterpret_cast<LV2_Atom_Event*>(fScratch.data());
        event->time.frames = frame;
        if (lv2_atom_sequence_append_event(reinterpret_cast<LV2_Atom_Sequence*>(fControl.data()),
                                           kBytes, event) == nullptr) {
            throw std::runtime_error("too many events");
        }
    }
    void ClearEvents() {
        auto* const events = reinterpret_cast<LV2_Atom_Sequence*>(fControl.data());
        events->atom.type = Urid(LV2_ATOM__Sequence);
        events->body = {0, 0};
        lv2_atom_sequence_clear(events);
    }

    const LV2_State_Interface& State() const {
        return *static_cast<const LV2_State_Interface*>(
            lilv_instance_get_extension_data(fInstance.get(), LV2_STATE__interface));
    }

    static bool Put(SQueue& queue, uint32_t size, const void* bytes) {
        const std::lock_guard<std::mutex> lock(queue.fMutex);
        if (size > kBytes || queue.fPut - queue.fTaken == queue.fMessages.size()) {
            return false;
        }
        SMessage& message = queue.fMessages[queue.fPut++ % queue.fMessages.size()];
        message.fSize = size;
        std::memcpy(message.fBytes.data(), bytes, size);
        return true;
    }
    static bool Take(SQueue& queue, SMessage& message) {
        const std::lock_guard<std::mutex> lock(queue.fMutex);
        if (queue.fPut == queue.fTaken) {
            return false;
        }
        message = queue.fMessages[queue.fTaken++ % queue.fMessages.size()];
        return true;
    }
    void DeliverResponses() {
        while (Take(fResponses, fResponse)) {
            FailAllocation(-1);
            fWorker->work_response(lilv_instance_get_handle(fInstance.get()), fResponse.fSize,
                                   fResponse.fBytes.data());
            fHeapCalls += CountedHeapCalls();
        }
    }
    static LV2_Worker_Status Schedule(LV2_Worker_Schedule_Handle host, uint32_t size,
                                      const void* bytes) {
        auto& self = *static_cast<CPluginHost*>(host);
        return !self.fRefusesWork && Put(self.fRequests, size, bytes) ? LV2_WORKER_SUCCESS
                                                                      : LV2_WORKER_ERR_NO_SPACE;
    }
    static LV2_Worker_Status Respond(LV2_Worker_Respond_Handle host, uint32_t size,
                                     const void* bytes) {
        return Put(static_cast<CPluginHost*>(host)->fResponses, size, bytes)
                   ? LV2_WORKER_SUCCESS
                   : LV2_WORKER_ERR_NO_SPACE;
    }
    [[gnu::format(printf, 3, 0)]] static int LogText(LV2_Log_Handle host, LV2_URID /*type*/,
                                                     const char* format, va_list values) {
        char line[5000];
        const int length = std::vsnprintf(line, sizeof line, format, values);
        static_cast<CPluginHost*>(host)->fLog += line;
        return length;
    }

    [[gnu::format(printf, 3, 4)]] static int LogLine(LV2_Log_Handle host, LV2_URID type,
                                                     const char* format, ...) {
        va_list values;
        va_start(values, format);
        const int length = LogText(host, type, format, values);
        va_end(values);
        return length;
    }

    std::map<std::string, LV2_URID, std::less<>> fUrids;
    LV2_URID_Map fMap{this, [](LV2_URID_Map_Handle host, const char* uri) {
                          return static_cast<CPluginHost*>(host)->Urid(uri);
                      }};
    LV2_URID_Unmap fUnmap{this, [](LV2_URID_Unmap_Handle host, LV2_URID urid) -> const char* {
                              for (const auto& [uri, known] :
                                   static_cast<CPluginHost*>(host)->fUrids) {
                                  if (known == urid) {
                                      return uri.c_str();
                                  }
                              }
                              return nullptr;
                          }};
    LV2_Worker_Schedule fSchedule{this, Schedule};
    LV2_Log_Log fLogger{this, LogLine, LogText};
    LV2_Feature fMapFeature{LV2_URID__map, &fMap};
    LV2_Feature fUnmapFeature{LV2_URID__unmap, &fUnmap};
    LV2_Feature fWorkFeature{LV2_WORKER__schedule, &fSchedule};
    LV2_Feature fLogFeature{LV2_LOG__log, &fLogger};
    std::array<const LV2_Feature*, 5> fFeatures{};

    LV2_State_Map_Path fMapPath{
        nullptr,
        [](LV2_State_Map_Path_Handle, const char* path) {
            return strdup(("session:" + std::string(path)).c_str());
        },
        [](LV2_State_Map_Path_Handle, const char* path) { return strdup(path + 8); }};
    LV2_Feature fMapPathFeature{LV2_STATE__mapPath, &fMapPath};
    std::array<const LV2_Feature*, 2> fMapped{&fMapPathFeature, nullptr};
    std::string fStored;

    SQueue fRequests;
    SQueue fResponses;
    SMessage fResponse;
    alignas(8) Buffer fControl{};
    alignas(8) Buffer fNotify{};
    alignas(8) Buffer fScratch{};
    std::array<char, kBytes> fTold{};
    LV2_Atom_Forge fForge{};
    LV2_Atom_Forge_Frame fObject{}; // that is being written
    const LV2_Worker_Interface* fWorker = nullptr;
    struct SFree {
        void operator()(LilvInstance* instance) const { lilv_instance_free(instance); }
    };
    std::unique_ptr<LilvInstance, SFree> fInstance;
};
