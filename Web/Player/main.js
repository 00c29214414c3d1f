// Puts the page together: what the person does on one side, the worker, the sound and the views on
// the other.

import { plainStem, sliceFileName } from './Export/names.js';
import { saveFile } from './Export/saveFile.js';
import { sliceOfNote } from './Export/sliceKeys.js';
import { acceptDrops } from './Input/dropTarget.js';
import { hasMidi, listenToMidi } from './Input/midiInput.js';
import { listenToKeys } from './Input/shortcuts.js';
import { demoFiles } from './Library/demoFiles.js';
import { droppedFiles, pickedFiles } from './Library/droppedFiles.js';
import { failureText } from './Library/failureText.js';
import { HeaderQueue } from './Library/HeaderQueue.js';
import { LoopClient } from './Library/LoopClient.js';
import { processorUrl, startWorker, wasm } from './Library/parts.js';
import { LoopLibrary } from './looplibrary/index.js';
import { Player } from './Sound/Player.js';
import { Announcer } from './View/Announcer.js';
import { LoopTable } from './View/LoopTable.js';
import { Notices } from './View/Notices.js';
import { countText, factsText, tempoText } from './View/numbers.js';
import { Stage } from './View/Stage.js';
import { TempoControl } from './View/TempoControl.js';

const kMostVelocity = 127;

const byId = (id) => document.getElementById(id);

const client = new LoopClient(startWorker());
client.init(wasm).catch((failure) => notices.add(failureText('The library', failure)));
LoopLibrary.init({ wasm }).catch(() => {}); // on this thread for the audio worklet
const headers = new HeaderQueue(client);
const announcer = new Announcer(byId('spoken'));
const notices = new Notices(byId('notices'));
const table = new LoopTable(byId('loops'), choose, showCounts);
const tempo = new TempoControl(byId('tempo-control'), changeTempo);
const stage = new Stage(byId('stage'), {
  togglePlay,
  strike: (index) => strike(index),
  getPosition: () => player.getHeardPosition(),
});

/** What sounds. Made with the page, and silent until the person does something. */
export const player = new Player(makeContext(), processorUrl);

let current = null; // {entry, info, slices} of the loop that is open
let lastSlice = 0;
let opening = 0;
let loading = Promise.resolve();
let reading = 0; // drops whose files are still being read
const known = new Map(); // entries by what tells files apart

// -- Files ----------------------------------------------------------------------------------------

async function addFiles(sources) {
  let added = 0;
  let refused = 0;
  const onHeader = (source, header) => {
    const entry = entryOf(source, header);
    if (++added === 1) {
      byId('welcome').hidden = true;
      byId('library').hidden = false;
      byId('main').classList.add('has-loops');
      open(entry);
    }
  };
  const onFailure = (source, failure) => {
    ++refused;
    if (failure.name === 'NotALoop' && !source.isChosen) {
      notices.addSkipped();
    } else {
      notices.add(failureText(source.path, failure));
    }
  };
  notices.clear();
  ++reading;
  try {
    await headers.read(sources, onHeader, onFailure);
  } catch (error) {
    onFailure({ path: 'A file', isChosen: true }, error);
  }
  --reading;
  table.report();
  if (added + refused === 0) {
    notices.add('There were no files in what you dropped or chose.');
    announcer.say('There were no files.');
  }
  if (added > 1 || refused > 0) { // one alone is told when it is open
    const why = byId('notices').querySelector('ul').innerText;
    announcer.saySettled(`${countText(added, 'loop')} added. ${refused > 0 ? why : ''}`);
  }
}

// A file that is dropped again is not listed again.
function entryOf(source, header) {
  const key = `${source.path}\n${source.file.size}\n${source.file.lastModified}`;
  if (!known.has(key)) {
    known.set(key, { ...source, header });
    table.add(known.get(key));
  }
  return known.get(key);
}

function showCounts({ shown, all }) {
  const text = shown === all ? countText(all, 'loop') : `${shown} of ${all}`;
  byId('count').textContent = reading > 0 ? `${text}, reading …` : text;
}

// -- Loops ----------------------------------------------------------------------------------------

// A row was activated: that loop, or playing if it is the one already.
function choose(entry) {
  if (entry === current?.entry) {
    togglePlay();
  } else {
    open(entry);
  }
}

async function open(entry) {
  const ticket = ++opening;
  table.setCurrent(entry);
  stage.setBusy(true);
  try {
    const loop = await client.open(entry.file, player.sampleRate);
    // One loop after another, and only the last of those that were asked for.
    loading = loading.then(() => (ticket === opening ? show(entry, loop) : undefined));
    await loading;
  } catch (failure) {
    loading = Promise.resolve();
    notices.add(failureText(entry.path, failure));
    announcer.say(failureText(entry.path, failure));
    table.setCurrent(current?.entry ?? null);
  } finally {
    stage.setBusy(opening !== ticket);
  }
}

