// Slices as notes: C1 (note 36, where middle C is C3) plays the first, and slices beyond the highest
// key go on at C1 of the next channel. MIDI input and exported files agree on it.

const kFirstKey = 36;
const kKeys = 128 - kFirstKey;
const kChannels = 16;

/** Most slices that notes can reach. */
export const kMostKeyedSlices = kKeys * kChannels;

/** The note that plays a slice. */
export function noteOfSlice(index) {
  return { channel: Math.floor(index / kKeys), key: kFirstKey + (index % kKeys) };
}

/** The slice that a note plays, or -1. A loop that fits the keys listens to any channel. */
export function sliceOfNote({ channel, key }, sliceCount) {
  const index = key - kFirstKey + (sliceCount > kKeys ? channel * kKeys : 0);
  return key >= kFirstKey && index < sliceCount ? index : -1;
}

/** Whether one channel has too few keys for so many slices. */
export function needsChannels(sliceCount) {
  return sliceCount > kKeys;
}
