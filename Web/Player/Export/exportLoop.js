// A loop as files for any sampler: a WAV for each slice, a MIDI file that plays them in time and an
// .sfz that maps them to keys. `looptool export --bits 24` writes the same bytes.

import { PPQ } from '../looplibrary/index.js';
import { midiFile } from './midiFile.js';
import { plainStem, sliceFileName } from './names.js';
import { kMostKeyedSlices, needsChannels, noteOfSlice } from './sliceKeys.js';
import { wavFile } from './wavFile.js';
import { zipFile } from './zipFile.js';

/**
 * @param {import('../looplibrary/index.js').Loop} loop
 * @param {string} fileName of the loop
 * @param {number} tempo beats per minute of the MIDI file
 * @returns {Blob} a ZIP file
 */
export function exportLoop(loop, fileName, tempo) {
  const count = loop.slices.length;
  if (count > kMostKeyedSlices) {
    throw Object.assign(new Error(`${count} slices`), { name: 'TooManySlices' });
  }
  const stem = plainStem(fileName);
  const song = songOf(loop, tempo);
  const files = loop.slices.map(({ index }) => ({
    name: sliceFileName(stem, index, count),
    bytes: wavFile(loop.renderSlice(index), loop.outputSampleRate),
  }));
  files.push({ name: `${stem}.mid`, bytes: midiFile(song) });
  files.push({ name: `${stem}.sfz`, bytes: new TextEncoder().encode(sfzText(stem, song)) });
  return zipFile(files);
}

/** One slice as a WAV file at the loop's own rate. */
export function exportSlice(loop, index) {
  return new Blob([wavFile(loop.renderSlice(index), loop.outputSampleRate)], { type: 'audio/wav' });
}

function songOf(loop, tempo) {
  const { info, slices } = loop;
  const notes = slices.map((slice, index) => ({
    start: slice.ppqPosition,
    end: Math.max(slices[index + 1]?.ppqPosition ?? info.ppqLength, slice.ppqPosition + 1),
    ...noteOfSlice(index),
  }));
  return {
    ppq: PPQ,
    quartersPerMinute: (tempo * 4) / info.timeSignature[1],
    timeSignature: info.timeSignature,
    length: info.ppqLength,
    notes,
  };
}

function sfzText(stem, song) {
  const count = song.notes.length;
  const tempo = Number(song.quartersPerMinute.toFixed(3));
  const regions = song.notes.map(({ key, channel }, index) => {
    const channels = needsChannels(count) ? ` lochan=${channel + 1} hichan=${channel + 1}` : '';
    return `<region> key=${key}${channels} sample=${sliceFileName(stem, index, count)}\n`;
  });
  return `// ${stem}: ${count} slices from C1 (note 36); ${stem}.mid plays them in time at ${tempo} `
    + `quarter notes per minute\n<group> loop_mode=one_shot\n${regions.join('')}`;
}
