// A preview node: the main thread's side. The audio thread is given the module's bytes, which it
// compiles before the node is handed out (a compiled module that is posted there gets lost in some
// browsers), and then memory images of loops, in pieces, each acknowledged, so that no message takes
// the audio thread long. See preview-processor.js.
import { asBytes } from './instance.js';
import { getModuleBytes } from './module.js';
import { preparePreview } from './preview-image.js';

const chunkBytes = 1 << 20;

// Contexts whose worklet has the processor.
const withProcessor = new WeakMap();

function addProcessor(context, url) {
  if (!withProcessor.has(context)) {
    withProcessor.set(context, context.audioWorklet.addModule(url).catch((error) => {
      withProcessor.delete(context);
      throw error;
    }));
  }
  return withProcessor.get(context);
}

export async function createPreviewNode(context, source = null, options = {}) {
  const url = options.processorUrl ?? new URL('./preview-processor.js', import.meta.url);
  const [bytes] = await Promise.all([getModuleBytes(), addProcessor(context, url)]);
  const preview = new PreviewNode(context);
  try {
    await preview.compile(bytes);
    if (source !== null) {
      await preview.load(source);
    }
  } catch (error) {
    preview.close();
    throw error;
  }
  return preview;
}

class PreviewNode {
  #waiting = new Map();
  #id = 0;
  #info = null;
  #running = false;
  #closed = false;
  #failure = null; // of the audio thread, for good
  #warm = false;
  #loading = Promise.resolve();
  // Where the loop was last known to be: a time of the context, the place from 0 to 1, beats per
  // minute, and the time of the loop's start.
  #anchor = null;

  constructor(context) {
    this.context = context;
    this.node = new AudioWorkletNode(context, 'loop-preview', { numberOfInputs: 0, outputChannelCount: [2] });
    this.tempo = this.node.parameters.get('tempo');
    this.node.port.onmessage = ({ data }) => this.#receive(data);
    this.node.onprocessorerror = () => {
      this.#failure = new Error('the preview failed in the audio thread');
      this.#fail(this.#failure);
    };
  }

  get info() {
    return this.#info;
  }

  get running() {
    return this.#running;
  }

  /** Posts a message and resolves when the audio thread has handled it. */
  #ask(message, transfer = []) {
    if (this.#closed) {
      return Promise.reject(new Error('the preview node is closed'));
    }
    if (this.#failure !== null) {
      return Promise.reject(this.#failure);
    }
    return new Promise((resolve, reject) => {
      const id = ++this.#id;
      this.#waiting.set(id, { resolve, reject });
      this.node.port.postMessage({ ...message, id }, transfer);
    });
  }

  #receive(message) {
    if (message.type === 'answer') {
      const { resolve, reject } = this.#waiting.get(message.id) ?? {};
      this.#waiting.delete(message.id);
      if (message.error === undefined) {
        resolve?.();
      } else {
        reject?.(new Error(message.error));
      }
      return;
    }
    if (message.type === 'placed') {
      const { frame, place, tempo, isStart } = message;
      const time = frame / this.context.sampleRate;
      this.#anchor = { time, place, tempo, start: isStart ? time : this.#anchor?.start ?? time };
    } else {
      this.#anchor = null;
    }
  }

  #fail(error) {
    for (const { reject } of this.#waiting.values()) {
      reject(error);
    }
    this.#waiting.clear();
  }

  compile(bytes) {
    return this.#ask({ type: 'compile', bytes });
  }

  load(source, { keepTempo = false } = {}) {
    // One after another: a second loop waits until the first is in place.
    const loaded = this.#loading.then(async () => {
      const image = typeof source?.handle === 'bigint'
        ? source
        : await preparePreview(asBytes(source), this.context.sampleRate);
      if (image.sampleRate !== this.context.sampleRate) {
        throw new RangeError(`an image for ${image.sampleRate} frames per second in a context of ${this.context.sampleRate}`);
      }
      if (!this.#warm) {
        this.#warm = true;
        await this.#fill(image);
        await this.#ask({ type: 'warm' });
      }
      await this.#fill(image);
      if (!keepTempo) {
        this.tempo.cancelScheduledValues(0);
        this.tempo.value = Math.min(Math.max(image.info.storedTempo, 20), 450);
      }
      await this.#ask({ type: 'swap' });
      this.#info = image.info;
    });
    this.#loading = loaded.catch(() => {});
    return loaded;
  }

  async #fill({ memory, handle, buffers, info }) {
    const storedTempo = Math.min(Math.max(info.storedTempo, 20), 450);
    await this.#ask({ type: 'begin', size: memory.byteLength, handle, buffers, storedTempo });
    for (let at = 0; at < memory.byteLength; at += chunkBytes) {
      const bytes = memory.slice(at, at + chunkBytes);
      await this.#ask({ type: 'chunk', at, bytes }, [bytes]);
    }
  }

  #frameOf(when) {
    return Math.max(0, Math.round(when * this.context.sampleRate));
  }

  start(when = 0) {
    this.#running = true;
    this.node.port.postMessage({ type: 'start', frame: this.#frameOf(when) });
  }

  stop(when = 0) {
    this.#running = false;
    this.node.port.postMessage({ type: 'stop', frame: this.#frameOf(when) });
  }

  setTempo(tempo, when) {
    if (when === undefined) {
      this.tempo.value = tempo;
    } else {
      this.tempo.setValueAtTime(tempo, when);
    }
  }

  #quarterAt(time) {
    const { beats, quarters } = this.#info;
    const { time: known, place, tempo, start } = this.#anchor;
    const passes = place + ((Math.max(time, start) - known) * tempo) / (60 * beats);
    // A time just before a new pass may be asked for after that pass was told.
    return quarters > 0 ? (passes - Math.floor(passes)) * quarters : 0;
  }

  getPosition(time = this.context.currentTime) {
    return this.#anchor === null || this.#info === null ? null : this.#quarterAt(time);
  }

  connect(destination) {
    return this.node.connect(destination);
  }

  disconnect() {
    this.node.disconnect();
  }

  close() {
    if (!this.#closed) {
      this.node.port.postMessage({ type: 'close' });
      this.#closed = true;
      this.#running = false;
      this.#anchor = null;
      this.node.disconnect();
      this.#fail(new Error('the preview node is closed'));
    }
  }
}
