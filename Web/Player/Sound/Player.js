import { createPreviewNode } from '../looplibrary/index.js';
import { SliceVoices } from './SliceVoices.js';

const kVolumeGlide = 0.02; // seconds
const kWakePatience = 3000; // milliseconds

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
  #isPlaying = false; // or waits for the browser's leave to

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
    return this.#isPlaying;
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

  /** Starts from the loop's start, at a time of the context or at once. Rejects with NoSound when the browser
   * does not let the page sound. A stop meanwhile holds. */
  async play(when) {
    this.#isPlaying = true;
    try {
      await this.#wake();
    } catch (error) {
      if (this.#isPlaying) {
        this.#isPlaying = false;
        throw error;
      }
    }
    if (this.#isPlaying) {
      this.#preview.start(when);
    }
  }

  stop(when) {
    this.#isPlaying = false;
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
    this.#wake().catch(() => {}); // play says so
    this.#voices.play(index, level);
  }

  /** Quarter notes from the loop's start of what is heard now; null when the loop does not play. */
  getHeardPosition() {
    const { currentTime, outputLatency = 0 } = this.#context;
    return this.#preview?.getPosition(currentTime - outputLatency) ?? null;
  }

  // Browsers keep a context asleep until the person does something, and one that they do not trust for ever.
  async #wake() {
    if (this.#context.state === 'running' || this.#context instanceof OfflineAudioContext) {
      return;
    }
    let timer;
    const refusal = new Promise((_, reject) => {
      timer = setTimeout(reject, kWakePatience, new Error('it stayed asleep'));
    });
    try {
      await Promise.race([this.#context.resume(), refusal]);
    } catch (error) {
      throw Object.assign(new Error(error.message), { name: 'NoSound' });
    } finally {
      clearTimeout(timer);
    }
  }

  // One node for all loops, made when the first arrives.
  async #makePreview() {
    if (!this.#context.audioWorklet) {
      throw Object.assign(new Error('no audio worklets'), { name: 'NoAudioWorklet' });
    }
    this.#making ??= createPreviewNode(this.#context, null, { processorUrl: this.#processorUrl })
      .catch((error) => {
        this.#making = null; // the next loop tries again
        throw error;
      });
    if (this.#preview === null) {
      this.#preview = await this.#making;
      this.#preview.connect(this.#volume);
    }
    return this.#preview;
  }
}
