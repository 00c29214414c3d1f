// Screenshots at three widths in both colour schemes, for a person to look at: build/page-screens.
// The tests ask what a program can: nothing is cut off, and text stands out from its ground.

import assert from 'node:assert/strict';
import { mkdirSync } from 'node:fs';
import { join } from 'node:path';
import { describe, it } from 'node:test';
import { fileURLToPath } from 'node:url';

import { page } from './playerPage.mjs';

const kFolder = fileURLToPath(new URL('../../build/page-screens', import.meta.url));
const kLeastContrast = 4.5;

// In the page: words whose colour stands out too little from the ground beneath it.
const kPaleWords = `async (least) => {
  const canvas = new OffscreenCanvas(1, 1).getContext('2d', { willReadFrequently: true });
  const over = (colours) => {
    canvas.clearRect(0, 0, 1, 1);
    for (const colour of colours) {
      canvas.fillStyle = colour;
      canvas.fillRect(0, 0, 1, 1);
    }
    return canvas.getImageData(0, 0, 1, 1).data;
  };
  const light = (colours) => {
    const [r, g, b] = [...over(colours)].map((value) => value / 255)
      .map((value) => (value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4));
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const groundsOf = (element) => element
    ? [...groundsOf(element.parentElement), getComputedStyle(element).backgroundColor] : [];
  const texts = [...document.querySelectorAll('body *')].filter((element) => !element.disabled
    && element.checkVisibility() && [...element.childNodes].some((node) =>
      node.nodeType === Node.TEXT_NODE && node.data.trim()) && !element.closest('.veil, .spoken'));
  return texts.map((element) => {
    const grounds = groundsOf(element);
    const [a, b] = [light(grounds), light([...grounds, getComputedStyle(element).color])];
    const contrast = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    return { text: element.textContent.trim(), contrast };
  }).filter(({ contrast }) => contrast < least);
}`;

describe('screens', () => {
  for (const scheme of ['dark', 'light']) {
    for (const [width, height, density] of [[320, 640, 2], [800, 1000, 1], [1400, 900, 1]]) {
      it(`fits ${width} pixels, ${scheme}`, async () => {
        mkdirSync(kFolder, { recursive: true });
        await page.browser.setScreen({ width, height, density, scheme });
        await page.open();
        await page.browser.screenshot(join(kFolder, `${width}-${scheme}-empty.png`));
        await page.browser.drop(...['break.lop2', 'drums.lop2', 'drums.tsl', 'notes.txt'].map(page.file));
        await page.untilShown('break.lop2');
        await page.browser.press(' ');
        await page.browser.until('async () => document.querySelector(".sounding:not([hidden])") !== null');
        await page.browser.screenshot(join(kFolder, `${width}-${scheme}.png`));
        const root = await page.browser.run(`async () => {
          const { scrollWidth, clientWidth } = document.documentElement;
          return { scrollWidth, clientWidth };
        }`);
        assert.ok(root.scrollWidth <= root.clientWidth, JSON.stringify(root));
        assert.deepEqual(await page.browser.run(kPaleWords, kLeastContrast), []);
      });
    }
  }
});
