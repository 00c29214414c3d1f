/** Bins of a picture of a pass: more than a wide screen of high density has pixels. */
const kMostBins = 8192;

/**
 * One pass of a loop at its own tempo as slices that end where the next one begins.
 *
 * @param {{start: number, planes: Float32Array[]}[]} slices by start, a part of the loop from 0 to 1
 * @param {number} frames length of the pass
 * @returns {Float32Array[]} a plane for each channel
 */
export function layOutPass(slices, channels, frames) {
  const planes = Array.from({ length: channels }, () => new Float32Array(frames));
  slices.forEach((slice, index) => {
    const first = Math.min(frames, Math.round(slice.start * frames));
    const next = index + 1 < slices.length ? Math.round(slices[index + 1].start * frames) : frames;
    const count = Math.max(0, Math.min(next, frames) - first);
    planes.forEach((plane, channel) => {
      plane.set(slice.planes[channel].subarray(0, count), first);
    });
  });
  return planes;
}

/**
 * Lowest and highest sample and root mean square of equal stretches of a plane.
 *
 * @param {Float32Array} plane
 * @returns {{low: Float32Array, high: Float32Array, rms: Float32Array}}
 */
export function peaksOf(plane) {
  const bins = Math.max(1, Math.min(kMostBins, plane.length));
  const low = new Float32Array(bins);
  const high = new Float32Array(bins);
  const rms = new Float32Array(bins);
  for (let bin = 0; bin < bins; ++bin) {
    const first = Math.floor((bin * plane.length) / bins);
    const end = Math.floor(((bin + 1) * plane.length) / bins);
    let least = 0;
    let most = 0;
    let squares = 0;
    for (let i = first; i < end; ++i) {
      const value = plane[i];
      least = Math.min(least, value);
      most = Math.max(most, value);
      squares += value * value;
    }
    low[bin] = least;
    high[bin] = most;
    rms[bin] = Math.sqrt(squares / Math.max(1, end - first));
  }
  return { low, high, rms };
}
