import { Loop } from './loop.js';
import { getInstance, init } from './module.js';
import { preparePreview } from './preview-image.js';

export { LoopError } from './instance.js';
export { createPreviewNode } from './preview-node.js';

export const PPQ = 15360;
export const MIN_SAMPLE_RATE = 11025;
export const MAX_SAMPLE_RATE = 1000000;
export const MIN_TEMPO = 20;
export const MAX_TEMPO = 450;
export const MAX_BATCH_FRAMES = 65536;

export const LoopLibrary = Object.freeze({
  version: '1.0.0',
  init,
  async load(bytes, options) {
    return new Loop(await getInstance(), bytes, options);
  },
  async readInfo(bytes) {
    return (await getInstance()).readInfo(bytes);
  },
  preparePreview,
});
