// What a list of loops shows beyond LoopLibrary.readInfo: the kind of file and its first creator
// text, from the headers alone. Damaged texts are not a reason to leave a loop out of the list, so
// nothing here throws on the bytes of a file.

const kLegacyKinds = { 'TeSl': '.tsl', 'LOP ': '.lop' };
const kLongTextMark = 0xffffffff;
const kVersionMagic = 188;

function fourChars(view, at) {
  return String.fromCharCode(
    view.getUint8(at), view.getUint8(at + 1), view.getUint8(at + 2), view.getUint8(at + 3));
}

/** Whether the first bytes may be those of a loop file; 12 of them are enough. */
export function mayBeLoop(bytes) {
  if (bytes.byteLength < 12) {
    return false;
  }
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  const group = fourChars(view, 0) + fourChars(view, 8);
  return group === 'CAT LOP2' || group === 'FORMAIFF';
}

/**
 * A LOP2 file up to its audio, as a file of its own with no audio in it: LoopLibrary.readInfo takes it like
 * the whole one. null when more than these first bytes is needed: for the older kinds, many slices, or a
 * size that is not the file's.
 */
export function headOf(bytes, fileSize) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  if (fourChars(view, 0) !== 'CAT ' || view.getUint32(4) + 8 !== fileSize) {
    return null;
  }
  for (let at = 12; at + 8 <= view.byteLength;) {
    if (fourChars(view, at) === 'SDAT') {
      const head = bytes.slice(0, at + 8);
      const sizes = new DataView(head.buffer);
      sizes.setUint32(4, at);
      sizes.setUint32(at + 4, 0);
      return head;
    }
    at += 8 + view.getUint32(at + 4);
    at += at & 1;
  }
  return null;
}

/** 'LOP2', '.tsl' or '.lop' of a file that LoopLibrary.readInfo has taken. */
export function kindOf(bytes) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  if (fourChars(view, 0) === 'CAT ') {
    return 'LOP2';
  }
  for (const chunk of chunksOf(view)) {
    if (chunk.id === 'APPL') {
      return kLegacyKinds[fourChars(view, chunk.start)] ?? '';
    }
  }
  return '';
}

/** The first creator text that is not empty, its lines separated by "\n"; '' if there is none. */
export function firstText(bytes) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  try {
    for (const chunk of chunksOf(view)) {
      if (chunk.id === 'CREI') {
        return readTexts(view, chunk).find((text) => text !== '') ?? '';
      }
    }
  } catch (error) {
    if (!(error instanceof RangeError || error instanceof TypeError)) {
      throw error; // RangeError: cut off; TypeError: not UTF-8
    }
  }
  return '';
}

// The chunks of the one group of a file: {id, start, end}. A chunk begins at an even place.
function* chunksOf(view) {
  for (let at = 12; at + 8 <= view.byteLength;) {
    const start = at + 8;
    const end = start + view.getUint32(at + 4);
    if (end > view.byteLength) {
      return;
    }
    yield { id: fourChars(view, at), start, end };
    at = end + (end & 1);
  }
}

function readTexts(view, chunk) {
  const texts = [];
  let at = chunk.start;
  while (at < chunk.end && texts.length < 5) {
    let size = view.getUint32(at);
    let encoding = 'windows-1252';
    at += 4;
    if (size === kLongTextMark) {
      encoding = 'utf-8';
      at += versionSize(view, at);
      size = view.getUint32(at);
      at += 4;
    }
    const stored = new Uint8Array(view.buffer, view.byteOffset + at, Math.min(size, chunk.end - at));
    const zero = stored.indexOf(0);
    const text = new TextDecoder(encoding, { fatal: true })
      .decode(zero < 0 ? stored : stored.subarray(0, zero));
    texts.push(text.replace(/\r\n?|\u2029/g, '\n').trim());
    at += size;
  }
  return texts;
}

// A short version stands in 5 bytes; four bytes of 255 announce 24 more.
function versionSize(view, at) {
  if (view.getUint8(at) !== kVersionMagic) {
    throw new RangeError('no version record');
  }
  return view.getUint32(at + 1) === 0xffffffff ? 29 : 5;
}
