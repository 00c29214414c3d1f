import { drawLoop } from './drawLoop.js';

/**
 * The picture of a loop: waveform, slices, bars and beats, with the part that sounds and a playhead
 * over it. The canvas is drawn when the loop, the size or the colours change, and never to move the
 * playhead.
 */
export class Waveform {
  #root;
  #canvas;
  #playhead;
  #sounding;
  #loop = null;
  #soundingIndex = -1;

  /**
   * @param {HTMLElement} root holds a canvas, .playhead and .sounding
   * @param {(index: number) => void} onSlice a slice was pressed
   */
  constructor(root, onSlice) {
    this.#root = root;
    this.#canvas = root.querySelector('canvas');
    this.#playhead = root.querySelector('.playhead');
    this.#sounding = root.querySelector('.sounding');
    new ResizeObserver(() => this.#draw()).observe(root);
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => this.#draw());
    this.#watchDensity();
    root.addEventListener('pointerdown', (event) => {
      const index = this.#sliceAt(event);
      if (index >= 0 && event.button === 0) {
        onSlice(index);
      }
    });
  }

  /**
   * @param {object} loop
   * @param {number[]} loop.starts of the slices, parts of the loop from 0 to 1
   * @param {{low, high, rms}[]} loop.peaks one a channel
   * @param {number} loop.beats
   * @param {number} loop.beatsPerBar
   * @param {string} description the picture in words
   */
  show(loop, description) {
    this.#loop = loop;
    this.#canvas.setAttribute('aria-label', description);
    this.setPosition(null);
    this.#draw();
  }

  /** @param {number | null} position of the playhead, 0 to 1 */
  setPosition(position) {
    this.#playhead.hidden = position === null;
    if (position !== null) {
      this.#playhead.style.transform = `translateX(${position * this.#root.clientWidth}px)`;
    }
    this.setSounding(position === null ? -1 : this.#sliceOf(position));
  }

  /** The slice that sounds, or -1. */
  get soundingIndex() {
    return this.#soundingIndex;
  }

  setSounding(index) {
    if (index === this.#soundingIndex) {
      return;
    }
    this.#soundingIndex = index;
    this.#sounding.hidden = index < 0;
    if (index >= 0) {
      const { starts } = this.#loop;
      this.#sounding.style.left = `${starts[index] * 100}%`;
      this.#sounding.style.width = `${((starts[index + 1] ?? 1) - starts[index]) * 100}%`;
    }
  }

  #sliceAt(event) {
    const { left, width } = this.#canvas.getBoundingClientRect();
    return this.#sliceOf((event.clientX - left) / width);
  }

  #sliceOf(position) {
    return this.#loop ? this.#loop.starts.findLastIndex((start) => start <= position) : -1;
  }

  #draw() {
    const { clientWidth: width, clientHeight: height } = this.#root;
    if (this.#loop && width > 0) {
      drawLoop(this.#canvas, this.#loop, { width, height, density: devicePixelRatio });
    }
  }

  // A window that moves to another screen, or is zoomed.
  #watchDensity() {
    matchMedia(`(resolution: ${devicePixelRatio}dppx)`).addEventListener('change', () => {
      this.#draw();
      this.#watchDensity();
    }, { once: true });
  }
}
