// Numbers and lengths as the page writes them.

/** As few digits as tell a tempo from its neighbours to a hundredth: 120, 97.5, 133.33. */
export function tempoText(tempo) {
  return String(Number(tempo.toFixed(2)));
}

/** {bars, beats}: whole bars, and beats beyond them. */
export function barsOf(info) {
  const [perBar] = info.timeSignature;
  const beats = Math.round(info.beats * 1000) / 1000;
  const bars = Math.floor(beats / perBar);
  return { bars, beats: Math.round((beats - bars * perBar) * 1000) / 1000 };
}

/** "2 bars", "1 bar and 2 beats", "3 beats". */
export function lengthText(info) {
  const { bars, beats } = barsOf(info);
  const parts = [];
  if (bars > 0 || beats === 0) {
    parts.push(countText(bars, 'bar'));
  }
  if (beats > 0) {
    parts.push(countText(beats, 'beat'));
  }
  return parts.join(' and ');
}

/** "1 slice", "16 slices". */
export function countText(count, word) {
  return `${count} ${word}${count === 1 ? '' : 's'}`;
}

/** "4/4". */
export function signatureText(info) {
  return info.timeSignature.join('/');
}

/** "2 bars of 4/4, 16 slices, stereo, 44.1 kHz, 24 bits". */
export function factsText(info, sliceCount) {
  return [
    `${lengthText(info)} of ${signatureText(info)}`,
    countText(sliceCount, 'slice'),
    info.channels === 2 ? 'stereo' : 'mono',
    `${Number((info.sampleRate / 1000).toFixed(3))} kHz`,
    info.bitDepth > 0 ? countText(info.bitDepth, 'bit') : '',
  ].filter(Boolean).join(', ');
}
