// Damaged files through the package and through the native library: the same answers, sample for sample.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { mkdirSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { LoopError, LoopLibrary } from '../../build/page/looplibrary/index.js';
import { getInstance } from '../../build/page/looplibrary/module.js';
import { makeLoops, nativeResults } from './loopFiles.mjs';

const kDamaged = 900;
const kMostMemory = 64 << 20; // bytes that the module may keep after any of these files

// The same numbers in every run.
let seed = 1;
function random(below) {
  seed = (Math.imul(seed, 1664525) + 1013904223) >>> 0;
  return Math.floor((seed / 2 ** 32) * below);
}

function writeDamaged(from, folder) {
  for (let turn = 0; turn < kDamaged; ++turn) {
    const bytes = readFileSync(join(from, `drums.${['lop2', 'tsl', 'lop'][turn % 3]}`));
    for (let damage = random(4); damage >= 0; --damage) {
      bytes[random(turn % 2 ? 400 : bytes.length)] = [0, 1, 127, 128, 255, random(256)][random(6)];
    }
    writeFileSync(join(folder, `damaged ${turn}`), turn % 7 ? bytes : bytes.subarray(0, random(bytes.length)));
  }
  // What fuzzers have found: a file behind two bytes that count the decisions before it.
  const found = fileURLToPath(new URL('../../Fuzz/Regressions/ContractFuzzer', import.meta.url));
  for (const name of readdirSync(found)) {
    const bytes = readFileSync(join(found, name));
    writeFileSync(join(folder, name), bytes.subarray(2 + (bytes.readUInt16BE(0) % 512)));
  }
}

async function outcome(action) {
  try {
    return await action();
  } catch (error) {
    assert.ok(error instanceof LoopError, error.stack);
    return error.result;
  }
}

const described = (info) => [info.channels, info.sampleRate, info.sliceCount, info.storedTempo, info.loopTempo,
  info.ppqLength, ...info.timeSignature, info.bitDepth];

function hashOf(planes) {
  const hash = createHash('sha1');
  planes.forEach((plane) => hash.update(new Uint8Array(plane.buffer)));
  return hash.digest('hex');
}

async function used(bytes) {
  const loop = await LoopLibrary.load(bytes);
  try {
    const short = loop.slices.findLast(({ frameCount }) => frameCount < 100000);
    loop.startPreview();
    return {
      info: described(loop.info),
      slices: loop.slices.map(({ ppqPosition, frameCount }) => [ppqPosition, frameCount]),
      texts: await outcome(() => loop.creatorTexts),
      preview: hashOf(loop.renderPreview(3000)),
      slice: short ? hashOf(loop.renderSlice(short.index)) : null,
    };
  } finally {
    loop.close();
  }
}

test('answers to damaged files as the native library does', async () => {
  const folder = mkdtempSync(join(tmpdir(), 'damaged-loops-'));
  try {
    const files = join(folder, 'files');
    mkdirSync(files);
    makeLoops(folder);
    writeDamaged(folder, files);
    const native = nativeResults(files);
    const counts = {};
    for (const name of readdirSync(files).sort()) {
      const bytes = readFileSync(join(files, name));
      const own = [await outcome(async () => described(await LoopLibrary.readInfo(bytes))),
        await outcome(() => used(bytes))];
      assert.deepEqual(own, native[name], name);
      const result = typeof own[1] === 'number' ? own[1] : 'loaded';
      counts[result] = (counts[result] ?? 0) + 1;
      const { byteLength } = (await getInstance()).buffer;
      assert.ok(byteLength < kMostMemory, `${name} left ${byteLength} bytes`);
    }
    assert.ok(counts.loaded > 100 && counts[106] > 100, JSON.stringify(counts));
  } finally {
    rmSync(folder, { recursive: true, force: true });
  }
});
