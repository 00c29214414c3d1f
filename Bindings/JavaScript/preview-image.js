import { check } from './instance.js';
import { makeInstance } from './module.js';

// Frames that a preview node renders in one call; a render quantum of Web Audio has 128.
const batchFrames = 2048;

// Kept for the next image, unless a long loop has made its memory large: an image holds all of it.
let spare = null;
const mostSpareBytes = 8 << 20;

/**
 * Decodes a loop in an instance of its own and takes that instance's memory as the image: a node sets
 * it up again in the audio thread by copying it, without decoding or allocating anything there.
 */
export async function preparePreview(bytes, sampleRate, { onProgress } = {}) {
  const instance = spare ?? (await makeInstance());
  spare = null;
  let handle = 0n;
  let address = 0;
  try {
    handle = instance.create(bytes, onProgress);
    check(instance.exports.LOPSetOutputSampleRate(handle, sampleRate), `${sampleRate} frames per second`);
    const made = instance.allocateBuffers(2, batchFrames);
    address = made.address;
    const { left, right } = instance.layout;
    return {
      info: instance.getInfo(handle),
      sampleRate,
      handle,
      // What lies behind the end was never used.
      memory: instance.buffer.slice(0, instance.exports.getMemoryEnd() >>> 0),
      buffers: { address, frames: batchFrames, left: made.planes[0], right: made.planes[1],
        leftAt: address + left, rightAt: address + right },
    };
  } finally {
    if (address !== 0) {
      instance.free(address);
    }
    instance.delete(handle);
    if (instance.buffer.byteLength <= mostSpareBytes) {
      spare = instance;
    }
  }
}
