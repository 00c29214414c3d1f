import { ByteWriter } from './bytes.js';

const kVelocity = 100;
const kMostMicroseconds = 0xffffff;

/**
 * A standard MIDI file of one track.
 *
 * @param {object} song
 * @param {number} song.ppq pulses to a quarter note
 * @param {number} song.quartersPerMinute
 * @param {[number, number]} song.timeSignature
 * @param {number} song.length in pulses
 * @param {{start: number, end: number, channel: number, key: number}[]} song.notes in pulses
 * @returns {Uint8Array}
 */
export function midiFile(song) {
  const track = new ByteWriter();
  let now = 0;
  for (const event of eventsOf(song)) {
    putDelta(track, event.time - now);
    now = event.time;
    track.raw(event.bytes);
  }
  putDelta(track, Math.max(song.length - now, 0));
  track.raw([0xff, 0x2f, 0]);
  return new ByteWriter()
    .text('MThd').big(6, 4).big(0, 2).big(1, 2).big(song.ppq, 2)
    .text('MTrk').big(track.length, 4).raw(track.toArray())
    .toArray();
}

function eventsOf(song) {
  const microseconds = Math.round(60e6 / song.quartersPerMinute);
  const tempo = new ByteWriter().raw([0xff, 0x51, 3])
    .big(Math.min(Math.max(microseconds, 1), kMostMicroseconds), 3).toArray();
  const events = [{ time: 0, rank: 0, bytes: tempo }];
  const [numerator, denominator] = song.timeSignature;
  const power = Math.log2(denominator);
  if (Number.isInteger(power)) {
    events.push({ time: 0, rank: 0, bytes: [0xff, 0x58, 4, numerator, power, 24, 8] });
  }
  for (const { start, end, channel, key } of song.notes) {
    events.push({ time: start, rank: 2, bytes: [0x90 | channel, key, kVelocity] });
    events.push({ time: end, rank: 1, bytes: [0x80 | channel, key, 0] });
  }
  // A note that ends where the next begins ends first.
  return events.sort((a, b) => a.time - b.time || a.rank - b.rank);
}

// Seven bits a byte, the highest first, all but the last marked.
function putDelta(track, pulses) {
  for (let shift = 21; shift > 0; shift -= 7) {
    if (pulses >> shift) {
      track.raw([0x80 | ((pulses >> shift) & 0x7f)]);
    }
  }
  track.raw([pulses & 0x7f]);
}
