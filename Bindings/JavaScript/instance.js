// One instance of the WebAssembly module: its exports, its memory, and the records of the C header by
// the layout that the compiler gave them.

/** The order of LoopModule.c. */
const layoutNames = [
  'versionMajor', 'versionMinor', 'versionPatch', 'handleSize',
  'infoSize', 'channels', 'sampleRate', 'sliceCount', 'storedTempo', 'loopTempo', 'ppqLength',
  'numerator', 'denominator', 'bitDepth',
  'sliceInfoSize', 'ppqPosition', 'frameCount',
  'creatorInfoSize', 'creatorTextSize',
  'renderBuffersSize', 'left', 'right',
];

const resultNames = {
  2: ['Aborted', 'the load was stopped by its progress function'],
  3: ['NoCreatorInfo', 'the loop holds no creator texts'],
  105: ['OutOfMemory', 'memory ran out'],
  106: ['FileCorrupt', 'not a loop file, or a damaged one'],
  107: ['FileTooNew', 'written by a newer version of the format'],
  108: ['ZeroLoopLength', "the loop's musical length is zero"],
  200: ['NotInitialized', 'the library is not initialised'],
  201: ['AlreadyInitialized', 'the library is initialised already'],
  202: ['InvalidHandle', 'the loop is closed'],
  203: ['InvalidSize', "a record's size is too small"],
  204: ['InvalidArgument', 'a required pointer or count is wrong'],
  205: ['InvalidSlice', 'the slice index is out of range'],
  206: ['InvalidSampleRate', 'the output rate is out of range'],
  207: ['BufferTooSmall', 'the buffer holds fewer frames than the slice'],
  208: ['PreviewRunning', 'the operation needs a stopped preview'],
  209: ['PreviewNotRunning', 'the operation needs a running preview'],
  210: ['InvalidTempo', 'the preview tempo is out of range'],
};

export const results = { OK: 1, NoCreatorInfo: 3, OutOfMemory: 105, FileCorrupt: 106,
  InvalidHandle: 202, InvalidArgument: 204, InvalidSampleRate: 206, InvalidTempo: 210 };

export class LoopError extends Error {
  constructor(result, subject = '') {
    const [name, message] = resultNames[result] ?? ['Undefined', 'an unexpected failure'];
    super(subject ? `${subject}: ${message}` : message);
    this.name = 'LoopError';
    this.result = result;
    this.resultName = name;
  }
}

/** Throws the LoopError of a result other than success. */
export function check(result, subject) {
  if (result !== results.OK) {
    throw new LoopError(result, subject);
  }
}

// A memory never shrinks: an instance that had to grow beyond this is given up when it holds no loop.
const mostKeptBytes = 32 << 20;

export class Instance {
  #onProgress = null;
  #thrown = null;
  #scratch = 0;
  #loops = 0;
  #onGrown;

  /** `module` is compiled. `onGrown` is called when the instance holds no loop and a memory that is not
   * worth keeping. Throws when the engine has no memory for it. */
  constructor(module, onGrown = () => {}) {
    this.#onGrown = onGrown;
    // The module asks for nothing of a system but by names that its C library mentions and the
    // library never calls; they get a function that refuses.
    const imports = {};
    for (const { module: space, name, kind } of WebAssembly.Module.imports(module)) {
      imports[space] ??= {};
      if (kind === 'function') {
        imports[space][name] = () => 52; // the C library's "function not supported"
      }
    }
    imports.env ??= {};
    imports.env.reportProgress = (percent) => this.#report(percent);
    imports.env.emscripten_notify_memory_growth = () => {};
    this.exports = new WebAssembly.Instance(module, imports).exports;
    this.exports._initialize?.();
    const numbers = new Int32Array(this.buffer, this.exports.getLayout(), layoutNames.length);
    this.layout = Object.fromEntries(layoutNames.map((name, at) => [name, numbers[at]]));
    check(this.exports.LOPInitializeDLL());
    this.#scratch = this.allocate(Math.max(this.layout.creatorInfoSize, this.layout.infoSize));
  }

  /** The memory; another object after each call that may have made it grow. */
  get buffer() {
    return this.exports.memory.buffer;
  }

  get version() {
    const { versionMajor, versionMinor, versionPatch } = this.layout;
    return `${versionMajor}.${versionMinor}.${versionPatch}`;
  }

  allocate(size) {
    const address = this.exports.malloc(size) >>> 0;
    if (address === 0) {
      throw new LoopError(results.OutOfMemory);
    }
    return address;
  }

  free(address) {
    this.exports.free(address);
  }

  /** Calls `use(address, size)` with a copy of the bytes in the module's memory. */
  withBytes(bytes, use) {
    const source = asBytes(bytes);
    if (source.length > 0x7fffffff) {
      throw new LoopError(results.InvalidArgument);
    }
    const address = this.allocate(Math.max(source.length, 1));
    try {
      new Uint8Array(this.buffer, address, source.length).set(source);
      return use(address, source.length);
    } finally {
      this.free(address);
      this.#settle();
    }
  }

