import { MAX_TEMPO, MIN_TEMPO } from '../looplibrary/index.js';
import { TapTempo } from '../Sound/TapTempo.js';
import { tempoText } from './numbers.js';

const kStep = 1;
const kFineStep = 0.1;
const kPage = 10;

/**
 * The tempo: a number to type, a slider from half to double the loop's own tempo, steps and taps.
 * What the person sets stays for the loops that follow, until they return to the loops' own tempos.
 */
export class TempoControl {
  #number;
  #slider;
  #ownButton;
  #onTempo;
  #tap = new TapTempo();
  #own = 120;
  #chosen = null;

  /**
   * @param {HTMLElement} root holds #tempo, #tempo-slider, #tempo-own, #tempo-tap and the steps
   * @param {(tempo: number) => void} onTempo
   */
  constructor(root, onTempo) {
    this.#number = root.querySelector('#tempo');
    this.#slider = root.querySelector('#tempo-slider');
    this.#ownButton = root.querySelector('#tempo-own');
    this.#onTempo = onTempo;
    this.#number.onchange = () => this.#take(this.#number.valueAsNumber);
    this.#number.onkeydown = (event) => {
      if (event.key === 'Enter') {
        this.#number.blur();
      }
    };
    this.#slider.oninput = () => this.#take(this.#slider.valueAsNumber);
    this.#slider.onkeydown = (event) => this.#onSliderKey(event);
    this.#ownButton.onclick = () => this.useOwn();
    root.querySelector('#tempo-tap').onpointerdown = (event) => this.tap(event.timeStamp);
    root.querySelector('#tempo-tap').onclick = (event) => {
      if (event.detail === 0) {
        this.tap(event.timeStamp);
      }
    };
    for (const button of root.querySelectorAll('[data-step]')) {
      button.onclick = (event) => this.step(Number(button.dataset.step), event.shiftKey);
    }
  }

  /** Beats per minute. */
  get tempo() {
    return this.#chosen ?? clamp(this.#own);
  }

  /** Another loop, with a tempo of its own. */
  setOwn(tempo) {
    this.#own = tempo;
    this.#slider.min = Math.max(MIN_TEMPO, Math.floor(tempo / 2));
    this.#slider.max = Math.min(MAX_TEMPO, Math.ceil(tempo * 2));
    const place = (clamp(tempo) - this.#slider.min) / (this.#slider.max - this.#slider.min);
    this.#slider.parentElement.style.setProperty('--own-place', place);
    this.#show();
  }

  useOwn() {
    this.#chosen = null;
    this.#show();
    this.#onTempo(this.tempo);
  }

  step(direction, isFine) {
    this.#take(this.tempo + direction * (isFine ? kFineStep : kStep));
  }

  /** A tap on the beat. @param {number} time milliseconds */
  tap(time) {
    const tempo = this.#tap.tap(time);
    if (tempo !== null) {
      this.#take(Math.round(tempo * 10) / 10);
    }
  }

  #take(tempo) {
    if (Number.isFinite(tempo)) {
      this.#chosen = Math.round(clamp(tempo) * 1000) / 1000;
    }
    this.#show();
    this.#onTempo(this.tempo);
  }

  #show() {
    const text = tempoText(this.tempo);
    this.#number.value = text;
    this.#slider.value = this.tempo;
    this.#slider.setAttribute('aria-valuetext', `${text} beats per minute`);
    const { min, max, value } = this.#slider;
    this.#slider.style.setProperty('--place', (value - min) / (max - min));
    this.#ownButton.textContent = `Original ${tempoText(clamp(this.#own))}`;
    this.#ownButton.disabled = this.#chosen === null;
  }

  #onSliderKey(event) {
    const steps = {
      ArrowRight: kStep, ArrowUp: kStep, ArrowLeft: -kStep, ArrowDown: -kStep,
      PageUp: kPage, PageDown: -kPage,
    };
    const step = steps[event.key];
    if (step) {
      event.preventDefault();
      this.#take(this.tempo + (event.shiftKey ? step * kFineStep : step));
    }
  }
}

function clamp(tempo) {
  return Math.min(Math.max(tempo, MIN_TEMPO), MAX_TEMPO);
}
