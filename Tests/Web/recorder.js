// An audio worklet that keeps what passes, for tests: posts each quantum's two channels.
registerProcessor('recorder', class extends AudioWorkletProcessor {
  process([input]) {
    if (input.length > 0) {
      this.port.postMessage([input[0].slice(), (input[1] ?? input[0]).slice()]);
    }
    return true;
  }
});