  #settle() {
    if (this.#loops === 0 && this.buffer.byteLength > mostKeptBytes) {
      this.#onGrown();
    }
  }

  /** A new handle for the loop file's bytes. */
  create(bytes, onProgress) {
    return this.withBytes(bytes, (address, size) => {
      const handleAddress = this.#scratch;
      new DataView(this.buffer).setBigUint64(handleAddress, 0n, true);
      this.#onProgress = onProgress ?? null;
      this.#thrown = null;
      const result = onProgress
        ? this.exports.createLoop(handleAddress, address, size)
        : this.exports.LOPCreate(handleAddress, address, size, 0, 0);
      const thrown = this.#thrown;
      this.#onProgress = null;
      this.#thrown = null;
      const handle = new DataView(this.buffer).getBigUint64(handleAddress, true);
      this.#loops += handle === 0n ? 0 : 1;
      if (thrown) {
        this.delete(handle);
        throw thrown.error;
      }
      check(result);
      return handle;
    });
  }

  // No exception may cross the module: it would leave the library locked.
  #report(percent) {
    if (this.#thrown) {
      return 1;
    }
    try {
      return this.#onProgress(percent) === false ? 1 : 0;
    } catch (error) {
      this.#thrown = { error };
      return 1;
    }
  }

  delete(handle) {
    if (handle !== 0n) {
      this.exports.LOPStopPreview(handle); // a running preview would keep it open
      new DataView(this.buffer).setBigUint64(this.#scratch, handle, true);
      this.exports.LOPDelete(this.#scratch);
      --this.#loops;
      this.#settle();
    }
  }

  readInfo(bytes) {
    return this.withBytes(bytes, (address, size) => {
      check(this.exports.LOPGetInfoFromBuffer(size, address, this.layout.infoSize, this.#scratch));
      return this.#infoAt(this.#scratch);
    });
  }

  getInfo(handle) {
    check(this.exports.LOPGetInfo(handle, this.layout.infoSize, this.#scratch));
    return this.#infoAt(this.#scratch);
  }

  #infoAt(address) {
    const view = new DataView(this.buffer, address, this.layout.infoSize);
    const number = (name) => view.getInt32(this.layout[name], true);
    const ppqLength = number('ppqLength');
    const denominator = number('denominator');
    const loopTempo = number('loopTempo') / 1000;
    const quarters = ppqLength / 15360;
    const beats = (quarters * denominator) / 4;
    return Object.freeze({
      channels: number('channels'),
      sampleRate: number('sampleRate'),
      sliceCount: number('sliceCount'),
      storedTempo: number('storedTempo') / 1000,
      loopTempo,
      ppqLength,
      timeSignature: Object.freeze([number('numerator'), denominator]),
      bitDepth: number('bitDepth'),
      quarters,
      beats,
      seconds: loopTempo > 0 ? (beats * 60) / loopTempo : 0,
    });
  }

  getSliceInfo(handle, index) {
    const { sliceInfoSize, ppqPosition, frameCount } = this.layout;
    check(this.exports.LOPGetSliceInfo(handle, index, sliceInfoSize, this.#scratch), `slice ${index}`);
    const view = new DataView(this.buffer, this.#scratch, sliceInfoSize);
    const position = view.getInt32(ppqPosition, true);
    return Object.freeze({
      index,
      ppqPosition: position,
      quarter: position / 15360,
      frameCount: view.getInt32(frameCount, true),
    });
  }

  getCreatorTexts(handle) {
    const { creatorInfoSize, creatorTextSize } = this.layout;
    const result = this.exports.LOPGetCreatorInfo(handle, creatorInfoSize, this.#scratch);
    if (result === results.NoCreatorInfo) {
      return null;
    }
    check(result);
    const texts = [];
    for (let at = 0; at < creatorInfoSize; at += creatorTextSize) {
      const bytes = new Uint8Array(this.buffer, this.#scratch + at, creatorTextSize);
      texts.push(new TextDecoder().decode(bytes.subarray(0, bytes.indexOf(0))));
    }
    return Object.freeze(texts);
  }

  /** Memory for LOPRenderBuffers and the arrays behind it: one block, to be freed by its address. */
  allocateBuffers(channels, frames) {
    const { renderBuffersSize, left, right } = this.layout;
    const start = (renderBuffersSize + 15) & ~15;
    const address = this.allocate(start + channels * frames * 4);
    const view = new DataView(this.buffer, address, renderBuffersSize);
    view.setUint32(left, address + start, true);
    view.setUint32(right, channels === 2 ? address + start + frames * 4 : 0, true);
    return { address, planes: Array.from({ length: channels }, (_, at) => address + start + at * frames * 4) };
  }

  floats(address, frames) {
    return new Float32Array(this.buffer, address, frames);
  }
}

/** The bytes of a Uint8Array, an ArrayBuffer or another view, without a copy. */
export function asBytes(bytes) {
  if (bytes instanceof Uint8Array) {
    return bytes;
  }
  if (ArrayBuffer.isView(bytes)) {
    return new Uint8Array(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  }
  if (Object.prototype.toString.call(bytes) === '[object ArrayBuffer]') {
    return new Uint8Array(bytes);
  }
  throw new TypeError('the bytes of a loop file are a Uint8Array or an ArrayBuffer');
}
