/**
 * Takes files that are dropped anywhere on the page.
 *
 * @param {HTMLElement} veil covers the page while files are over it
 * @param {(transfer: DataTransfer) => void} onDrop
 */
export function acceptDrops(veil, onDrop) {
  const show = (isOver) => veil.classList.toggle('over', isOver);
  addEventListener('dragover', (event) => {
    if (event.dataTransfer.types.includes('Files')) {
      event.preventDefault();
      event.dataTransfer.dropEffect = 'copy';
      show(true);
    }
  });
  addEventListener('dragleave', (event) => {
    if (event.relatedTarget === null) {
      show(false);
    }
  });
  addEventListener('drop', (event) => {
    event.preventDefault();
    show(false);
    onDrop(event.dataTransfer);
  });
}
