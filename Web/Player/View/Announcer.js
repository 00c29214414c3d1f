const kSettleMilliseconds = 500;

/** Tells screen readers what happens, through one polite live region. */
export class Announcer {
  #region;
  #timer = 0;

  /** @param {HTMLElement} region has aria-live */
  constructor(region) {
    this.#region = region;
  }

  say(text) {
    this.#region.textContent = text;
  }

  /** Says what a row of quick changes ends with. */
  saySettled(text) {
    clearTimeout(this.#timer);
    this.#timer = setTimeout(() => this.say(text), kSettleMilliseconds);
  }
}
