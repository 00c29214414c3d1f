/// <reference lib="dom" />
/**
 * Sliced audio loops in browsers and in Node 18 and later: open, inspect, render and preview loop
 * files. Works on any thread: a page, a worker, Node; no cross-origin isolation is needed.
 *
 *     import { LoopLibrary, createPreviewNode } from 'looplibrary';
 *
 *     const loop = await LoopLibrary.load(bytes);
 *     console.log(loop.info.loopTempo, 'BPM');
 *     const [left, right = left] = loop.renderSlice(0, 48000);
 *     loop.close();
 *
 *     const preview = await createPreviewNode(audioContext, bytes);
 *     preview.connect(audioContext.destination);
 *     preview.start();
 *     preview.setTempo(97.5);
 *
 * Audio is 32-bit float, full scale 1.0, one array for each channel. Tempos are in beats per minute,
 * where a beat is one unit of the time signature (an eighth note in 6/8). Positions are in pulses,
 * PPQ (15360) to a quarter note. Every failure of the library is a LoopError.
 */

/** Pulses to a quarter note. */
export const PPQ: 15360;
/** Lowest and highest output rate, frames per second. */
export const MIN_SAMPLE_RATE: 11025;
export const MAX_SAMPLE_RATE: 1000000;
/** Lowest and highest tempo of a preview, beats per minute. */
export const MIN_TEMPO: 20;
export const MAX_TEMPO: 450;
/** Most frames of one renderPreview. */
export const MAX_BATCH_FRAMES: 65536;

/** What the library answers, by the numbers of the C header (LOPResult). */
export type ResultName =
  | 'Aborted'
  | 'NoCreatorInfo'
  | 'OutOfMemory'
  | 'FileCorrupt'
  | 'FileTooNew'
  | 'ZeroLoopLength'
  | 'NotInitialized'
  | 'AlreadyInitialized'
  | 'InvalidHandle'
  | 'InvalidSize'
  | 'InvalidArgument'
  | 'InvalidSlice'
  | 'InvalidSampleRate'
  | 'BufferTooSmall'
  | 'PreviewRunning'
  | 'PreviewNotRunning'
  | 'InvalidTempo'
  | 'Undefined';

/** A call of the library failed. `message` is an English sentence part such as "not a loop file, or
 * a damaged one". */
export class LoopError extends Error {
  constructor(result: number, subject?: string);
  /** The number of the C header: 106 for FileCorrupt. */
  readonly result: number;
  readonly resultName: ResultName;
}

/** Bytes of a loop file: read during the call, never written, not kept. */
export type LoopBytes = Uint8Array | ArrayBuffer;

/** What is known of a loop. Plain data: it can be posted to another thread. */
export interface LoopInfo {
  /** 1 or 2. */
  readonly channels: number;
  /** Frames per second of the stored audio. */
  readonly sampleRate: number;
  readonly sliceCount: number;
  /** Beats per minute, stored in the file. */
  readonly storedTempo: number;
  /** Beats per minute that follow from the loop's frames and beats; 0 when unknown. */
  readonly loopTempo: number;
  /** The loop's length in pulses. */
  readonly ppqLength: number;
  /** Beats of a bar and note value of a beat. */
  readonly timeSignature: readonly [number, number];
  /** 8, 16, 20, 22, 24 or 32; 0 for any other depth. */
  readonly bitDepth: number;
  /** The loop's length in quarter notes. */
  readonly quarters: number;
  /** The loop's length in beats of its time signature. */
  readonly beats: number;
  /** The loop's length at its own tempo; 0 when that is unknown. */
  readonly seconds: number;
}

/** A stretch of a loop that plays as one. */
export interface SliceInfo {
  readonly index: number;
  /** Its start in pulses from the loop's start. */
  readonly ppqPosition: number;
  /** Its start in quarter notes from the loop's start. */
  readonly quarter: number;
  /** Frames that renderSlice gives at the present output rate. It rings past the next slice's start. */
  readonly frameCount: number;
}

/** Five texts in the file's order: its author's fields. Lines of a text are separated by U+2029. */
export type CreatorTexts = readonly [string, string, string, string, string];

/** An open loop. Its memory is given back by close(), or some time after the last reference is gone. */
export interface Loop {
  readonly info: LoopInfo;
  /** In the order of time, with frame counts at the present output rate. */
  readonly slices: readonly SliceInfo[];
  /** null when the loop holds none. */
  readonly creatorTexts: CreatorTexts | null;
  /** Frames per second of slices and preview; until it is set, that of the stored audio, clamped to
   * the range. */
  readonly outputSampleRate: number;

  /** Sets the output rate, 11025 to 1000000. Not while a preview runs. */
  setOutputSampleRate(rate: number): void;
  /**
   * Renders a slice with all settings of the loop: one array for each channel. With `sampleRate`,
   * at that rate instead of the output rate, which stays as it was; not while a preview runs. To
   * render many slices at one rate, setOutputSampleRate once is faster.
   */
  renderSlice(index: number, sampleRate?: number): Float32Array[];

