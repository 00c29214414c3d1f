/** A task of the loop worker failed. `name` is a result of the library or the name of an error. */
export class LoopFailure extends Error {
  constructor({ name, message }) {
    super(message);
    this.name = name;
  }
}

/** The page's side of the loop worker: each call is a message and a promise. */
export class LoopClient {
  #worker;
  #waiting = new Map();
  #lastId = 0;
  #failure = null; // for good

  /** @param {Worker} worker runs loopWorker.js */
  constructor(worker) {
    this.#worker = worker;
    worker.onmessage = ({ data: { id, result, failure } }) => {
      const { resolve, reject } = this.#waiting.get(id);
      this.#waiting.delete(id);
      if (failure) {
        reject(new LoopFailure(failure));
      } else {
        resolve(result);
      }
    };
    // The worker's file is missing or the browser too old: nothing will be answered any more.
    worker.onerror = (event) => {
      this.#failure = new LoopFailure({ name: 'NoWorker', message: event.message ?? '' });
      for (const { reject } of this.#waiting.values()) {
        reject(this.#failure);
      }
      this.#waiting.clear();
    };
  }

  /** Compiles the library, from its bytes if they are given. All other calls do it if needed. */
  init(wasm) {
    return this.#ask('init', { wasm });
  }

  /** {kind, info, text} from the headers of a file. */
  readHeader(file) {
    return this.#ask('readHeader', { file });
  }

  /** {info, slices, creatorTexts, image, audio, peaks, sampleRate} of a file. */
  open(file, sampleRate) {
    return this.#ask('open', { file, sampleRate });
  }

  /** A Blob: the ZIP of a loop's slices, with MIDI at `tempo`. */
  exportLoop(file, name, tempo) {
    return this.#ask('exportLoop', { file, name, tempo });
  }

  /** A Blob: one slice as WAV. */
  exportSlice(file, index) {
    return this.#ask('exportSlice', { file, index });
  }

  #ask(task, parameters) {
    if (this.#failure) {
      return Promise.reject(this.#failure);
    }
    const id = ++this.#lastId;
    return new Promise((resolve, reject) => {
      this.#waiting.set(id, { resolve, reject });
      this.#worker.postMessage({ id, task, ...parameters });
    });
  }
}