async function show(entry, loop) {
  const { info, slices } = loop;
  const name = entry.path.split('/').at(-1);
  tempo.setOwn(info.storedTempo);
  await player.load(loop, tempo.tempo);
  current = { entry, name, info, slices };
  stage.show(name, loop);
  setLastSlice(0);
  byId('save-slice').disabled = slices.length === 0;
  document.title = `${name} · Loop Player`;
  announcer.say(`${name}: ${tempoText(info.storedTempo)} beats per minute, `
    + factsText(info, slices.length));
}

// -- Sound ----------------------------------------------------------------------------------------

// Without any audio device, a silent one: loops are shown and saved all the same.
function makeContext() {
  try {
    return new AudioContext({ latencyHint: 'interactive' });
  } catch {
    return new OfflineAudioContext({ numberOfChannels: 2, length: 1, sampleRate: 48000 });
  }
}

async function togglePlay() {
  if (current === null) {
    return;
  }
  if (player.isPlaying) {
    player.stop();
    announcer.say('Stopped');
  } else {
    try {
      if (player.context instanceof OfflineAudioContext) {
        throw Object.assign(new Error('no audio context'), { name: 'NoSound' });
      }
      await player.play();
      if (player.isPlaying) {
        announcer.say(`Playing at ${tempoText(tempo.tempo)} beats per minute`);
      }
    } catch (failure) {
      notices.add(failureText(current.name, failure));
      announcer.say(failureText(current.name, failure));
    }
  }
  stage.setPlaying(player.isPlaying);
}

function changeTempo(value) {
  player.setTempo(value);
  announcer.saySettled(`${tempoText(value)} beats per minute`);
}

function strike(index, level) {
  if (index >= 0 && index < current.slices.length) {
    player.playSlice(index, level);
    stage.pads.flash(index);
    setLastSlice(index);
  }
}

byId('volume').oninput = ({ target }) => {
  player.setVolume(target.valueAsNumber ** 2); // ears hear ratios
  target.style.setProperty('--place', target.value);
};
byId('volume').oninput({ target: byId('volume') });

// -- Downloads ------------------------------------------------------------------------------------

function setLastSlice(index) {
  lastSlice = index;
  byId('save-slice').firstChild.textContent = `Save slice ${index + 1} `;
}

async function save(button, make, fileName) {
  button.disabled = true;
  try {
    saveFile(await make(), fileName);
    announcer.say(`${fileName} saved`);
  } catch (failure) {
    notices.add(failureText(current.name, failure));
  } finally {
    button.disabled = false;
  }
}

byId('save-all').onclick = ({ currentTarget }) => {
  const { entry, name } = current;
  save(currentTarget, () => client.exportLoop(entry.file, name, tempo.tempo),
    `${plainStem(name)}.zip`);
};
byId('save-slice').onclick = ({ currentTarget }) => {
  const { entry, name, slices } = current;
  save(currentTarget, () => client.exportSlice(entry.file, lastSlice),
    sliceFileName(plainStem(name), lastSlice, slices.length));
};

// -- What the person does -------------------------------------------------------------------------

const commands = {
  toggle: togglePlay,
  slower: (isFine) => tempo.step(-1, isFine),
  faster: (isFine) => tempo.step(1, isFine),
  ownTempo: () => tempo.useOwn(),
  tap: () => tempo.tap(performance.now()),
  previousBank: () => stage.pads.moveBank(-1),
  nextBank: () => stage.pads.moveBank(1),
};

listenToKeys(window, {
  isSliceKeysOn: () => current !== null && byId('slice-keys').checked,
  slice: (place) => strike(stage.pads.sliceAt(place)),
  command: (name, isFine) => commands[name](isFine),
});

acceptDrops(byId('veil'), (transfer) => addFiles(droppedFiles(transfer)));
for (const [input, ...buttons] of [
  ['file-input', 'open-files', 'welcome-files'],
  ['folder-input', 'open-folder'],
]) {
  for (const button of buttons) {
    byId(button).onclick = () => byId(input).click();
  }
  byId(input).onchange = ({ target }) => {
    addFiles(pickedFiles([...target.files]));
    target.value = ''; // the same files may be chosen again
  };
}
byId('welcome-demo').onclick = () => addFiles(demoFiles());
byId('filter').oninput = ({ target }) => table.setFilter(target.value);

byId('midi').hidden = !hasMidi();
byId('midi-status').hidden = !hasMidi();
byId('midi').onclick = async () => {
  try {
    await listenToMidi(onNote, showMidiInputs);
    byId('midi').hidden = true;
  } catch {
    showMidiStatus('The browser did not give access to MIDI.');
  }
};

function onNote(note) {
  if (current !== null) {
    strike(sliceOfNote(note, current.slices.length), note.velocity / kMostVelocity);
  }
}

function showMidiInputs(names) {
  showMidiStatus(names.length === 0
    ? 'MIDI is on: connect a keyboard and play from C1.'
    : `MIDI from ${names.join(', ')}: slices begin at C1.`);
}

function showMidiStatus(text) {
  byId('midi-status').textContent = text;
  announcer.say(text);
}