  /** Starts the preview from the loop's start; it repeats until it is stopped. */
  startPreview(): void;
  /** Stops the preview; what sounds fades out over the following renderPreview calls. */
  stopPreview(): void;
  /** 20 to 450 beats per minute, also while the preview runs; from the next 64 frames on. */
  setPreviewTempo(tempo: number): void;
  /** The next `frames` frames (0 to 65536) of the preview in two new arrays; a mono loop gives both
   * alike. Batches of any sizes give the same samples. */
  renderPreview(frames: number): [Float32Array, Float32Array];
  /** The same into two arrays of one length, which must not be one: no new arrays. */
  renderPreviewInto(left: Float32Array, right: Float32Array): void;

  /** Closes the loop, a running preview included. A second call does nothing; any other call on a
   * closed loop throws InvalidHandle. */
  close(): void;
}

export interface InitOptions {
  /** The module: its bytes, compiled, or where it lies. By default looplibrary.wasm beside this file. */
  wasm?: BufferSource | WebAssembly.Module | URL | string;
}

export interface LoadOptions {
  /** The output rate to begin with. */
  sampleRate?: number;
  /** Called during the load with a percentage, 0 to 100; false stops the load (LoopError Aborted),
   * and an exception stops the load and leaves load(). */
  onProgress?: (percent: number) => boolean | void;
}

/**
 * A loop that is decoded and ready to play in a preview node: plain data, made anywhere (in a
 * worker, say) and posted to the page with `[image.memory]` as its transfer list. It may be given to
 * several nodes, which copy it. It belongs to the build of this package that made it.
 */
export interface PreviewImage {
  readonly info: LoopInfo;
  readonly sampleRate: number;
  readonly memory: ArrayBuffer;
  readonly handle: bigint;
  readonly buffers: object;
}

export const LoopLibrary: {
  /** The library's version, "1.0.0". */
  readonly version: string;
  /** Compiles the library, once; a second call waits for the first. All others call it if needed. */
  init(options?: InitOptions): Promise<void>;
  /** Opens a loop file and decodes its audio on this thread (some milliseconds for a usual loop). */
  load(bytes: LoopBytes, options?: LoadOptions): Promise<Loop>;
  /** What the headers of a loop file say, without decoding; sliceCount need not be what an open
   * loop counts. Some microseconds, for lists of many files. */
  readInfo(bytes: LoopBytes): Promise<LoopInfo>;
  /** Decodes a loop for a preview node whose context runs at `sampleRate`. */
  preparePreview(bytes: LoopBytes, sampleRate: number, options?: LoadOptions): Promise<PreviewImage>;
};

export interface PreviewNodeOptions {
  /** The processor's file, for programs that put it elsewhere than beside this file. */
  processorUrl?: URL | string;
}

/**
 * Plays loops in an audio context, one after another in the same node, for as long as the node
 * lives. Made by createPreviewNode. The library is compiled in the audio thread's scope before the
 * promise resolves, loops are decoded outside of the audio thread, and playing makes no garbage
 * there. Stereo.
 */
export interface PreviewNode {
  /** The node in the graph. */
  readonly node: AudioWorkletNode;
  readonly context: BaseAudioContext;
  /** Of the loop that is loaded; null before the first. */
  readonly info: LoopInfo | null;
  /** Whether it was started and not stopped since. */
  readonly running: boolean;
  /**
   * Beats per minute, 20 to 450, also while it plays; k-rate. A new loop sets it to the loop's
   * stored tempo unless `load` is told to keep it. Automation is followed in steps of half a beat
   * per minute, since the loop moves in blocks of 64 frames.
   */
  readonly tempo: AudioParam;

  /** Takes another loop in place of the present one, which fades out. A running node plays on with
   * the new one from its start. Resolves when the new loop is in place. */
  load(source: LoopBytes | PreviewImage, options?: { keepTempo?: boolean }): Promise<void>;
  /** From the loop's start, at a time of the context or at once. A running loop starts over. */
  start(when?: number): void;
  /** Fades out, at a time of the context or at once. */
  stop(when?: number): void;
  /** The same as setting tempo.value, or tempo.setValueAtTime. */
  setTempo(tempo: number, when?: number): void;
  /** Where the loop is, in quarter notes from its start, at a time of the context (now by default);
   * null when it does not run. For drawing: right to some milliseconds, however long it plays. */
  getPosition(time?: number): number | null;
  connect(destination: AudioNode): AudioNode;
  disconnect(): void;
  /** Ends the node and frees its memory. A second call does nothing. */
  close(): void;
}

/** Makes a node for `context`, whose rate becomes the output rate, and loads a first loop if one is
 * given. Call it before sound starts and keep the node: it is made for use again. */
export function createPreviewNode(
  context: BaseAudioContext,
  source?: LoopBytes | PreviewImage | null,
  options?: PreviewNodeOptions,
): Promise<PreviewNode>;
