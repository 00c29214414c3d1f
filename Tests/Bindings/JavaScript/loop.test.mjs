import assert from 'node:assert/strict';
import { test } from 'node:test';

import { LoopLibrary, constants, failsWith, getInstance, listenings, readLoop } from './package.mjs';

const drums = readLoop('drums.lop2');

test('tells what the file holds', async () => {
  const loop = await LoopLibrary.load(readLoop('texts.lop2'));
  assert.deepEqual(loop.info, {
    channels: 2, sampleRate: 44100, sliceCount: 8, storedTempo: 120, loopTempo: 120, ppqLength: 61440,
    timeSignature: [4, 4], bitDepth: 24, quarters: 4, beats: 4, seconds: 2,
  });
  assert.deepEqual(loop.creatorTexts, ['Kicks & hats', '', 'one\u2029two', 'grüß', '\u{1F941}']);
  assert.deepEqual(loop.slices.map(({ index, quarter, ppqPosition }) => [index, quarter, ppqPosition / constants.PPQ]),
    Array.from({ length: 8 }, (_, at) => [at, at / 2, at / 2]));
  assert.equal(loop.outputSampleRate, 44100);
  // The file's own count of slices, which this one leaves at 0.
  assert.deepEqual(await LoopLibrary.readInfo(readLoop('texts.lop2')), { ...loop.info, sliceCount: 0 });
  loop.close();
  for (const name of ['drums.tsl', 'drums.lop']) {
    const legacy = await LoopLibrary.load(readLoop(name));
    const { info, creatorTexts } = legacy;
    assert.deepEqual([info.channels, info.bitDepth, info.sliceCount, creatorTexts], [1, 16, 8, null], name);
    legacy.close();
  }
  assert.match(LoopLibrary.version, /^\d+\.\d+\.\d+$/);
  assert.equal((await getInstance()).version, LoopLibrary.version);
});

test('renders slices at any rate, and keeps the output rate', async () => {
  const loop = await LoopLibrary.load(drums, { sampleRate: 48000 });
  const [{ frameCount }] = loop.slices;
  const audio = loop.renderSlice(0);
  assert.equal(audio.length, 2);
  assert.ok(audio.every((plane) => plane instanceof Float32Array && plane.length === frameCount));
  assert.ok(audio[0].some((sample) => Math.abs(sample) > 0.1));
  const double = loop.renderSlice(0, 96000);
  assert.ok(Math.abs(double[0].length - 2 * frameCount) <= 2);
  assert.equal(loop.outputSampleRate, 48000);
  assert.deepEqual(loop.renderSlice(0), audio);
  loop.setOutputSampleRate(96000);
  assert.equal(loop.slices[0].frameCount, double[0].length);
  loop.close();
});

test('previews in batches of any size', async () => {
  const pull = async (...batches) => {
    const loop = await LoopLibrary.load(drums);
    loop.setPreviewTempo(97.5);
    loop.startPreview();
    const left = new Float32Array(20000);
    const right = new Float32Array(20000);
    for (let at = 0, turn = 0; at < 20000; ++turn) {
      const end = Math.min(at + batches[turn % batches.length], 20000);
      loop.renderPreviewInto(left.subarray(at, end), right.subarray(at, end));
      at = end;
    }
    loop.close();
    return [left, right];
  };
  const whole = await pull(20000);
  assert.deepEqual(await pull(777, 1100, 64), whole);
  const loop = await LoopLibrary.load(drums);
  loop.setPreviewTempo(97.5);
  loop.startPreview();
  assert.deepEqual(loop.renderPreview(20000), whole);
  loop.close();
});

test('takes bytes in each form and leaves them alone', async () => {
  const padded = new Uint8Array(drums.length + 7).fill(9);
  padded.set(drums, 3);
  const before = padded.slice();
  for (const bytes of [drums, drums.slice().buffer, padded.subarray(3, 3 + drums.length), Buffer.from(drums)]) {
    const loop = await LoopLibrary.load(bytes);
    assert.equal(loop.info.sliceCount, 8);
    loop.close();
  }
  assert.deepEqual(padded, before);
  await assert.rejects(LoopLibrary.load('drums.lop2'), TypeError);
});

test('refuses what is not a whole loop file', async () => {
  const changed = (change) => change(drums.slice());
  const rows = [
    ['nothing', new Uint8Array(0), 'InvalidArgument', 'InvalidArgument'],
    ['a byte', new Uint8Array(1), 'FileCorrupt', 'FileCorrupt'],
    ['text', new TextEncoder().encode('no loop at all, just text'), 'FileCorrupt', 'FileCorrupt'],
    ['zeros', new Uint8Array(1 << 16), 'FileCorrupt', 'FileCorrupt'],
    ['an unknown kind', changed((bytes) => { bytes[0] ^= 1; return bytes; }), 'FileCorrupt', 'FileCorrupt'],
    ['a chunk of 4 GB', changed((bytes) => bytes.fill(255, 16, 20)), 'FileCorrupt', 'FileCorrupt'],
    ['a newer version', readLoop('newer.lop2'), 'FileTooNew', 'FileTooNew'],
    ['no length', readLoop('nolength.tsl'), 'ZeroLoopLength', 'ZeroLoopLength'],
  ];
  for (const [name, bytes, loadResult, infoResult] of rows) {
    await assert.rejects(LoopLibrary.load(bytes), failsWith(loadResult), name);
    await assert.rejects(LoopLibrary.readInfo(bytes), failsWith(infoResult), name);
  }
  for (const name of ['drums.lop2', 'drums.tsl', 'drums.lop']) {
    const whole = readLoop(name);
    for (let size = 1; size < whole.length; size += 1 + (size >> 3)) {
      await assert.rejects(LoopLibrary.load(whole.subarray(0, size)), failsWith('FileCorrupt'), `${name} ${size}`);
    }
  }
});

