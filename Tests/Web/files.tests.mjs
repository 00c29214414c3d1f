// Files on the page: what the list says of each kind, folders, and files that are not loops.

import assert from 'node:assert/strict';
import { mkdirSync } from 'node:fs';
import { join } from 'node:path';
import { describe, it } from 'node:test';

import { looptool, makeFolder, makeWrongFiles } from './loopFiles.mjs';
import { page } from './playerPage.mjs';

const kRows = `async () => [...document.querySelectorAll('#loops tbody tr')]
  .map((row) => [...row.cells].map((cell) => cell.innerText.trim()))`;
const kNotices = `async () => {
  const notices = document.querySelector('#notices');
  return notices.hidden ? [] : [...notices.querySelectorAll('li')].map((item) => item.innerText);
}`;

describe('files', () => {
  it('lists each kind with tempo, bars and texts as looptool does', async () => {
    const names = ['break.lop2', 'drums.lop2', 'drums.tsl', 'drums.lop'];
    await page.openWith(...names);
    const rows = await page.browser.run(kRows);
    const expected = names.map((name) => {
      const info = JSON.parse(looptool('info', page.file(name), '--json'));
      const first = (info.creator_texts ?? []).find(Boolean);
      return [
        first ? `${name}\n${first}` : name,
        String(info.stored_tempo), String(info.bars), info.time_signature.join('/'),
        info.kind === 'lop2' ? 'LOP2' : `.${info.kind}`,
      ];
    });
    assert.deepEqual(rows, expected);
    assert.deepEqual(await page.browser.run(kNotices), []);
    assert.equal(await page.browser.run('async () => document.querySelector("#loop-texts").innerText'),
      'Dürer’s break\ntwo bars');
    assert.deepEqual(await page.browser.complaints(), []);
  });

  it('says in a sentence why a file is refused, and stays usable', async () => {
    const wrong = makeWrongFiles(page.folder);
    for (const { path, name, sentence } of wrong) {
      await page.open();
      await page.browser.drop(path);
      const [notice] = await page.browser.until(`async () => {
        const lines = await (${kNotices})();
        return lines.length > 0 && lines;
      }`);
      assert.ok(notice.startsWith(`“\u2068${name}\u2069”`) && notice.includes(sentence), notice);
      await page.browser.drop(page.file('drums.lop2'));
      await page.untilShown('drums.lop2');
      assert.deepEqual(await page.browser.complaints(), []);
    }
  });

  it('reads a folder of 1000 loops, leaves the rest out, and opens one before it is through', async () => {
    const folder = page.file('library');
    mkdirSync(folder);
    makeFolder(folder, page.file('drums.lop2'), 1000);
    await page.open(`
      addEventListener('DOMContentLoaded', () => {
        const count = () => document.querySelectorAll('#loops tbody tr').length;
        new MutationObserver(() => { window.rowsAtFirstLoop ??= count(); })
          .observe(document.querySelector('#loop-name'), { childList: true });
      });`);
    mkdirSync(page.file('nothing'));
    await page.browser.drop(page.file('nothing'));
    await page.untilSpoken('There were no files.');
    await page.browser.drop(folder);
    await page.browser.until('async () => document.querySelector("#count").innerText === "1000 loops"');
    assert.deepEqual(await page.browser.until(`async () => {
      const lines = await (${kNotices})();
      return lines.length > 0 && lines;
    }`), ['1 file of the folder is not a loop and was left out.']);
    const early = await page.browser.run('async () => window.rowsAtFirstLoop');
    assert.ok(early > 0 && early < 1000, `${early} rows when the first loop was open`);
    // So many files are not asked whether they are folders.
    await page.open();
    const files = Array.from({ length: 250 }, (_, at) => join(folder, `pack ${at % 10}`, `loop ${at}.lop2`));
    await page.browser.drop(page.file('notes.txt'), folder, ...files);
    await page.browser.until('async () => document.querySelector("#count").innerText === "1250 loops"');
  });

  it('plays from a disk when it is one file', async () => {
    const { browser } = page;
    await browser.goTo(new URL('../../build/page/loop-player.html', import.meta.url).href);
    await browser.click('#welcome-demo');
    await page.untilShown('drums.lop2');
    await browser.press(' ');
    await browser.until('async () => document.querySelector(".sounding:not([hidden])") !== null');
    assert.deepEqual(await browser.run(kNotices), []);
    assert.deepEqual(await browser.complaints(), []);
  });

  it('finds, sorts and walks the list', async () => {
    await page.openWith('break.lop2', 'drums.lop2', 'drums.tsl');
    const shown = `async () => [...document.querySelectorAll('#loops tbody tr:not([hidden]) button')]
      .map((button) => button.textContent)`;
    const find = (words) => page.browser.run(`async (words) => {
      const filter = document.querySelector('#filter');
      filter.value = words;
      filter.dispatchEvent(new Event('input'));
      return (${shown})();
    }`, words);
    assert.deepEqual(await find('dürer'), ['break.lop2']);
    assert.deepEqual(await find('drums .tsl'), ['drums.tsl']);
    assert.deepEqual(await find('100..'), ['drums.lop2', 'drums.tsl']);
    await find('');
    await page.browser.click('[data-sort=tempo]');
    await page.browser.click('[data-sort=tempo]');
    assert.deepEqual(await page.browser.run(shown), ['drums.lop2', 'drums.tsl', 'break.lop2']);
    await page.browser.run('async () => document.querySelector("[aria-current] button").focus()');
    const kUp = '\uE013';
    const kEnter = '\uE007';
    await page.browser.press(kUp, kEnter);
    await page.untilShown('drums.tsl');
  });
});
