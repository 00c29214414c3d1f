import { kBankSize } from '../Input/shortcuts.js';

const kFlashMilliseconds = 140;

/** A button for each slice of the bank in view, with the key that plays it. */
export class Pads {
  #root;
  #banks;
  #onSlice;
  #keyLabels = [];
  #count = 0;
  #bank = 0;
  #sounding = -1;

  /**
   * @param {HTMLElement} root takes the pads
   * @param {HTMLElement} banks holds [data-bank=previous], [data-bank=next] and an output
   * @param {(index: number) => void} onSlice
   */
  constructor(root, banks, onSlice) {
    this.#root = root;
    this.#banks = banks;
    this.#onSlice = onSlice;
    // At once when a finger or the mouse goes down; a click that was none of these is a keyboard's
    // or an assistive program's.
    root.addEventListener('pointerdown', (event) => {
      if (event.button === 0) {
        this.#press(event);
      }
    });
    root.addEventListener('click', (event) => {
      if (event.detail === 0) {
        this.#press(event);
      }
    });
    banks.querySelector('[data-bank=previous]').onclick = () => this.moveBank(-1);
    banks.querySelector('[data-bank=next]').onclick = () => this.moveBank(1);
  }

  /** @param {string[]} labels of the keys of a bank */
  setKeyLabels(labels) {
    this.#keyLabels = labels;
    this.#build();
  }

  show(count) {
    this.#count = count;
    this.#bank = 0;
    this.#build();
  }

  /** The slice at a place of the bank in view; -1 where there is none. */
  sliceAt(place) {
    const index = this.#bank * kBankSize + place;
    return index < this.#count ? index : -1;
  }

  moveBank(step) {
    const last = Math.max(0, Math.ceil(this.#count / kBankSize) - 1);
    const bank = Math.min(Math.max(this.#bank + step, 0), last);
    if (bank !== this.#bank) {
      this.#bank = bank;
      this.#build();
    }
  }

  /** Lights the pad of a slice that was struck. */
  flash(index) {
    const pad = this.#padOf(index);
    if (pad) {
      pad.classList.add('struck');
      setTimeout(() => pad.classList.remove('struck'), kFlashMilliseconds);
    }
  }

  /** Marks the pad of the slice that the preview plays; -1 for none. */
  setSounding(index) {
    if (index !== this.#sounding) {
      this.#padOf(this.#sounding)?.classList.remove('sounding');
      this.#padOf(index)?.classList.add('sounding');
      this.#sounding = index;
    }
  }

  #press(event) {
    const pad = event.target.closest('button');
    if (pad) {
      this.#onSlice(Number(pad.dataset.index));
    }
  }

  #padOf(index) {
    return this.#root.children[index - this.#bank * kBankSize];
  }

  #build() {
    const first = this.#bank * kBankSize;
    const end = Math.min(first + kBankSize, this.#count);
    this.#root.replaceChildren(...Array.from({ length: end - first }, (_, place) => {
      const pad = document.createElement('button');
      pad.type = 'button';
      pad.className = 'pad';
      pad.dataset.index = first + place;
      pad.setAttribute('aria-label', `Slice ${first + place + 1}`);
      const number = document.createElement('span');
      number.textContent = first + place + 1;
      const key = document.createElement('kbd');
      key.textContent = this.#keyLabels[place] ?? '';
      pad.append(number, key);
      return pad;
    }));
    this.#banks.hidden = this.#count <= kBankSize;
    this.#banks.querySelector('output').textContent = `${first + 1}–${end} of ${this.#count}`;
  }
}
