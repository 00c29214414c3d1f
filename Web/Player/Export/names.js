// Names of exported files, the same as looptool gives them.

/** "drums_slice_007.wav" of "drums.lop2". */
export function sliceFileName(stem, index, count) {
  const digits = Math.max(3, String(Math.max(count - 1, 0)).length);
  return `${stem}_slice_${String(index).padStart(digits, '0')}.wav`;
}

/** The name of a file without its suffix, as an .sfz can hold it: its lines know no quotes. */
export function plainStem(fileName) {
  return fileName.replace(/(?<=.)\.[^.]*$/, '').replace(/[<>=$#\\/:*?"|\u0000-\u001f]/g, '_');
}
