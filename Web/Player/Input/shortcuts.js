// The computer's keyboard: slices on four rows of eight keys by their place, so that they lie alike
// on every layout, and a few keys that are not letters of those rows.

const kSliceRows = [
  ['KeyQ', 'KeyW', 'KeyE', 'KeyR', 'KeyT', 'KeyY', 'KeyU', 'KeyI'],
  ['KeyA', 'KeyS', 'KeyD', 'KeyF', 'KeyG', 'KeyH', 'KeyJ', 'KeyK'],
  ['KeyZ', 'KeyX', 'KeyC', 'KeyV', 'KeyB', 'KeyN', 'KeyM', 'Comma'],
  ['Digit1', 'Digit2', 'Digit3', 'Digit4', 'Digit5', 'Digit6', 'Digit7', 'Digit8'],
];
const kSliceCodes = kSliceRows.flat();

/** Slices that the keyboard reaches at once: a bank. */
export const kBankSize = kSliceCodes.length;

const kCommands = new Map([
  ['Space', 'toggle'],
  ['Minus', 'slower'],
  ['NumpadSubtract', 'slower'],
  ['Equal', 'faster'],
  ['NumpadAdd', 'faster'],
  ['Digit0', 'ownTempo'],
  ['KeyP', 'tap'],
  ['BracketLeft', 'previousBank'],
  ['BracketRight', 'nextBank'],
]);

/**
 * @param {EventTarget} target
 * @param {object} actions
 * @param {() => boolean} actions.isSliceKeysOn
 * @param {(place: number) => void} actions.slice a slice of the bank, from 0
 * @param {(name: string, isFine: boolean) => void} actions.command one of kCommands' names; with
 *        Shift `isFine`
 */
export function listenToKeys(target, actions) {
  target.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey || isTyping(event.target)) {
      return;
    }
    const place = kSliceCodes.indexOf(event.code);
    const command = kCommands.get(event.code);
    if (command === 'toggle' && isOnControl(event.target)) {
      return; // the control takes the space bar
    }
    if (command && (actions.isSliceKeysOn() || command === 'toggle')) {
      event.preventDefault();
      if (!event.repeat || command === 'slower' || command === 'faster') {
        actions.command(command, event.shiftKey);
      }
    } else if (place >= 0 && actions.isSliceKeysOn() && !event.shiftKey) {
      event.preventDefault();
      if (!event.repeat) {
        actions.slice(place);
      }
    }
  });
}

/** What the keys of a bank have printed on them, as far as the browser knows the layout. */
export async function sliceKeyLabels() {
  const layout = await navigator.keyboard?.getLayoutMap?.().catch(() => null);
  return kSliceCodes.map((code) => (layout?.get(code) ?? usLabel(code)).toUpperCase());
}

function usLabel(code) {
  return code === 'Comma' ? ',' : code.replace(/^Key|^Digit/, '');
}

function isTyping(element) {
  return element.matches?.('input:not([type=range], [type=checkbox], [type=file]), textarea, select')
    ?? false;
}

// A control that the person reached by keyboard. One that was clicked keeps the focus, but there the
// space bar means what it means everywhere.
function isOnControl(element) {
  return element.matches?.(':is(button, input, summary, a):focus-visible') ?? false;
}
