#pragma once

#include <lv2/atom/atom.h>
#include <lv2/urid/urid.h>

#include <cstdint>

/// Walks over what a host has put into a port. LV2's own walks trust the sizes in it; these stop at
/// the first that leads out of what contains it. For the audio call.
namespace AtomWalk {

/// `at` behind a part of `size` bytes, filled up to eight.
constexpr uint64_t Behind(uint64_t at, uint32_t size) {
    return at + ((uint64_t{size} + 7) & ~uint64_t{7});
}

/// Calls take(const LV2_Atom_Event&) for the events in their order; each has its whole body.
template <class Take>
void ForEachEvent(const LV2_Atom_Sequence& sequence, Take&& take) noexcept {
    const auto* const bytes = reinterpret_cast<const uint8_t*>(&sequence.body);
    const uint64_t end = sequence.atom.size;
    uint64_t at = sizeof(LV2_Atom_Sequence_Body);
    while (at + sizeof(LV2_Atom_Event) <= end) {
        const auto& event = *reinterpret_cast<const LV2_Atom_Event*>(bytes + at);
        at += sizeof(LV2_Atom_Event);
        if (event.body.size > end - at) {
            return;
        }
        take(event);
        at = Behind(at, event.body.size);
    }
}

/// The value of an object's property, with its whole body, or null. The object is one that has its
/// own whole head.
inline const LV2_Atom* FindValue(const LV2_Atom_Object& object, LV2_URID key) noexcept {
    const auto* const bytes = reinterpret_cast<const uint8_t*>(&object.body);
    const uint64_t end = object.atom.size;
    uint64_t at = sizeof(LV2_Atom_Object_Body);
    while (at + sizeof(LV2_Atom_Property_Body) <= end) {
        const auto& property = *reinterpret_cast<const LV2_Atom_Property_Body*>(bytes + at);
        at += sizeof(LV2_Atom_Property_Body);
        if (property.value.size > end - at) {
            return nullptr;
        }
        if (property.key == key) {
            return &property.value;
        }
        at = Behind(at, property.value.size);
    }
    return nullptr;
}

/// The body of an atom of another type than text, or null if it is shorter than its type.
template <class Body>
const Body* ReadBody(const LV2_Atom& atom) noexcept {
    return atom.size >= sizeof(Body) ? reinterpret_cast<const Body*>(&atom + 1) : nullptr;
}

} // namespace AtomWalk
