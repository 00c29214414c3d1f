import { createPreviewNode } from '../looplibrary/index.js';
import { SliceVoices } from './SliceVoices.js';

const kVolumeGlide = 0.02; // seconds

/**
 * What sounds: the preview of one loop at a tempo, its slices, and the volume of both. Tempos are in
 * beats per minute.
 */
export class Player {
  #context;
  #volume;
  #voices;
  #preview = null;
  #making = null;
  #processorUrl;

  /**
   * @param {BaseAudioContext} context
   * @param {string} [processorUrl] the preview's audio worklet, if it is not where the package has it
   */
  constructor(context, processorUrl) {
    this.#context = context;
    this.#processorUrl = processorUrl;
    this.#volume = new GainNode(context);
    this.#volume.connect(context.destination);
    this.#voices = new SliceVoices(context, this.#volume);
  }

  get sampleRate() {
    return this.#context.sampleRate;
  }

  get context() {
    return this.#context;
  }

  /** Where all sound passes last. */
  get output() {
    return this.#volume;
  }

  get isPlaying() {
    return this.#preview?.running ?? false;
  }

  /**
   * Takes a loop that the worker opened, in place of the present one; a running preview goes on with
   * the new loop from its start.
   *
   * @param {{image: object, audio: Float32Array[][]}} opened
   * @param {number} tempo
   */
  async load(opened, tempo) {
    const preview = await this.#makePreview();
    preview.setTempo(tempo);
    await preview.load(opened.image, { keepTempo: true });
    this.#voices.load(opened.audio);
  }

  /** Starts from the loop's start, at a time of the context or at once. */
  async play(when) {
    if (this.#context.state === 'suspended' && 'resume' in this.#context && !this.#isOffline) {
      await this.#context.resume();
    }
    this.#preview.start(when);
  }

  stop(when) {
    this.#preview?.stop(when);
    this.#voices.stopAll();
  }

  setTempo(tempo, when) {
    this.#preview?.setTempo(tempo, when);
  }

  /** Full scale is 1. */
  setVolume(gain) {
    const now = this.#context.currentTime;
    const parameter = this.#volume.gain;
    parameter.cancelScheduledValues(now);
    parameter.setValueAtTime(parameter.value, now);
    parameter.linearRampToValueAtTime(gain, now + kVolumeGlide);
  }

  /** Sounds a slice at once. `level` is 1 for full. */
  playSlice(index, level = 1) {
    if (this.#context.state === 'suspended' && !this.#isOffline) {
      this.#context.resume();
    }
    this.#voices.play(index, level);
  }

  /** Quarter notes from the loop's start of what is heard now; null when the loop does not play. */
  getHeardPosition() {
    const { currentTime, outputLatency = 0 } = this.#context;
    return this.#preview?.getPosition(currentTime - outputLatency) ?? null;
  }

  get #isOffline() {
    return this.#context instanceof OfflineAudioContext;
  }

  // One node for all loops, made when the first arrives.
  async #makePreview() {
    if (!this.#context.audioWorklet) {
      throw Object.assign(new Error('no audio worklets'), { name: 'NoAudioWorklet' });
    }
    this.#making ??= createPreviewNode(this.#context, null,
      { processorUrl: this.#processorUrl });
    if (this.#preview === null) {
      this.#preview = await this.#making;
      this.#preview.connect(this.#volume);
    }
    return this.#preview;
  }
}
