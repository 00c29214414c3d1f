const kMostSentences = 3;

/** Sentences on files that could not be used, until the person dismisses them. */
export class Notices {
  #root;
  #list;
  #sentences = [];
  #skipped = 0;

  /** @param {HTMLElement} root holds a list and a button; hidden at first */
  constructor(root) {
    this.#root = root;
    this.#list = root.querySelector('ul');
    root.querySelector('button').onclick = () => this.clear();
  }

  add(sentence) {
    this.#sentences.push(sentence);
    this.#show();
  }

  /** Counts a file of a folder that is not a loop: folders hold much else. */
  addSkipped() {
    ++this.#skipped;
    this.#show();
  }

  clear() {
    this.#sentences = [];
    this.#skipped = 0;
    this.#root.hidden = true;
  }

  #show() {
    const lines = this.#sentences.slice(0, kMostSentences);
    const more = this.#sentences.length - lines.length;
    if (more > 0) {
      lines.push(`${more} more could not be opened.`);
    }
    if (this.#skipped > 0) {
      lines.push(this.#skipped === 1
        ? '1 file of the folder is not a loop and was left out.'
        : `${this.#skipped} files of the folder are not loops and were left out.`);
    }
    this.#list.replaceChildren(...lines.map((line) => {
      const item = document.createElement('li');
      item.textContent = line;
      return item;
    }));
    this.#root.hidden = false;
  }
}
