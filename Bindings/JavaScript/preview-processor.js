// The audio thread's side of a preview node. It imports nothing, since not every browser lets audio
// worklets import. See preview-node.js for the messages.

// Compiled once for all nodes of a context.
let compiled = null;
let isWarm = false;

const chunkFrames = 64; // the library starts slices on a grid of so many frames
const mostTailFrames = 1 << 16;
const silence = 1e-6;
const wholeLoop = 2 ** 29; // of getPreviewPlace
// A change of tempo below this waits until the tempo stands still: the library keeps the time to the
// next slice in whole blocks, so that many small changes would be lost.
const tempoStep = 0.5;

/** An instance of the module that holds one loop: the memory image that it was filled with. */
class Slot {
  constructor(module) {
    const imports = {};
    for (const { module: space, name } of WebAssembly.Module.imports(module)) {
      imports[space] ??= {};
      imports[space][name] = () => 0; // a preview calls none of them
    }
    this.exports = new WebAssembly.Instance(module, imports).exports;
    this.bytes = null;
    this.handle = 0n;
    this.runs = false;
    this.tail = 0;
  }

  begin({ size, handle, buffers, storedTempo }) {
    const missing = size - this.exports.memory.buffer.byteLength;
    if (missing > 0) {
      this.exports.memory.grow(Math.ceil(missing / 65536));
    }
    const { buffer } = this.exports.memory;
    this.bytes = new Uint8Array(buffer);
    this.handle = handle;
    this.buffers = buffers.address;
    this.frames = buffers.frames;
    this.leftAddress = buffers.left;
    this.rightAddress = buffers.right;
    this.left = new Float32Array(buffer, buffers.left, buffers.frames);
    this.right = new Float32Array(buffer, buffers.right, buffers.frames);
    this.leftPointer = new Uint32Array(buffer, buffers.leftAt, 1);
    this.rightPointer = new Uint32Array(buffer, buffers.rightAt, 1);
    this.tempo = storedTempo; // beats per minute, as the library has it
    this.wanted = storedTempo; // what the parameter said last, or near it
    this.runs = false; // between start and stop
    this.tail = 0; // frames that a stopped loop may still sound
    this.rendered = 0; // frames
    this.place = 0; // in the loop, 0 to wholeLoop, when it was last asked for
  }

  put(at, chunk) {
    this.bytes.set(new Uint8Array(chunk), at);
  }

  start() {
    if (this.runs) {
      // The stop must have reached the audio before the next start.
      this.stop();
      this.render(0, chunkFrames);
    }
    this.exports.LOPStartPreview(this.handle);
    this.runs = true;
  }

  stop() {
    if (this.runs) {
      this.exports.LOPStopPreview(this.handle);
      this.runs = false;
      this.tail = mostTailFrames;
    }
  }

  /** Follows the tempo; true when the library was told another. */
  follow(tempo) {
    const isStill = tempo === this.wanted || !this.runs;
    this.wanted = tempo;
    const thousandths = Math.round(tempo * 1000);
    const present = Math.round(this.tempo * 1000);
    if (thousandths === present || (!isStill && Math.abs(tempo - this.tempo) < tempoStep)) {
      return false;
    }
    this.tempo = tempo;
    return this.exports.LOPSetPreviewTempo(this.handle, thousandths) === 1;
  }

  get sounds() {
    return this.runs || this.tail > 0;
  }

  /** The next frames, into the arrays from frame `at` on. */
  render(at, frames) {
    this.leftPointer[0] = this.leftAddress + 4 * at;
    this.rightPointer[0] = this.rightAddress + 4 * at;
    this.exports.LOPRenderPreviewBatch(this.handle, frames, this.buffers);
    this.rendered += frames;
    if (!this.runs && this.tail > 0) {
      let loudest = 0;
      for (let frame = at; frame < at + frames; ++frame) {
        loudest = Math.max(loudest, Math.abs(this.left[frame]), Math.abs(this.right[frame]));
      }
      this.tail = loudest < silence ? 0 : Math.max(this.tail - frames, 0);
    }
  }

  /** Frames since the head of the block that was begun last, 1 to 64. */
  get framesSinceHead() {
    return ((this.rendered + chunkFrames - 1) % chunkFrames) + 1;
  }

  /** Asks for the place at that head; true when it is in another pass than the one before. */
  updatePlace() {
    const before = this.place;
    this.place = Math.max(this.exports.getPreviewPlace(this.handle), 0);
    return this.place < before;
  }

  clear(at, frames) {
    this.left.fill(0, at, at + frames);
    this.right.fill(0, at, at + frames);
  }
}

