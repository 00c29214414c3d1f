#include "looptool/Loop/LoopJson.h"

namespace NSLoopTool {

namespace {

using nlohmann::ordered_json;

ordered_json SettingsJson(const CLoopSettings& settings) {
    ordered_json json = ordered_json::object();
    // The order of the table, which groups the devices.
    for (const SSettingRow& row : SettingRows()) {
        const auto setting = settings.find(row.fKey);
        if (setting == settings.end()) {
            continue;
        }
        const std::string key = row.fKey;
        const size_t point = key.find('.');
        ordered_json& home = point == std::string::npos
                                 ? json[key]
                                 : json[key.substr(0, point)][key.substr(point + 1)];
        if (row.IsFlag()) {
            home = setting->second != 0;
        } else {
            home = setting->second;
        }
    }
    return json;
}

ordered_json MarkJson(const CLoop& loop, const SLoopModel& model, const SMark& mark) {
    const LOPInfo& info = loop.GetInfo();
    const auto length = static_cast<double>(model.fLoopEnd - model.fLoopStart);
    const double quarters = static_cast<double>(info.fPPQLength) / LOP_PPQ;
    const double beats = quarters * info.fTimeSignatureDenominator / 4.0;
    ordered_json json = {
        {"slice", nullptr},
        {"start_frame", mark.fFrame},
        {"end_frame", nullptr},
        {"position_ppq", nullptr},
        {"frame_count", nullptr},
        {"beat",
         length > 0.0 ? static_cast<double>(mark.fFrame - model.fLoopStart) / length * beats : 0.0},
        {"seconds", static_cast<double>(mark.fFrame) / model.fSampleRate},
        {"active", mark.fIsActive},
        {"hidden", mark.fIsHidden},
        {"forced", mark.fIsForced},
        {"muted", mark.fIsMuted},
        {"level", mark.fLevel},
        {"stored", mark.fIsStored},
    };
    if (mark.fSlice >= 0) {
        const LOPSliceInfo slice = loop.GetSliceInfo(mark.fSlice);
        json["slice"] = mark.fSlice;
        json["end_frame"] = mark.fEndFrame;
        json["position_ppq"] = slice.fPPQPosition;
        json["frame_count"] = slice.fFrameCount;
    }
    return json;
}

} // namespace

ordered_json InfoJson(const CLoop& loop, const SLoopModel& model, bool withSettings) {
    const LOPInfo& info = loop.GetInfo();
    ordered_json json = {
        {"file", loop.GetPath()},
        {"kind", model.fKind},
        {"channels", info.fChannels},
        {"sample_rate", info.fSampleRate},
        {"bit_depth", info.fBitDepth},
        {"frames", model.fFrames},
        {"seconds", model.GetSeconds()},
        {"loop_start", model.fLoopStart},
        {"loop_end", model.fLoopEnd},
        {"slice_count", info.fSliceCount},
        {"stored_tempo", info.fStoredTempo / 1000.0},
        {"tempo_is_stored", model.fIsTempoStored},
        {"loop_tempo", info.fLoopTempo / 1000.0},
        {"bars", model.fBars},
        {"beats", model.fBeats},
        {"length_ppq", info.fPPQLength},
        {"time_signature", {info.fTimeSignatureNumerator, info.fTimeSignatureDenominator}},
        {"creator_texts", loop.GetCreatorTexts()},
    };
    if (withSettings) {
        json["settings"] = SettingsJson(ReadLoopSettings(loop.GetBytes()));
    }
    return json;
}

ordered_json SlicesJson(const CLoop& loop, const SLoopModel& model) {
    ordered_json slices = ordered_json::array();
    for (const SMark& mark : model.fMarks) {
        slices.push_back(MarkJson(loop, model, mark));
    }
    return {{"file", loop.GetPath()}, {"sample_rate", model.fSampleRate}, {"slices", slices}};
}

std::string JsonText(const ordered_json& json, int indent) {
    return json.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace NSLoopTool
