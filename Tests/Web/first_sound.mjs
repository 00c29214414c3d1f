#!/usr/bin/env node
// How long it takes from opening the page to hearing a dropped loop at another tempo, without the time that a
// person takes to move: node Tests/Web/first_sound.mjs [runs], after scripts/page. A new browser for each run.

import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { Browser } from './Browser.mjs';
import { PageServer } from './PageServer.mjs';
import { makeLoops } from './loopFiles.mjs';

// In the page: the time of the first sample that is heard, in milliseconds since the page was asked for.
const kHear = `async () => {
  const { player } = await import(new URL('/main.js', location));
  await player.context.audioWorklet.addModule('/test/recorder.js');
  const recorder = new AudioWorkletNode(player.context, 'recorder', { numberOfOutputs: 0 });
  window.heard = new Promise((resolve) => {
    recorder.port.onmessage = ({ data: [left] }) => {
      if (left.some((value) => Math.abs(value) > 1e-3)) {
        resolve(performance.now());
      }
    };
  });
  player.output.connect(recorder);
}`;
const kShown = `async () => {
  while (document.querySelector('#loop-name').textContent === '') {
    await new Promise((resolve) => setTimeout(resolve, 2));
  }
  return performance.now();
}`;

async function run(server, folder) {
  const browser = await Browser.start({ downloads: folder, flags: [] });
  try {
    await browser.goTo(`${server.address}/index.html`);
    const loaded = await browser.run('async () => performance.now()');
    await browser.run(kHear);
    await browser.drop(join(folder, 'break.lop2'));
    const shown = await browser.run(kShown);
    await browser.press('=', ' ');
    return { loaded, shown, heard: await browser.run('async () => window.heard') };
  } finally {
    await browser.close();
  }
}

const folder = mkdtempSync(join(tmpdir(), 'first-sound-'));
makeLoops(folder);
const server = await PageServer.start({
  '/': fileURLToPath(new URL('../../build/page', import.meta.url)),
  '/test/': fileURLToPath(new URL('.', import.meta.url)),
});
const rows = [];
for (let at = 0; at < (Number(process.argv[2]) || 5); ++at) {
  rows.push(await run(server, folder));
}
server.close();
rmSync(folder, { recursive: true, force: true });
for (const name of ['loaded', 'shown', 'heard']) {
  const times = rows.map((row) => Math.round(row[name])).sort((a, b) => a - b);
  console.log(`${name.padEnd(8)} ${times[times.length >> 1]} ms (median of ${times.join(', ')})`);
}
