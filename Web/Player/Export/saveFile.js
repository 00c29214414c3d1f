/** Hands a file to the browser's downloads. */
export function saveFile(blob, name) {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(blob);
  link.download = name;
  link.click();
  // The download has its own hold on the file once it has begun.
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}
