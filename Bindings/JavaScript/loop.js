import { LoopError, check, results } from './instance.js';

/** Tempo in the library's unit; what no 32-bit number can hold becomes 0, which is not a tempo. */
export function thousandths(tempo) {
  return Math.abs(tempo) < 1e6 ? Math.round(tempo * 1000) : 0;
}

/** A whole number for an argument of type int32_t, else one that the library refuses. */
function integer(value) {
  return Number.isInteger(value) && Math.abs(value) <= 0x7fffffff ? value : -1;
}

// Gives back the memory of loops that nobody has closed and nobody holds any more.
const forgotten = new FinalizationRegistry(({ instance, handle, buffers }) => {
  instance.delete(handle);
  if (buffers.address !== 0) {
    instance.free(buffers.address);
  }
});

export class Loop {
  #instance;
  #handle;
  #info;
  #rate;
  #slices = null;
  // Arrays for previews, kept between calls and made anew for longer ones.
  #buffers = { address: 0, planes: [], frames: 0 };

  constructor(instance, bytes, { sampleRate, onProgress } = {}) {
    this.#instance = instance;
    this.#handle = instance.create(bytes, onProgress);
    try {
      this.#info = instance.getInfo(this.#handle);
      this.#rate = Math.min(Math.max(this.#info.sampleRate, 11025), 1000000);
      if (sampleRate !== undefined) {
        this.setOutputSampleRate(sampleRate);
      }
    } catch (error) {
      instance.delete(this.#handle);
      throw error;
    }
    forgotten.register(this, { instance, handle: this.#handle, buffers: this.#buffers }, this);
  }

  #opened() {
    if (this.#handle === 0n) {
      throw new LoopError(results.InvalidHandle);
    }
    return this.#handle;
  }

  get info() {
    this.#opened();
    return this.#info;
  }

  get slices() {
    const handle = this.#opened();
    this.#slices ??= Object.freeze(Array.from({ length: this.#info.sliceCount },
      (_, index) => this.#instance.getSliceInfo(handle, index)));
    return this.#slices;
  }

  get creatorTexts() {
    return this.#instance.getCreatorTexts(this.#opened());
  }

  get outputSampleRate() {
    this.#opened();
    return this.#rate;
  }

  setOutputSampleRate(rate) {
    const handle = this.#opened();
    check(this.#instance.exports.LOPSetOutputSampleRate(handle, integer(rate)),
      `${rate} frames per second`);
    this.#rate = rate;
    this.#slices = null;
  }

  renderSlice(index, sampleRate = this.#rate) {
    const handle = this.#opened();
    const before = this.#rate;
    if (sampleRate === before) {
      return this.#renderSlice(handle, index);
    }
    this.setOutputSampleRate(sampleRate);
    try {
      return this.#renderSlice(handle, index);
    } finally {
      this.setOutputSampleRate(before);
    }
  }

  #renderSlice(handle, index) {
    const instance = this.#instance;
    const { frameCount } = instance.getSliceInfo(handle, integer(index));
    const { address, planes } = instance.allocateBuffers(this.#info.channels, frameCount);
    try {
      check(instance.exports.LOPRenderSlice(handle, index, frameCount, address), `slice ${index}`);
      return planes.map((plane) => instance.floats(plane, frameCount).slice());
    } finally {
      instance.free(address);
    }
  }

  startPreview() {
    check(this.#instance.exports.LOPStartPreview(this.#opened()), 'preview');
  }

  stopPreview() {
    check(this.#instance.exports.LOPStopPreview(this.#opened()), 'preview');
  }

  setPreviewTempo(tempo) {
    check(this.#instance.exports.LOPSetPreviewTempo(this.#opened(), thousandths(tempo)), `${tempo} BPM`);
  }

  renderPreview(frames) {
    this.#renderBatch(frames);
    return [this.#preview(0, frames).slice(), this.#preview(1, frames).slice()];
  }

  renderPreviewInto(left, right) {
    if (left === right || left.length !== right.length) {
      throw new LoopError(results.InvalidArgument, 'preview');
    }
    this.#renderBatch(left.length);
    left.set(this.#preview(0, left.length));
    right.set(this.#preview(1, right.length));
  }

  #preview(channel, frames) {
    return this.#instance.floats(this.#buffers.planes[channel], frames);
  }

  #renderBatch(frames) {
    const handle = this.#opened();
    const instance = this.#instance;
    if (integer(frames) < 0 || frames > 65536) {
      throw new LoopError(results.InvalidArgument, `${frames} frames`);
    }
    if (this.#buffers.address === 0 || frames > this.#buffers.frames) {
      const made = instance.allocateBuffers(2, frames);
      if (this.#buffers.address !== 0) {
        instance.free(this.#buffers.address);
      }
      Object.assign(this.#buffers, made, { frames });
    }
    check(instance.exports.LOPRenderPreviewBatch(handle, frames, this.#buffers.address), 'preview');
  }

  close() {
    if (this.#handle !== 0n) {
      forgotten.unregister(this);
      this.#instance.delete(this.#handle);
      this.#handle = 0n;
      if (this.#buffers.address !== 0) {
        this.#instance.free(this.#buffers.address);
        this.#buffers.address = 0;
      }
    }
  }

  [Symbol.dispose ?? Symbol.for('Symbol.dispose')]() {
    this.close();
  }
}
