// The page in a person's hands: keys, taps, MIDI, and what a screen reader is told.

import assert from 'node:assert/strict';
import { describe, it } from 'node:test';

import { page } from './playerPage.mjs';

const kTempo = 'async () => document.querySelector("#tempo").valueAsNumber';
// Names of the pads that lit up since the last call; the first call begins to watch.
const kStruck = `async () => {
  const names = (records) => records.map(({ target }) => target)
    .filter((pad) => pad.classList.contains('struck')).map((pad) => pad.ariaLabel);
  window.strikes ??= [];
  if (!window.strikeObserver) {
    window.strikeObserver = new MutationObserver((records) => window.strikes.push(...names(records)));
    window.strikeObserver.observe(document.querySelector('#pads'),
      { attributeFilter: ['class'], subtree: true });
  }
  await new Promise((resolve) => setTimeout(resolve));
  return window.strikes.splice(0);
}`;

// A MIDI keyboard for a browser that has none; window.strike sends a message from it.
const kFakeMidi = `
  const input = { name: 'Test Keys', state: 'connected' };
  navigator.requestMIDIAccess = async () => ({ inputs: new Map([['1', input]]) });
  window.strike = (...data) => input.onmidimessage({ data });`;

describe('controls', () => {
  it('sets the tempo by keys, slider, number and taps, and goes back to the loop’s own', async () => {
    await page.openWith('drums.lop2');
    const { browser } = page;
    await browser.press('=', '=', '-');
    assert.equal(await browser.run(kTempo), 121);
    await browser.run('async () => document.querySelector("#tempo-slider").focus()');
    await browser.press('\uE014', '\uE00E'); // arrow right, page up
    assert.equal(await browser.run(kTempo), 132);
    await browser.run(`async () => {
      const number = document.querySelector('#tempo');
      number.value = '1000';
      number.dispatchEvent(new Event('change'));
    }`);
    assert.equal(await browser.run(kTempo), 450);
    await browser.run(`async () => {
      const { TapTempo } = await import(new URL('/Sound/TapTempo.js', location));
      const taps = new TapTempo();
      window.tapped = [0, 500, 1010, 1500, 2000, 9000, 10000].map((time) => taps.tap(time));
    }`);
    const tapped = await browser.run('async () => window.tapped');
    assert.deepEqual([tapped[0], tapped[1], tapped[5], tapped[6]], [null, 120, null, 60]);
    assert.ok(Math.abs(tapped[4] - 120) < 0.5, `${tapped[4]}`);
    await browser.press('0');
    assert.equal(await browser.run(kTempo), 120);
    await page.untilSpoken('120 beats per minute');
  });

  it('keeps the person’s tempo from loop to loop, and changes it while playing', async () => {
    await page.openWith('drums.lop2', 'break.lop2');
    const { browser } = page;
    await browser.press(' ', '=');
    await browser.click('#loops tbody tr:nth-child(2) button');
    await page.untilShown('break.lop2');
    assert.equal(await browser.run(kTempo), 121);
    assert.equal(await browser.run('async () => document.querySelector("#play").ariaLabel'), 'Stop');
    await browser.press('0', ' ');
    assert.equal(await browser.run(kTempo), 93);
    await page.untilSpoken('Stopped');
  });

  it('plays slices by the computer’s keys, and leaves the keys alone when told so', async () => {
    await page.openWith('drums.lop2');
    await page.browser.run(kStruck);
    await page.browser.press('w', 'a');
    assert.deepEqual(await page.browser.run(kStruck), ['Slice 2', 'Slice 9']);
    await page.browser.click('#slice-keys');
    await page.browser.press('w', '=');
    assert.deepEqual(await page.browser.run(kStruck), []);
    assert.equal(await page.browser.run(kTempo), 120);
  });

  it('plays slices by MIDI from C1 on, and says which keyboard it hears', async () => {
    await page.open(kFakeMidi);
    await page.browser.drop(page.file('drums.lop2'));
    await page.untilShown('drums.lop2');
    await page.browser.click('#midi');
    await page.untilSpoken('MIDI from Test Keys: slices begin at C1.');
    await page.browser.run(kStruck);
    const struck = await page.browser.run(`async () => {
      window.strike(0x90, 36, 100); // first slice
      window.strike(0x99, 51, 1); // the last, on another channel
      window.strike(0x90, 52, 100); // none
      window.strike(0x90, 37, 0); // a note off
      return (${kStruck})();
    }`);
    assert.deepEqual(struck, ['Slice 1', 'Slice 16']);
  });

  for (const [what, script, sentence] of [
    ['no audio device', `window.AudioContext = class {
      constructor() { throw new DOMException('none', 'NotSupportedError'); } };`, 'does not let this page sound'],
    ['no leave to sound', `Object.defineProperty(AudioContext.prototype, 'state', { get: () => 'suspended' });
      AudioContext.prototype.resume = () => new Promise(() => {});`, 'does not let this page sound'],
    ['no worker', `window.Worker = class extends Worker { constructor() { super('/missing.js'); } };`,
      'this browser does not run'],
  ]) {
    it(`says what is wrong, and breaks nothing, with ${what}`, async () => {
      const { browser } = page;
      await page.open(script);
      // The second time the page knows already.
      for (const name of ['drums.lop2', 'break.lop2']) {
        await browser.drop(page.file(name));
        if (what !== 'no worker') {
          await page.untilShown(name);
          await browser.press(' ');
        }
        await browser.until(`async (sentence) =>
          document.querySelector('#notices:not([hidden])')?.innerText.includes(sentence)`, sentence);
        assert.equal(await browser.run('async () => document.querySelector("#play").ariaLabel'), 'Play');
      }
      assert.deepEqual((await browser.complaints()).filter((text) => !text.includes('missing.js')), []);
    });
  }

  it('gives every control a name and every change a word', async () => {
    await page.openWith('break.lop2', 'drums.lop2');
    const { browser } = page;
    await page.untilSpoken('2 loops added.');
    const nodes = await browser.accessibleNodes();
    const controls = nodes.filter(({ role, focusable }) => focusable && role !== 'RootWebArea');
    assert.deepEqual(controls.filter(({ name }) => name === ''), []);
    const has = (role, name) => nodes.some((node) => node.role === role && node.name === name);
    for (const [role, name] of [
      ['heading', 'break.lop2'], ['image', 'Waveform of break.lop2: 2 bars of 4/4, 23 slices, '
        + 'stereo, 44.1 kHz, 24 bits'],
      ['button', 'Play'], ['spinbutton', 'Tempo in beats per minute'], ['slider', 'Tempo'],
      ['slider', 'Volume'], ['button', 'Slice 23'], ['columnheader', 'BPM'],
      ['rowheader', 'drums.lop2'], ['status', ''], ['main', ''], ['region', 'Loops'],
    ]) {
      assert.ok(has(role, name), `${role} “${name}”`);
    }
    await browser.press(' ');
    await page.untilSpoken('Playing at 93 beats per minute');
    await browser.drop(page.file('drums.tsl'));
    await page.untilSpoken('drums.tsl: 120 beats per minute, 2 bars of 4/4, 16 slices, mono, 44.1 kHz, '
      + '16 bits');
  });

  it('is reached and worked by the keyboard alone', async () => {
    await page.openWith('break.lop2', 'drums.lop2');
    const kTab = '\uE004';
    const reached = new Set();
    for (let i = 0; i < 45; ++i) {
      await page.browser.press(kTab);
      reached.add(await page.browser.run(`async () => {
        const { id, className, ariaLabel } = document.activeElement;
        const style = getComputedStyle(document.activeElement);
        const isClear = style.outlineStyle === 'solid' && parseFloat(style.outlineWidth) >= 2;
        return isClear ? id || ariaLabel || className : '';
      }`));
    }
    for (const name of ['open-files', 'play', 'tempo', 'tempo-slider', 'tempo-tap', 'volume',
      'Slice 1', 'Slice 23', 'slice-keys', 'save-all', 'save-slice', 'filter']) {
      assert.ok(reached.has(name), `${name} of ${[...reached]}`);
    }
  });
});
