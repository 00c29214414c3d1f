const kLongestGap = 3000; // milliseconds: 20 beats a minute, the slowest tempo
const kMostTaps = 9;

/** A tempo from taps on the beat. */
export class TapTempo {
  #times = [];

  /**
   * @param {number} time milliseconds
   * @returns {number | null} beats per minute; null at the first tap of a row
   */
  tap(time) {
    if (time - this.#times.at(-1) > kLongestGap) {
      this.#times = [];
    }
    this.#times.push(time);
    this.#times = this.#times.slice(-kMostTaps);
    return this.#times.length < 2 ? null : 60000 / slopeOf(this.#times);
  }
}

// Milliseconds a beat by least squares: a tap that comes late moves it less than by averaging the
// gaps, in which only the first and the last tap count.
function slopeOf(times) {
  const middle = (times.length - 1) / 2;
  let products = 0;
  let squares = 0;
  times.forEach((time, beat) => {
    products += (beat - middle) * (time - times[0]);
    squares += (beat - middle) ** 2;
  });
  return products / squares;
}
