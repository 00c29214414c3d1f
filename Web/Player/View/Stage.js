import { sliceKeyLabels } from '../Input/shortcuts.js';
import { Pads } from './Pads.js';
import { factsText } from './numbers.js';
import { Waveform } from './Waveform.js';

/** The loop that is open: its name and facts, its picture, its pads and the play button. */
export class Stage {
  #root;
  #waveform;
  #pads;
  #quarters = 0;
  #getPosition;
  #isAnimated = false;

  /**
   * @param {HTMLElement} root
   * @param {object} actions
   * @param {() => void} actions.togglePlay
   * @param {(index: number) => void} actions.strike a slice was struck
   * @param {() => number | null} actions.getPosition in quarter notes
   */
  constructor(root, { togglePlay, strike, getPosition }) {
    this.#root = root;
    this.#getPosition = getPosition;
    this.#waveform = new Waveform(root.querySelector('#waveform'), strike);
    this.#pads = new Pads(root.querySelector('#pads'), root.querySelector('#banks'), strike);
    root.querySelector('#play').onclick = togglePlay;
    sliceKeyLabels().then((labels) => this.#pads.setKeyLabels(labels));
  }

  get pads() {
    return this.#pads;
  }

  /** @param {{info, slices, creatorTexts, peaks}} loop */
  show(name, { info, slices, creatorTexts, peaks }) {
    this.#root.hidden = false;
    this.#quarters = info.quarters;
    const facts = factsText(info, slices.length);
    this.#setText('#loop-name', name);
    this.#setText('#loop-facts', facts);
    this.#setText('#loop-texts', textsOf(creatorTexts));
    this.#waveform.show({
      starts: slices.map((slice) => slice.ppqPosition / info.ppqLength),
      peaks,
      beats: info.beats,
      beatsPerBar: info.timeSignature[0],
    }, `Waveform of ${name}: ${facts}`);
    this.#pads.show(slices.length);
  }

  /** Another loop is on its way. */
  setBusy(isBusy) {
    this.#root.classList.toggle('busy', isBusy);
  }

  setPlaying(isPlaying) {
    const button = this.#root.querySelector('#play');
    button.toggleAttribute('data-playing', isPlaying);
    button.setAttribute('aria-label', isPlaying ? 'Stop' : 'Play');
    if (isPlaying && !this.#isAnimated) {
      this.#isAnimated = true;
      requestAnimationFrame(() => this.#animate());
    } else if (!isPlaying) {
      this.#isAnimated = false;
      this.#setPosition(null);
    }
  }

  #animate() {
    if (this.#isAnimated) {
      const quarters = this.#getPosition();
      this.#setPosition(quarters === null ? null : (quarters / this.#quarters) % 1);
      requestAnimationFrame(() => this.#animate());
    }
  }

  #setPosition(position) {
    this.#waveform.setPosition(position);
    this.#pads.setSounding(this.#waveform.soundingIndex);
  }

  #setText(selector, text) {
    const element = this.#root.querySelector(selector);
    element.textContent = text;
    element.hidden = text === '';
  }
}

function textsOf(creatorTexts) {
  return (creatorTexts ?? [])
    .map((text) => text.replaceAll('\u2029', '\n').trim())
    .filter(Boolean)
    .join('\n');
}
