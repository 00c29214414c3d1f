import assert from 'node:assert/strict';
import { afterEach, test } from 'node:test';

import { FakeAudioContext, closePorts, quantum } from './audio-context.mjs';
import { LoopLibrary, createPreviewNode, failsWith, readLoop } from './package.mjs';

const drums = readLoop('drums.lop2');
const rate = 48000;
const tenSeconds = Math.ceil((10 * rate) / quantum) * quantum;

afterEach(closePorts);

/** What the library itself renders from a start on, with things done to the loop before given frames. */
async function expected(bytes, frames, steps = []) {
  const loop = await LoopLibrary.load(bytes, { sampleRate: rate });
  const planes = [new Float32Array(frames), new Float32Array(frames)];
  const render = (from, to) => {
    for (let at = from; at < to; at += 60000) {
      const end = Math.min(at + 60000, to);
      loop.renderPreviewInto(planes[0].subarray(at, end), planes[1].subarray(at, end));
    }
  };
  let done = 0;
  let starts = false;
  for (const [frame, step] of steps) {
    if (frame > 0 && !starts) {
      starts = true;
      loop.startPreview();
    }
    render(done, frame);
    step(loop);
    done = frame;
  }
  if (!starts) {
    loop.startPreview();
  }
  render(done, frames);
  loop.close();
  return planes;
}

const tempo = (value) => (loop) => loop.setPreviewTempo(value);

/** Where within a range a plane is likest to a part, on the grid of 64 frames. */
function placeOf(part, plane, from, to) {
  let place = 0;
  let least = Infinity;
  for (let at = Math.ceil(from / 64) * 64; at < to; at += 64) {
    let difference = 0;
    for (let frame = 0; frame < part.length && difference < least; frame += 3) {
      difference += Math.abs(part[frame] - plane[at + frame]);
    }
    [place, least] = difference < least ? [at, difference] : [place, least];
  }
  return place;
}

const isSilent = (plane) => plane.every((sample) => Math.abs(sample) < 1e-4);

test('plays what the library renders, through changes of tempo', async () => {
  const context = new FakeAudioContext(rate);
  const preview = await createPreviewNode(context, drums);
  assert.equal(preview.info.sliceCount, 8);
  assert.equal(preview.tempo.value, 120);
  assert.ok(context.render(512).every(isSilent), 'silent before it starts');
  preview.start();
  await context.settle();
  const jumps = [[240000, 97.5], [320000, 180]];
  const heard = context.render(tenSeconds, (at) => {
    const jump = jumps.find(([frame]) => frame === at);
    if (jump) {
      preview.setTempo(jump[1]);
    }
  });
  assert.deepEqual(heard, await expected(drums, tenSeconds, jumps.map(([frame, value]) => [frame, tempo(value)])));
  preview.close();
});

test('starts and stops at a frame, and starts over', async () => {
  const context = new FakeAudioContext(rate);
  const preview = await createPreviewNode(context, drums);
  preview.setTempo(90);
  preview.start(1000 / rate);
  await context.settle();
  const [left] = context.render(quantum * 80);
  const before = left.length - 1000;
  const [whole] = await expected(drums, before + 64 + 8000, [
    [0, tempo(90)],
    [before, (loop) => loop.stopPreview()],
    [before + 64, (loop) => loop.startPreview()],
  ]);
  assert.ok(left.subarray(0, 1000).every((sample) => sample === 0));
  assert.deepEqual(left.slice(1000), whole.slice(0, before));
  assert.ok(preview.running);
  await context.settle();
  const quarter = preview.getPosition();
  assert.ok(Math.abs(quarter - (before / rate) * 1.5) < 0.005, String(quarter));

  preview.start();
  await context.settle();
  assert.deepEqual(context.render(quantum * 80)[0].slice(0, 8064), whole.slice(before));

  preview.stop((context.currentFrame + 300) / rate);
  await context.settle();
  context.render(quantum * 1000);
  assert.ok(isSilent(context.render(quantum * 10)[0]));
  await context.settle();
  assert.equal(preview.getPosition(), null);
  assert.equal(preview.running, false);
  preview.start();
  await context.settle();
  assert.ok(!isSilent(context.render(quantum * 80)[0]), 'a stopped node starts again');
  preview.close();
});

