// Heights in CSS pixels.
const kNumbersHeight = 20; // above the waves
const kRulerHeight = 22; // below them
const kChannelGap = 6;
const kMostScale = 4; // of quiet loops
// Least distances in CSS pixels of what would otherwise crowd.
const kLeastBeat = 5;
const kLeastBeatName = 34;
const kLeastBarName = 22;

/**
 * Draws a loop: the waves in two shades that alternate from slice to slice, the cuts and their
 * numbers above, a ruler of bars and beats below. Every line stands on whole device pixels.
 */
export function drawLoop(canvas, loop, { width, height, density }) {
  canvas.width = Math.round(width * density);
  canvas.height = Math.round(height * density);
  const context = canvas.getContext('2d');
  const area = {
    context,
    density,
    colours: coloursOf(canvas),
    width: canvas.width,
    top: Math.round(kNumbersHeight * density),
    bottom: canvas.height - Math.round(kRulerHeight * density),
  };
  context.clearRect(0, 0, canvas.width, canvas.height);
  drawRuler(area, loop);
  drawWaves(area, loop);
  drawCuts(area, loop);
}

function coloursOf(canvas) {
  const style = getComputedStyle(canvas);
  return new Proxy({}, { get: (_, name) => style.getPropertyValue(`--${name}`).trim() });
}

function fillRectangle({ context }, colour, x, y, width, height) {
  context.fillStyle = colour;
  context.fillRect(Math.round(x), Math.round(y), Math.round(width), Math.round(height));
}

function setFont({ context, density }, size, weight = 400) {
  context.font = `${weight} ${size * density}px system-ui, sans-serif`;
}

function drawRuler(area, loop) {
  const { context, density, colours, width, top, bottom } = area;
  const beatWidth = width / loop.beats;
  const barWidth = beatWidth * loop.beatsPerBar;
  const barStep = Math.max(1, Math.ceil((kLeastBarName * density) / barWidth));
  const beatStep = beatWidth >= kLeastBeat * density ? 1 : loop.beatsPerBar * barStep;
  context.textBaseline = 'top';
  for (let beat = 0; beat < loop.beats; beat += beatStep) {
    const bar = Math.floor(beat / loop.beatsPerBar);
    const place = beat % loop.beatsPerBar;
    const x = beat * beatWidth;
    if (place === 0 && bar % barStep === 0) {
      fillRectangle(area, colours['grid-strong'], x, top, density, bottom - top + 14 * density);
      write(area, colours.text, 600, String(bar + 1), x);
    } else if (place > 0) {
      fillRectangle(area, colours.grid, x, top, density, bottom - top + 5 * density);
      if (beatWidth >= kLeastBeatName * density) {
        write(area, colours.faint, 400, `${bar + 1}.${place + 1}`, x);
      }
    }
  }
}

function write(area, colour, weight, text, x) {
  setFont(area, 11, weight);
  area.context.fillStyle = colour;
  area.context.fillText(text, x + 5 * area.density, area.bottom + 6 * area.density);
}

function drawWaves(area, loop) {
  const { density, colours, width, top, bottom } = area;
  const gap = kChannelGap * density;
  const channels = loop.peaks.length;
  const room = (bottom - top - gap * (channels + 1)) / channels;
  // Quiet loops fill the picture too, and keep the relation of their channels.
  const loudest = Math.max(...loop.peaks.map(({ low, high }) =>
    Math.max(high.reduce((a, b) => Math.max(a, b)), -low.reduce((a, b) => Math.min(a, b)))));
  const scale = Math.min(kMostScale, 1 / Math.max(loudest, 1 / kMostScale));
  loop.peaks.forEach((peaks, channel) => {
    const middle = Math.round(top + gap + channel * (room + gap) + room / 2);
    fillRectangle(area, colours.grid, 0, middle, width, Math.max(1, Math.floor(density)));
    const reach = (room / 2) * scale;
    loop.starts.forEach((start, index) => {
      const end = loop.starts[index + 1] ?? 1;
      const shade = index % 2 === 0 ? '' : '-odd';
      const columns = { first: Math.round(start * width), end: Math.round(end * width) };
      drawWave(area, peaks, columns, middle, reach, colours[`wave${shade}`], 'peak');
      drawWave(area, peaks, columns, middle, reach, colours[`wave-core${shade}`], 'core');
    });
  });
}

// A bar for each column of device pixels: from the lowest to the highest sample, or as far as the
// root mean square reaches, but not beyond the samples.
function drawWave({ context, width }, peaks, { first, end }, middle, reach, colour, form) {
  const bins = peaks.low.length;
  context.fillStyle = colour;
  context.beginPath();
  for (let x = first; x < end; ++x) {
    const from = Math.floor((x * bins) / width);
    const to = Math.max(from + 1, Math.floor(((x + 1) * bins) / width));
    let low = 0;
    let high = 0;
    let squares = 0;
    for (let bin = from; bin < to; ++bin) {
      low = Math.min(low, peaks.low[bin]);
      high = Math.max(high, peaks.high[bin]);
      squares += peaks.rms[bin] ** 2;
    }
    if (form === 'core') {
      const rms = Math.sqrt(squares / (to - from));
      low = Math.max(low, -rms);
      high = Math.min(high, rms);
    }
    const y = middle - high * reach;
    context.rect(x, y, 1, Math.max(1, (high - low) * reach));
  }
  context.fill();
}

function drawCuts(area, loop) {
  const { context, density, colours, width, top, bottom } = area;
  let last = -Infinity;
  context.textBaseline = 'alphabetic';
  setFont(area, 10, 500);
  loop.starts.forEach((start, index) => {
    const x = start * width;
    if (x - last < 2 * density) {
      return; // it would only blacken the picture
    }
    last = x;
    fillRectangle(area, colours.cut, x, top - 6 * density, density, bottom - top + 6 * density);
    fillRectangle(area, colours.accent, x, top - 6 * density, 3 * density, 6 * density);
    const number = String(index + 1);
    const end = x + 6 * density + context.measureText(number).width;
    if (end <= (loop.starts[index + 1] ?? 1) * width) {
      context.fillStyle = colours.faint;
      context.fillText(number, x + 6 * density, top - 5 * density);
    }
  });
}
