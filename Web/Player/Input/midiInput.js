const kNoteOn = 0x90;

/** Whether the browser can listen to MIDI at all. */
export function hasMidi() {
  return typeof navigator.requestMIDIAccess === 'function';
}

/**
 * Listens to all MIDI inputs, also those that are plugged in later. Rejects when the person or the
 * browser refuses.
 *
 * @param {(note: {channel: number, key: number, velocity: number}) => void} onNote velocity 1 to 127
 * @param {(names: string[]) => void} onInputs the inputs' names, at first and after each change
 */
export async function listenToMidi(onNote, onInputs) {
  const access = await navigator.requestMIDIAccess();
  const onMessage = ({ data: [status, key, velocity] }) => {
    if ((status & 0xf0) === kNoteOn && velocity > 0) {
      onNote({ channel: status & 0x0f, key, velocity });
    }
  };
  const update = () => {
    const inputs = [...access.inputs.values()].filter((input) => input.state === 'connected');
    for (const input of inputs) {
      input.onmidimessage = onMessage;
    }
    onInputs(inputs.map((input) => input.name ?? 'MIDI input'));
  };
  access.onstatechange = update;
  update();
}
