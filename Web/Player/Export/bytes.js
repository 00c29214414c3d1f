/** Bytes of a file in the making. Numbers are unsigned and at most 32 bits wide. */
export class ByteWriter {
  #bytes = [];

  get length() {
    return this.#bytes.length;
  }

  text(text) {
    this.#bytes.push(...new TextEncoder().encode(text));
    return this;
  }

  little(value, width) {
    for (let i = 0; i < width; ++i) {
      this.#bytes.push((value >>> (8 * i)) & 0xff);
    }
    return this;
  }

  big(value, width) {
    for (let i = width - 1; i >= 0; --i) {
      this.#bytes.push((value >>> (8 * i)) & 0xff);
    }
    return this;
  }

  raw(bytes) {
    for (const byte of bytes) {
      this.#bytes.push(byte);
    }
    return this;
  }

  toArray() {
    return Uint8Array.from(this.#bytes);
  }
}
