// As much of Web Audio as a preview node needs, so that the processor runs under Node as it is: its
// scope is a module context of its own with the names of an audio worklet, and its port is a real
// message channel. A test says when a quantum is rendered.
import { readFileSync } from 'node:fs';
import vm from 'node:vm';
import { MessageChannel } from 'node:worker_threads';

export const quantum = 128;

const ports = [];

/** An open port keeps a test's process alive: to be called after each test. */
export function closePorts() {
  ports.splice(0).forEach((port) => port.close());
}

class FakeAudioParam {
  value = 0;
  cancelScheduledValues() {}
  setValueAtTime(value) {
    this.value = value;
  }
}

export class FakeAudioContext {
  currentFrame = 0;
  state = 'running';
  nodes = [];
  modules = 0;
  audioWorklet = {
    addModule: async (url) => {
      ++this.modules;
      vm.runInContext(readFileSync(new URL(url), 'utf8'), this.scope);
    },
  };

  constructor(sampleRate) {
    this.sampleRate = sampleRate;
    const context = this;
    this.scope = vm.createContext({
      AudioWorkletProcessor: class {
        constructor({ port }) {
          this.port = port;
        }
      },
      registerProcessor: (name, Processor) => {
        context.Processor = Processor;
        context.name = name;
      },
      get currentFrame() {
        return context.currentFrame;
      },
    });
  }

  get currentTime() {
    return this.currentFrame / this.sampleRate;
  }

  /** Renders whole quanta of all nodes and returns their mix. */
  render(frames, eachQuantum = () => {}) {
    const mix = [new Float32Array(frames), new Float32Array(frames)];
    const output = [new Float32Array(quantum), new Float32Array(quantum)];
    for (let at = 0; at < frames; at += quantum) {
      eachQuantum(at);
      for (const node of this.nodes) {
        output.forEach((plane) => plane.fill(0));
        node.process(output);
        output.forEach((plane, channel) => {
          for (let frame = 0; frame < quantum; ++frame) {
            mix[channel][at + frame] += plane[frame];
          }
        });
      }
      this.currentFrame += quantum;
    }
    return mix;
  }

  /** Until messages that were posted before have arrived. */
  async settle() {
    for (let turn = 0; turn < 5; ++turn) {
      await new Promise((resolve) => setTimeout(resolve, 1));
    }
  }
}

class FakeAudioWorkletNode {
  constructor(context, name) {
    if (name !== context.name) {
      throw new Error(`no processor ${name}`);
    }
    const { port1, port2 } = new MessageChannel();
    ports.push(port1);
    this.port = port1;
    this.processor = new context.Processor({ port: port2 });
    this.parameters = new Map(context.Processor.parameterDescriptors.map(({ name: parameter, defaultValue }) => {
      const param = new FakeAudioParam();
      param.value = defaultValue;
      return [parameter, param];
    }));
    this.values = { tempo: new Float32Array(1) };
    this.inputs = [];
    this.lives = true;
    context.nodes.push(this);
  }

  process(output) {
    if (this.lives) {
      this.values.tempo[0] = this.parameters.get('tempo').value;
      this.outputs = [output];
      this.lives = this.processor.process(this.inputs, this.outputs, this.values);
    }
  }

  connect(destination) {
    return destination;
  }

  disconnect() {}
}

globalThis.AudioWorkletNode = FakeAudioWorkletNode;
