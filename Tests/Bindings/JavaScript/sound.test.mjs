import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

import { LoopLibrary, listenings } from './package.mjs';

// The words that a native build wrote (Tests/Host/SameSoundTest.cpp): every 311th sample of the preview
// and of all slices of eleven loops, and a hash of all of them.
const reference = readFileSync(new URL('../../Host/Reference/Sound.f32', import.meta.url));
const soundHash = 3767155872923585981n;

// FNV-1a with 64 bits in two halves; big integers would take a minute.
class Hash {
  #high = 0xcbf29ce4;
  #low = 0x84222325;

  add(word) {
    const low = (this.#low ^ word) >>> 0;
    // Times 0x100000001b3: the low half times 0x1b3, and what goes into the high half.
    const part = (low & 0xffff) * 0x1b3;
    const upper = (low >>> 16) * 0x1b3 + Math.floor(part / 0x10000);
    const carry = Math.floor(upper / 0x10000);
    this.#low = (((upper & 0xffff) << 16) | (part & 0xffff)) >>> 0;
    this.#high = (Math.imul(this.#high, 0x1b3) + (low << 8) + carry) >>> 0;
  }

  get value() {
    return (BigInt(this.#high) << 32n) | BigInt(this.#low);
  }
}

test('loops sound as they do natively, sample by sample', async () => {
  const hash = new Hash();
  let at = 0;
  for (const { name, bytes, rate } of listenings) {
    const loop = await LoopLibrary.load(bytes);
    loop.setOutputSampleRate(rate);
    loop.setPreviewTempo(104.729);
    loop.startPreview();
    const left = new Float32Array(60000);
    const right = new Float32Array(60000);
    for (let done = 0; done < 60000; done += 1009) {
      const end = Math.min(done + 1009, 60000);
      loop.renderPreviewInto(left.subarray(done, end), right.subarray(done, end));
    }
    const planes = [left, right, ...loop.slices.flatMap(({ index }) => loop.renderSlice(index))];
    let differing = 0;
    for (const plane of planes) {
      const words = new Uint32Array(plane.buffer);
      words.forEach((word) => hash.add(word));
      for (let frame = 100; frame < words.length; frame += 311, at += 4) {
        differing += words[frame] !== reference.readUInt32LE(at) ? 1 : 0;
      }
    }
    assert.equal(differing, 0, name);
    loop.close();
  }
  assert.equal(listenings.length, 11);
  assert.equal(at, reference.length);
  assert.equal(hash.value, soundHash);
});
