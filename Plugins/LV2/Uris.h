#pragma once

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>
#include <lv2/patch/patch.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

#define LOOP_PLAYER_URI "urn:looplibrary:loop-player"
#define LOOP_PLAYER_FILE_URI LOOP_PLAYER_URI "#file"

/// The numbers that the host has given to the names that the plug-in uses.
struct SUris {
    explicit SUris(const LV2_URID_Map& map)
        : fObject(Of(map, LV2_ATOM__Object)), fBlank(Of(map, LV2_ATOM__Blank)),
          fPath(Of(map, LV2_ATOM__Path)), fString(Of(map, LV2_ATOM__String)),
          fFloat(Of(map, LV2_ATOM__Float)), fDouble(Of(map, LV2_ATOM__Double)),
          fInt(Of(map, LV2_ATOM__Int)), fLong(Of(map, LV2_ATOM__Long)),
          fUrid(Of(map, LV2_ATOM__URID)), fMidiEvent(Of(map, LV2_MIDI__MidiEvent)),
          fPatchSet(Of(map, LV2_PATCH__Set)), fPatchGet(Of(map, LV2_PATCH__Get)),
          fPatchProperty(Of(map, LV2_PATCH__property)), fPatchValue(Of(map, LV2_PATCH__value)),
          fPosition(Of(map, LV2_TIME__Position)), fBar(Of(map, LV2_TIME__bar)),
          fBarBeat(Of(map, LV2_TIME__barBeat)), fBeatsPerBar(Of(map, LV2_TIME__beatsPerBar)),
          fBeatUnit(Of(map, LV2_TIME__beatUnit)), fBpm(Of(map, LV2_TIME__beatsPerMinute)),
          fSpeed(Of(map, LV2_TIME__speed)), fFrame(Of(map, LV2_TIME__frame)),
          fFile(Of(map, LOOP_PLAYER_FILE_URI)) {}

    LV2_URID fObject, fBlank, fPath, fString, fFloat, fDouble, fInt, fLong, fUrid, fMidiEvent,
        fPatchSet, fPatchGet, fPatchProperty, fPatchValue, fPosition, fBar, fBarBeat, fBeatsPerBar,
        fBeatUnit, fBpm, fSpeed, fFrame, fFile;

private:
    static LV2_URID Of(const LV2_URID_Map& map, const char* uri) {
        return map.map(map.handle, uri);
    }
};
