// What the page plays, sample by sample beside the native library.

import assert from 'node:assert/strict';
import { describe, it } from 'node:test';

import { nativePreview } from './loopFiles.mjs';
import { page } from './playerPage.mjs';

const kSeconds = 10;
const kQuantum = 128;

// In the page. The frame where what was recorded is first not silent, against the same of the
// native sound, and the first frame at which the two then differ, or -1.
const kCompare = `
  const compare = async (left, right, reference) => {
    const native = new Float32Array(await (await fetch(reference, { cache: 'no-store' })).arrayBuffer());
    const frames = native.length / 2;
    const firstSound = (plane) => plane.findIndex((value) => value !== 0);
    const offset = firstSound(left) - firstSound(native);
    const count = Math.min(frames, left.length - offset);
    let differs = -1;
    let loudest = 0;
    for (let i = Math.max(0, -offset); i < count && differs < 0; ++i) {
      loudest = Math.max(loudest, Math.abs(native[i]));
      if (left[i + offset] !== native[i] || right[i + offset] !== native[frames + i]) {
        differs = i;
      }
    }
    const values = [left[differs + offset], right[differs + offset], native[differs],
      native[frames + differs]].map(String);
    return { offset, count, differs, loudest, values };
  };`;

// A player of its own in an OfflineAudioContext, which plays a file from its first frame on.
const kPlayOffline = `async (address, reference, rate, frames, tempos) => {
  ${kCompare}
  const { LoopClient } = await import(new URL('/Library/LoopClient.js', location));
  const { Player } = await import(new URL('/Sound/Player.js', location));
  const worker = new Worker('/Library/loopWorker.js', { type: 'module' });
  const file = new File([await (await fetch(address)).blob()], 'loop');
  const loop = await new LoopClient(worker).open(file, rate);
  const context = new OfflineAudioContext(2, frames, rate);
  const player = new Player(context);
  await player.load(loop, tempos[0][1]);
  await player.play(0);
  for (const [frame, tempo] of tempos.slice(1)) {
    player.setTempo(tempo, (frame - 0.5) / rate); // times round, and quanta begin on frames
  }
  const sound = await context.startRendering();
  worker.terminate();
  return compare(sound.getChannelData(0), sound.getChannelData(1), reference);
}`;

async function playOffline(name, rate, tempos) {
  const frames = Math.ceil((kSeconds * rate) / kQuantum) * kQuantum;
  nativePreview(page.file(name), page.file('native.f32'), rate, frames, tempos);
  return page.browser.run(kPlayOffline, `/files/${name}`, '/files/native.f32', rate, frames, tempos);
}

function assertSame({ offset, count, differs, loudest, values }, rate) {
  assert.equal(differs, -1, `differs at frame ${differs}, moved by ${offset}: ${values}`);
  assert.ok(offset >= 0 && count >= (kSeconds - 1) * rate, `offset ${offset}, ${count} frames`);
  assert.ok(loudest > 0.1, 'silence');
}

describe('sound', () => {
  for (const [name, rate, tempos] of [
    ['drums.lop2', 44100, [[0, 120]]],
    ['break.lop2', 48000, [[0, 101.5]]],
    ['drums.tsl', 48000, [[0, 87.25]]],
    ['drums.lop', 96000, [[0, 140]]],
    ['break.lop2', 44100, [[0, 93], [44100 - (44100 % kQuantum), 150], [kQuantum * 1500, 60]]],
  ]) {
    const speeds = tempos.map(([, tempo]) => tempo).join(', then ');
    it(`plays ${name} at ${rate} Hz and ${speeds} BPM as the native library does`, async () => {
      await page.open();
      assertSame(await playOffline(name, rate, tempos), rate);
    });
  }

  it('sounds so when a person plays it', async () => {
    await page.openWith('break.lop2');
    const rate = await page.browser.run(`async () =>
      (await import(new URL('/main.js', location))).player.sampleRate`);
    const frames = kSeconds * rate;
    nativePreview(page.file('break.lop2'), page.file('native.f32'), rate, frames, [[0, 93]]);
    await page.browser.run(`async (frames) => {
      const { player } = await import(new URL('/main.js', location));
      await player.context.audioWorklet.addModule('/test/recorder.js');
      const recorder = new AudioWorkletNode(player.context, 'recorder', { numberOfOutputs: 0 });
      window.recorded = [];
      recorder.port.onmessage = ({ data }) => window.recorded.push(data);
      player.output.connect(recorder);
      const volume = document.querySelector('#volume');
      volume.value = 1;
      volume.dispatchEvent(new Event('input'));
    }`, frames);
    // The volume glides there, once the context runs.
    await page.browser.until(`async () => {
      const { player } = await import(new URL('/main.js', location));
      await player.context.resume();
      return player.output.gain.value === 1;
    }`);
    await page.browser.press(' ');
    await page.browser.until(`async (frames) => window.recorded
      .findLastIndex(([left]) => left.some((value) => value !== 0)) * ${kQuantum} > frames`,
    frames + kQuantum);
    const result = await page.browser.run(`async (reference) => {
      ${kCompare}
      const [left, right] = [0, 1].map((channel) => {
        const plane = new Float32Array(window.recorded.length * ${kQuantum});
        window.recorded.forEach((part, index) => plane.set(part[channel], index * ${kQuantum}));
        return plane;
      });
      return compare(left, right, reference);
    }`, '/files/native.f32');
    assertSame(result, rate);
    await page.browser.press(' ');
    assert.equal(await page.browser.run('async () => document.querySelector("#play").ariaLabel'),
      'Play');
  });
});