test('knows where the loop is, however long it plays and whatever the tempo was', async () => {
  const changes = [...Array(40).keys()].map((at) => [120 * rate + at * 25600, 60 + ((at * 37) % 140) + 0.7]);
  for (const [name, tempos] of [
    ['drums.lop2', [[0, 97]]],
    ['drums.tsl', [[0, 133.3]]],
    ['drums.lop2', [[0, 80], ...changes]],
  ]) {
    const context = new FakeAudioContext(rate);
    const bytes = readLoop(name);
    const preview = await createPreviewNode(context, bytes);
    preview.start();
    const last = tempos.at(-1)[1];
    for (const [at, value] of tempos) {
      await context.settle();
      context.render(at - context.currentFrame);
      await context.settle();
      const before = preview.getPosition();
      preview.setTempo(value);
      context.render(quantum);
      await context.settle();
      const step = (preview.getPosition() - before + preview.info.quarters) % preview.info.quarters;
      assert.ok(at === 0 || step < 0.02 || step > preview.info.quarters - 0.01, `${step} quarters at ${at}`);
    }
    const [heard] = context.render(120 * rate - quantum);
    await context.settle();
    // Where the same sounds in a loop that has played at this tempo alone, from its third pass on.
    const { beats, quarters } = preview.info;
    const pass = Math.round((beats * 60 * rate) / last);
    const [alone] = await expected(bytes, 5 * pass, [[0, tempo(last)]]);
    const third = placeOf(alone.subarray(0, 4096), alone, 2 * pass - 640, 2 * pass + 640);
    const end = heard.subarray(-16384);
    const place = (placeOf(end, alone, third, third + pass) - third + end.length) / pass;
    const away = (preview.getPosition() / quarters - place) * pass;
    const missed = (away - Math.round(away / pass) * pass) / rate;
    assert.ok(Math.abs(missed) < 0.003, `${name} at ${last}: ${1000 * missed} ms`);
    preview.close();
  }
});

test('takes other loops in place of the present one', async () => {
  const context = new FakeAudioContext(rate);
  const preview = await createPreviewNode(context);
  assert.equal(preview.info, null);
  preview.start();
  await context.settle();
  assert.ok(context.render(512).every(isSilent), 'nothing is loaded');
  preview.stop();
  await context.settle();
  context.render(512);

  const texts = readLoop('texts.lop2');
  for (const bytes of [drums, readLoop('drums.tsl'), texts, drums, texts]) {
    await preview.load(bytes);
    preview.start();
    await context.settle();
    const frames = quantum * 200;
    assert.deepEqual(context.render(frames), await expected(bytes, frames));
    preview.stop();
    await context.settle();
    context.render(quantum * 2000);
  }
  assert.equal(context.modules, 1);
  assert.equal(context.nodes.length, 1);

  // A running one goes on with the new loop from its start, at the tempo that it is told to keep.
  preview.start();
  await context.settle();
  context.render(quantum * 100);
  preview.setTempo(150);
  context.render(quantum * 100);
  const image = await LoopLibrary.preparePreview(drums, rate);
  await preview.load(structuredClone(image, { transfer: [image.memory] }), { keepTempo: true });
  const heard = context.render(tenSeconds)[0];
  const [alone] = await expected(drums, tenSeconds, [[0, tempo(150)]]);
  assert.ok(heard.some((sample, at) => sample !== alone[at]), 'the old loop fades out');
  assert.deepEqual(heard.slice(rate * 3), alone.slice(rate * 3));
  preview.close();
});

test('says what is wrong, and stays as it was', async () => {
  const context = new FakeAudioContext(rate);
  await assert.rejects(createPreviewNode(context, new Uint8Array(100)), failsWith('FileCorrupt'));
  const preview = await createPreviewNode(context, drums);
  await assert.rejects(preview.load(drums.subarray(0, 900)), failsWith('FileCorrupt'));
  await assert.rejects(LoopLibrary.preparePreview(drums, 5), failsWith('InvalidSampleRate'));
  await assert.rejects(preview.load(await LoopLibrary.preparePreview(drums, 44100)), RangeError);
  assert.equal(preview.info.sliceCount, 8);
  const broken = await createPreviewNode(context, drums);
  broken.node.onprocessorerror();
  await assert.rejects(broken.load(drums), /audio thread/);
  preview.close();
  preview.close();
  await assert.rejects(preview.load(drums), /closed/);
});

test('makes no garbage while it plays', { skip: globalThis.gc === undefined }, async () => {
  const context = new FakeAudioContext(rate);
  const preview = await createPreviewNode(context, drums);
  preview.start();
  await context.settle();
  const { process } = context.nodes[0].processor;
  const [processor] = context.nodes.map((node) => node.processor);
  const output = [[new Float32Array(quantum), new Float32Array(quantum)]];
  const parameters = { tempo: new Float32Array([120]) };
  const inputs = [];
  const run = (quanta) => {
    for (let at = 0; at < quanta; ++at) {
      process.call(processor, inputs, output, parameters);
    }
  };
  run(20000); // until the engine has compiled all of it
  globalThis.gc();
  const before = globalThis.process.memoryUsage().heapUsed;
  run(100000); // so many that what an engine allocates once does not count
  const bytesPerQuantum = (globalThis.process.memoryUsage().heapUsed - before) / 100000;
  assert.ok(bytesPerQuantum < 4, `${bytesPerQuantum} bytes`);
  preview.close();
});
