// The thread that reads files and decodes loops, so that the page stays smooth. Each message is
// {id, task, ...} and is answered by {id, result} or {id, failure}.

import { LoopLibrary } from '../looplibrary/index.js';
import { exportLoop, exportSlice } from '../Export/exportLoop.js';
import { firstText, headOf, kindOf, mayBeLoop } from './loopHeader.js';
import { layOutPass, peaksOf } from './peaks.js';

const kHeadBytes = 16384; // hold all before the audio of a usual loop
const kMostBytes = 0x7fffffff; // of a file that the library takes

const tasks = {
  /** Compiles the library, from its bytes if the page has them. */
  async init({ wasm }) {
    await LoopLibrary.init({ wasm });
  },

  /** Headers alone: {kind, info, text}. */
  async readHeader({ file }) {
    const start = await readStart(file);
    const bytes = headOf(start, file.size) ?? await readAll(file);
    const info = await LoopLibrary.readInfo(bytes);
    return { kind: kindOf(bytes), info, text: firstText(bytes) };
  },

  /** All that the page shows and plays of one loop, at an output rate. */
  async open({ file, sampleRate }, transfer) {
    const bytes = await readAll(file);
    const image = await LoopLibrary.preparePreview(bytes, sampleRate);
    const loop = await LoopLibrary.load(bytes, { sampleRate });
    try {
      const { info, slices, creatorTexts } = loop;
      const audio = slices.map((slice) => loop.renderSlice(slice.index));
      const peaks = passPeaks(info, slices, audio, sampleRate);
      transfer.push(image.memory, ...audio.flat().map((plane) => plane.buffer));
      return { info, slices, creatorTexts, image, audio, peaks, sampleRate };
    } finally {
      loop.close();
    }
  },

  async exportLoop({ file, name, tempo }) {
    return withLoop(file, (loop) => exportLoop(loop, name, tempo));
  },

  async exportSlice({ file, index }) {
    return withLoop(file, (loop) => exportSlice(loop, index));
  },
};

// Folders hold much else: of that, only the start is read.
async function readStart(file) {
  const start = new Uint8Array(await file.slice(0, kHeadBytes).arrayBuffer());
  if (!mayBeLoop(start)) {
    throw Object.assign(new Error('not a loop file'), { name: 'NotALoop' });
  }
  return start;
}

async function readAll(file) {
  if (file.size > kMostBytes) {
    throw Object.assign(new Error('larger than 2 GB'), { name: 'TooLarge' });
  }
  return new Uint8Array(await file.arrayBuffer());
}

async function withLoop(file, use) {
  const loop = await LoopLibrary.load(await readAll(file));
  try {
    return use(loop);
  } finally {
    loop.close();
  }
}

function passPeaks(info, slices, audio, sampleRate) {
  const seconds = info.seconds || (info.beats * 60) / info.storedTempo || 1;
  const frames = Math.max(1, Math.round(seconds * sampleRate));
  const placed = slices.map((slice, index) => ({
    start: slice.ppqPosition / info.ppqLength,
    planes: audio[index],
  }));
  return layOutPass(placed, info.channels, frames).map(peaksOf);
}

self.onmessage = async ({ data: { id, task, ...parameters } }) => {
  const transfer = [];
  try {
    const result = await tasks[task](parameters, transfer);
    self.postMessage({ id, result }, transfer);
  } catch (error) {
    const failure = { name: error.resultName ?? error.name, message: error.message };
    self.postMessage({ id, failure });
  }
};
