import { ByteWriter } from './bytes.js';

const kFullScale = 0x800000;
const kSampleBytes = 3;

/**
 * A WAV file of 24 bits, which samplers of any age read.
 *
 * @param {Float32Array[]} planes one a channel, full scale 1.0
 * @returns {Uint8Array}
 */
export function wavFile(planes, sampleRate) {
  const frameBytes = planes.length * kSampleBytes;
  const dataBytes = planes[0].length * frameBytes;
  const padBytes = dataBytes & 1;
  const header = new ByteWriter()
    .text('RIFF').little(36 + dataBytes + padBytes, 4)
    .text('WAVEfmt ').little(16, 4).little(1, 2).little(planes.length, 2)
    .little(sampleRate, 4).little(sampleRate * frameBytes, 4).little(frameBytes, 2)
    .little(8 * kSampleBytes, 2)
    .text('data').little(dataBytes, 4)
    .toArray();
  const bytes = new Uint8Array(header.length + dataBytes + padBytes);
  bytes.set(header);
  let at = header.length;
  for (let frame = 0; frame < planes[0].length; ++frame) {
    for (const plane of planes) {
      const word = wordOf(plane[frame]);
      bytes[at] = word;
      bytes[at + 1] = word >> 8;
      bytes[at + 2] = word >> 16;
      at += kSampleBytes;
    }
  }
  return bytes;
}

// To the nearest word, halves away from zero.
function wordOf(value) {
  const scaled = Math.min(Math.max(value * kFullScale, -kFullScale), kFullScale - 1);
  return Math.sign(scaled) * Math.round(Math.abs(scaled)) || 0;
}