function makeProcessor(Base) {
  return class LoopPreviewProcessor extends Base {
    static get parameterDescriptors() {
      return [{ name: 'tempo', defaultValue: 120, minValue: 20, maxValue: 450, automationRate: 'k-rate' }];
    }

    constructor(options) {
      super(options);
      this.slots = [];
      this.playing = null; // the slot that is heard
      this.fading = null; // the one that was heard before
      this.filling = null;
      this.open = true;
      this.startFrame = -1; // of the context; -1: none is due
      this.stopFrame = -1;
      this.placed = { type: 'placed', frame: 0, place: 0, tempo: 0, isStart: false };
      this.startIsDue = false; // to be told
      this.tempoIsDue = false;
      this.stopped = { type: 'stopped', frame: 0 };
      this.port.onmessage = ({ data }) => {
        try {
          const answer = this[data.type](data);
          if (answer instanceof Promise) {
            answer.then(() => this.answer(data), (error) => this.answer(data, error));
          } else if (data.id !== undefined) {
            this.answer(data);
          }
        } catch (error) {
          this.answer(data, error);
        }
      };
    }

    answer({ id }, error) {
      this.port.postMessage({ type: 'answer', id, error: error === undefined ? undefined : String(error) });
    }

    // ---- Messages

    async compile({ bytes }) {
      compiled ??= WebAssembly.compile(bytes);
      const module = await compiled;
      this.slots = [new Slot(module), new Slot(module)];
    }

    begin(image) {
      this.filling = this.slots.find((slot) => slot !== this.playing);
      if (this.filling === this.fading) {
        this.fading = null;
      }
      this.filling.begin(image);
    }

    chunk({ at, bytes }) {
      this.filling.put(at, bytes);
    }

    /** Runs what a preview runs before anything sounds, so that the engine has it compiled; the image
     * has to be filled in again. */
    warm() {
      if (!isWarm) {
        isWarm = true;
        const slot = this.filling;
        slot.start();
        for (let at = 0; at < 16; ++at) {
          slot.render(0, slot.frames);
        }
        slot.follow(slot.tempo > 200 ? 100 : 300);
        slot.render(0, slot.frames);
        slot.stop();
        slot.render(0, slot.frames);
      }
      this.filling = null;
    }

    /** The filled slot is heard from now on. */
    swap() {
      this.fading = this.playing;
      this.playing = this.filling;
      this.filling = null;
      if (this.fading?.runs) {
        this.fading.stop();
        this.startFrame = currentFrame;
      }
    }

    start({ frame }) {
      this.startFrame = Math.max(frame, currentFrame);
    }

    stop({ frame }) {
      if (this.playing === null) {
        this.startFrame = -1; // it waited for a loop
        return;
      }
      this.stopFrame = Math.max(frame, currentFrame);
    }

    close() {
      this.open = false;
      this.slots = [];
      this.playing = null;
      this.fading = null;
      this.filling = null;
      this.port.close();
    }

    // ---- Audio

    process(_inputs, outputs, parameters) {
      const left = outputs[0][0];
      const right = outputs[0][1];
      const slot = this.playing;
      if (slot !== null) {
        this.play(slot, parameters.tempo[0], left.length);
        this.copy(slot, left, right);
      }
      if (this.fading !== null) {
        this.fading.render(0, left.length);
        for (let frame = 0; frame < left.length; ++frame) {
          left[frame] += this.fading.left[frame];
          right[frame] += this.fading.right[frame];
        }
        if (!this.fading.sounds) {
          this.fading = null;
        }
      }
      return this.open;
    }

    /** One quantum into the slot's arrays, with a start and a stop at their frames. */
    play(slot, tempo, frames) {
      if (slot.follow(tempo)) {
        this.tempoIsDue = true;
      }
      let at = 0;
      while (at < frames) {
        const start = this.startFrame < 0 ? Infinity : this.startFrame - currentFrame;
        const stop = this.stopFrame < 0 ? Infinity : this.stopFrame - currentFrame;
        if (stop <= at && stop <= start) {
          this.stopFrame = -1;
          if (slot.runs) {
            slot.stop();
            this.stopped.frame = currentFrame + at;
            this.port.postMessage(this.stopped);
          }
          continue;
        }
        if (start <= at) {
          if (slot.runs) {
            // As Slot.start, with the fade heard.
            slot.stop();
            const fade = Math.min(chunkFrames, frames - at);
            slot.render(at, fade);
            at += fade;
            this.startFrame = currentFrame + at;
            continue;
          }
          this.startFrame = -1;
          slot.start();
          this.startIsDue = true;
        }
        const end = Math.min(frames, start > at ? start : frames, stop > at ? stop : frames);
        if (slot.sounds) {
          slot.render(at, end - at);
        } else {
          slot.clear(at, end - at);
        }
        at = end;
      }
      if (slot.runs) {
        this.tellPlace(slot, currentFrame + frames);
      }
    }

    /** Says where the loop is at the end of a quantum, where the page cannot know: after a start or a
     * change of tempo, and in each new pass, whose length the library rounds. */
    tellPlace(slot, end) {
      const isNewPass = slot.updatePlace();
      if (this.startIsDue || this.tempoIsDue || isNewPass) {
        this.placed.frame = end - slot.framesSinceHead;
        this.placed.place = slot.place / wholeLoop;
        this.placed.tempo = slot.tempo;
        this.placed.isStart = this.startIsDue;
        this.port.postMessage(this.placed);
        this.startIsDue = false;
        this.tempoIsDue = false;
      }
    }

    copy(slot, left, right) {
      for (let frame = 0; frame < left.length; ++frame) {
        left[frame] = slot.left[frame];
        right[frame] = slot.right[frame];
      }
    }
  };
}

registerProcessor('loop-preview', makeProcessor(AudioWorkletProcessor));