test('says what a call does wrong', async () => {
  const loop = await LoopLibrary.load(drums);
  const rows = [
    [() => loop.renderSlice(8), 'InvalidSlice'],
    [() => loop.renderSlice(-1), 'InvalidSlice'],
    [() => loop.renderSlice(0.5), 'InvalidSlice'],
    [() => loop.renderSlice(2 ** 32), 'InvalidSlice'],
    [() => loop.renderSlice(0, 11024), 'InvalidSampleRate'],
    [() => loop.setOutputSampleRate(1000001), 'InvalidSampleRate'],
    [() => loop.setOutputSampleRate(44100.5), 'InvalidSampleRate'],
    [() => loop.setPreviewTempo(19.999), 'InvalidTempo'],
    [() => loop.setPreviewTempo(450.001), 'InvalidTempo'],
    [() => loop.setPreviewTempo(NaN), 'InvalidTempo'],
    [() => loop.setPreviewTempo(Infinity), 'InvalidTempo'],
    [() => loop.renderPreview(65537), 'InvalidArgument'],
    [() => loop.renderPreview(-1), 'InvalidArgument'],
    [() => loop.renderPreviewInto(new Float32Array(2), new Float32Array(3)), 'InvalidArgument'],
    [() => loop.stopPreview(), 'PreviewNotRunning'],
    [() => (loop.startPreview(), loop.startPreview()), 'PreviewRunning'],
    [() => loop.setOutputSampleRate(48000), 'PreviewRunning'],
    [() => loop.renderSlice(0, 48000), 'PreviewRunning'],
  ];
  for (const [call, resultName] of rows) {
    assert.throws(call, failsWith(resultName), String(call));
  }
  assert.equal(loop.renderSlice(7).length, 2);
  await assert.rejects(LoopLibrary.load(drums, { sampleRate: 1 }), failsWith('InvalidSampleRate'));
  loop.close(); // with a running preview
  loop.close();
  for (const call of [() => loop.info, () => loop.slices, () => loop.creatorTexts, () => loop.renderSlice(0),
    () => loop.startPreview(), () => loop.renderPreview(1), () => loop.setOutputSampleRate(44100)]) {
    assert.throws(call, failsWith('InvalidHandle'), String(call));
  }
});

test('reports progress, which may stop the load', async () => {
  const seen = [];
  (await LoopLibrary.load(drums, { onProgress: (percent) => void seen.push(percent) })).close();
  assert.equal(seen.at(-1), 100);
  assert.deepEqual(seen, [...seen].sort((a, b) => a - b));
  await assert.rejects(LoopLibrary.load(drums, { onProgress: () => false }), failsWith('Aborted'));
  const thrown = new Error('no more');
  await assert.rejects(LoopLibrary.load(drums, { onProgress: () => { throw thrown; } }), thrown);
  // In a progress function other loops may be asked.
  const other = await LoopLibrary.load(drums);
  (await LoopLibrary.load(drums, { onProgress: () => void other.slices })).close();
  other.close();
});

test('gives memory back: 10 000 loads', async () => {
  const instance = await getInstance();
  const shortest = readLoop('shortest.lop2');
  const damaged = drums.subarray(0, drums.length - 100);
  const turn = async () => {
    const loop = await LoopLibrary.load(shortest);
    loop.startPreview();
    loop.renderPreview(64);
    loop.renderSlice(0);
    loop.close();
    await assert.rejects(LoopLibrary.load(damaged), failsWith('FileCorrupt'));
  };
  for (let at = 0; at < 50; ++at) {
    await turn();
  }
  const end = instance.exports.getMemoryEnd();
  for (let at = 0; at < 10000; ++at) {
    await turn();
  }
  assert.equal(instance.exports.getMemoryEnd(), end);
  // Nor does a giant that is no loop leave its size behind.
  await assert.rejects(LoopLibrary.readInfo(new Uint8Array(64 << 20)), failsWith('FileCorrupt'));
  assert.ok((await getInstance()).buffer.byteLength < 32 << 20);
});

test('forgets loops that nobody holds', { skip: globalThis.gc === undefined }, async () => {
  const instance = await getInstance();
  const load = async () => void (await LoopLibrary.load(drums)).renderPreview(64);
  for (let at = 0; at < 20; ++at) {
    await load();
  }
  const collected = async () => {
    globalThis.gc();
    await new Promise((resolve) => setTimeout(resolve, 10));
  };
  await collected();
  const end = instance.exports.getMemoryEnd();
  for (let at = 0; at < 60; ++at) {
    await load();
    if (at % 10 === 9) {
      await collected();
    }
  }
  assert.equal(instance.exports.getMemoryEnd(), end);
});
