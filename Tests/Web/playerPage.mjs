// The page in a browser, with loop files at hand, shared by all tests of one run.

import { mkdirSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { fileURLToPath } from 'node:url';

import { Browser } from './Browser.mjs';
import { PageServer } from './PageServer.mjs';
import { makeLoops } from './loopFiles.mjs';

const kPage = fileURLToPath(new URL('../../build/page', import.meta.url));

// Keeps all that screen readers are told.
const kListen = `
  window.spoken = [];
  addEventListener('DOMContentLoaded', () => {
    const region = document.querySelector('#spoken');
    new MutationObserver(() => window.spoken.push(region.textContent.trim()))
      .observe(region, { childList: true });
  });`;

/** Also {browser, server, folder, downloads}, which stand there from the first test on. */
export const page = {
  /** The path of a file in the test's folder. */
  file: (name) => join(page.folder, name),

  /** Loads the page anew; `script` runs before the page's own. */
  async open(script = '') {
    await page.browser.goTo(`${page.server.address}/index.html`, kListen + script);
    await page.browser.until('async () => document.readyState === "complete"');
  },

  /** Opens the page with these files dropped on it, and waits for the first to be shown. */
  async openWith(...names) {
    await page.open();
    await page.browser.drop(...names.map(page.file));
    await page.untilShown(names[0]);
  },

  /** Waits until a screen reader has been told this. */
  untilSpoken(text) {
    return page.browser.until('async (text) => window.spoken.includes(text)', text);
  },

  untilShown(name) {
    return page.browser.until(`async (name) =>
      document.querySelector('#loop-name').textContent === name`, name);
  },
};

before(async () => {
  page.folder = mkdtempSync(join(tmpdir(), 'player-page-'));
  page.downloads = page.file('downloads');
  mkdirSync(page.downloads);
  makeLoops(page.folder);
  page.server = await PageServer.start({
    '/': kPage,
    '/test/': fileURLToPath(new URL('.', import.meta.url)),
    '/files/': page.folder,
  });
  page.browser = await Browser.start({ downloads: page.downloads });
});

after(async () => {
  await page.browser?.close();
  page.server?.close();
  rmSync(page.folder, { recursive: true, force: true });
});
