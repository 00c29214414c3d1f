/** Headers that the worker has at hand at once: an opened loop waits for no more than these. */
const kMostWaiting = 16;

/**
 * Reads the headers of any number of files and reports each, in the order of the files.
 *
 * @param {import('./LoopClient.js').LoopClient} client
 */
export class HeaderQueue {
  #client;
  #running = 0;
  #waiters = [];

  constructor(client) {
    this.#client = client;
  }

  /**
   * @param {AsyncIterable<{file: File, path: string, isChosen: boolean, failure: Error}>} sources
   * @param {(source, header) => void} onHeader
   * @param {(source, failure) => void} onFailure
   */
  async read(sources, onHeader, onFailure) {
    let reported = Promise.resolve();
    for await (const source of sources) {
      await this.#waitForRoom();
      const outcome = this.#readOne(source);
      reported = reported.then(async () => {
        const { header, failure } = await outcome;
        if (failure) {
          onFailure(source, failure);
        } else {
          onHeader(source, header);
        }
      });
    }
    await reported;
  }

  async #readOne({ file, failure }) {
    if (failure) {
      return { failure };
    }
    ++this.#running;
    try {
      return { header: await this.#client.readHeader(file) };
    } catch (error) {
      return { failure: error };
    } finally {
      --this.#running;
      this.#waiters.shift()?.();
    }
  }

  async #waitForRoom() {
    while (this.#running >= kMostWaiting) {
      await new Promise((resolve) => this.#waiters.push(resolve));
    }
  }
}
