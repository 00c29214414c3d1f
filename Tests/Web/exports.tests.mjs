// Downloads, beside the files that looptool exports.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, readdirSync, rmSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { describe, it } from 'node:test';

import { looptool } from './loopFiles.mjs';
import { page } from './playerPage.mjs';

async function download(button, name) {
  const file = join(page.downloads, name);
  rmSync(file, { force: true });
  await page.browser.click(button);
  // An empty file stands there until the download is through.
  for (let i = 0; i < 400 && !statSync(file, { throwIfNoEntry: false })?.size; ++i) {
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
  return file;
}

describe('downloads', () => {
  for (const name of ['break.lop2', 'drums.lop']) {
    it(`are the bytes that looptool exports of ${name}`, async () => {
      await page.openWith(name);
      const stem = name.split('.')[0];
      const zip = await download('#save-all', `${stem}.zip`);
      const unpacked = page.file(`${name} unpacked`);
      execFileSync('python3', ['-m', 'zipfile', '-e', zip, unpacked]);
      const native = page.file(`${name} native`);
      looptool('export', page.file(name), '-o', native, '--bits', '24');
      const files = readdirSync(native).sort();
      assert.deepEqual(readdirSync(unpacked).sort(), files);
      for (const file of files) {
        assert.ok(readFileSync(join(unpacked, file)).equals(readFileSync(join(native, file))), file);
      }

      await page.browser.press('e'); // the third slice
      const wav = `${stem}_slice_002.wav`;
      const slice = await download('#save-slice', wav);
      assert.ok(readFileSync(slice).equals(readFileSync(join(native, wav))), wav);
    });
  }

  it('has the tempo that the person set in its MIDI file', async () => {
    await page.openWith('drums.lop2');
    await page.browser.press('=', '=');
    const zip = await download('#save-all', 'drums.zip');
    const unpacked = page.file('faster');
    execFileSync('python3', ['-m', 'zipfile', '-e', zip, unpacked]);
    looptool('export', page.file('drums.lop2'), '-o', page.file('faster native'), '--tempo', '122');
    const midi = (folder) => readFileSync(join(page.file(folder), 'drums.mid'));
    assert.ok(midi('faster').equals(midi('faster native')));
  });
});
