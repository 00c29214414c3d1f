// Loop files for the tests, made by the programs of the native build, and what those programs say
// of them.

import { execFileSync } from 'node:child_process';
import { copyFileSync, mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const kRoot = fileURLToPath(new URL('../..', import.meta.url));
const kBuild = join(kRoot, 'build/quick');

/** Standard output of looptool. */
export function looptool(...args) {
  return execFileSync(join(kBuild, 'bin/looptool'), args, { stdio: ['ignore', 'pipe', 'pipe'] });
}

/** Makes drums.lop2, drums.tsl, drums.lop and break.lop2 (swung, with texts) in a folder. */
export function makeLoops(folder) {
  const drumloop = (...args) => execFileSync(join(kBuild, 'bin/drumloop'), args).toString().trim();
  const drums = join(folder, 'drums.wav');
  const hits = drumloop(drums);
  const mono = join(folder, 'mono.wav'); // all that the older kinds hold
  writeFileSync(mono, leftChannel(readFileSync(drums)));
  for (const [kind, audio] of [['lop2', drums], ['tsl', mono], ['lop', mono]]) {
    looptool('make', audio, '-o', join(folder, `drums.${kind}`), '--kind', kind, '--bars', '2',
      '--slices', hits);
  }
  const swung = join(folder, 'break.wav');
  const swungHits = drumloop(swung, 'break');
  looptool('make', swung, '-o', join(folder, 'break.lop2'), '--bars', '2', '--slices', swungHits,
    '--text', 'Dürer’s break', '--text', 'two bars', '--signature', '4/4');
}

// The left channel, in 16 bits, of a WAV file in stereo and 24 bits as drumloop writes it.
function leftChannel(wav) {
  const kHeader = 44;
  const frames = (wav.length - kHeader) / 6;
  const mono = Buffer.alloc(kHeader + frames * 2);
  wav.copy(mono, 0, 0, kHeader);
  mono.writeUInt32LE(mono.length - 8, 4);
  mono.writeUInt16LE(1, 22);
  mono.writeUInt32LE(wav.readUInt32LE(24) * 2, 28);
  mono.writeUInt16LE(2, 32);
  mono.writeUInt16LE(16, 34);
  mono.writeUInt32LE(frames * 2, 40);
  for (let frame = 0; frame < frames; ++frame) {
    wav.copy(mono, kHeader + frame * 2, kHeader + frame * 6 + 1, kHeader + frame * 6 + 3);
  }
  return mono;
}

/** Files that a person may drop by mistake, by the sentence that is due. */
export function makeWrongFiles(folder) {
  const good = readFileSync(join(folder, 'drums.lop2'));
  const edited = (chunk, offset, bytes) => {
    const copy = Buffer.from(good);
    Buffer.from(bytes).copy(copy, copy.indexOf(chunk) + 8 + offset);
    return copy;
  };
  const files = [
    ['notes.txt', 'just some words', 'is not a loop file'],
    ['empty.lop2', '', 'is not a loop file'],
    ['<img src=x> \u202Eturned.lop2', 'no', 'is not a loop file'],
    ['cut.lop2', good.subarray(0, good.length / 2), 'damaged'],
    ['newer.lop2', edited('HEAD', 5, [9]), 'newer version'],
    ['zero.lop2', edited('GLOB', 7, [0]), 'musical length of zero'],
    ['big5.lop2', edited('SDAT', -4, [0xff, 0xff, 0xff, 0xff]), 'damaged'],
  ];
  for (const [name, bytes] of files) {
    writeFileSync(join(folder, name), bytes);
  }
  return files.map(([name, , sentence]) => ({ path: join(folder, name), name, sentence }));
}

/** A folder of `count` loops in sub-folders, with files in it that are none. */
export function makeFolder(folder, loop, count) {
  for (let i = 0; i < count; ++i) {
    const inner = join(folder, `pack ${i % 10}`);
    mkdirSync(inner, { recursive: true });
    copyFileSync(loop, join(inner, `loop ${i}.lop2`));
  }
  writeFileSync(join(folder, 'cover.jpg'), 'no picture either');
  writeFileSync(join(folder, '.hidden'), 'of the system');
}

/**
 * The native preview in a file: the left channel's floats, then the right one's.
 *
 * @param {[number, number][]} tempos frame, a multiple of 64, and beats per minute from there on
 */
export function nativePreview(loop, output, rate, frames, tempos) {
  runNative('native_preview.py', loop, output, rate, frames, ...tempos.map((change) => change.join(':')));
}

/** What the native library answers to each file of a folder, by native_results.py. */
export function nativeResults(folder) {
  return JSON.parse(runNative('native_results.py', folder));
}

function runNative(script, ...args) {
  return execFileSync('python3', [join(kRoot, 'Tests/Web', script), ...args], {
    env: { ...process.env, LOOPLIBRARY_PATH: join(kBuild, 'lib/libLoopLibrary.so') },
    maxBuffer: 1 << 28,
  });
}
