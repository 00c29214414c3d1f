const kFadeSeconds = 0.004;

/** Single slices, played by hand: a slice that is struck again ends its own sound first. */
export class SliceVoices {
  #context;
  #output;
  #buffers = [];
  #sounding = new Map(); // slice to {source, gain}

  /**
   * @param {BaseAudioContext} context
   * @param {AudioNode} output
   */
  constructor(context, output) {
    this.#context = context;
    this.#output = output;
  }

  /** @param {Float32Array[][]} slices planes of each at the context's rate */
  load(slices) {
    this.stopAll();
    this.#buffers = slices.map((planes) => this.#bufferOf(planes));
  }

  play(index, level) {
    const buffer = this.#buffers[index];
    if (!buffer) {
      return;
    }
    this.#fade(index);
    const source = new AudioBufferSourceNode(this.#context, { buffer });
    const gain = new GainNode(this.#context, { gain: level });
    const voice = { source, gain };
    source.connect(gain).connect(this.#output);
    source.onended = () => {
      gain.disconnect();
      if (this.#sounding.get(index) === voice) {
        this.#sounding.delete(index);
      }
    };
    source.start();
    this.#sounding.set(index, voice);
  }

  stopAll() {
    for (const index of this.#sounding.keys()) {
      this.#fade(index);
    }
  }

  #fade(index) {
    const voice = this.#sounding.get(index);
    if (voice) {
      const now = this.#context.currentTime;
      voice.gain.gain.setTargetAtTime(0, now, kFadeSeconds / 4);
      voice.source.stop(now + kFadeSeconds);
      this.#sounding.delete(index);
    }
  }

  #bufferOf(planes) {
    const length = planes[0].length;
    if (length === 0) {
      return null;
    }
    const { sampleRate } = this.#context;
    const buffer = new AudioBuffer({ length, numberOfChannels: planes.length, sampleRate });
    planes.forEach((plane, channel) => buffer.copyToChannel(plane, channel));
    return buffer;
  }
}
