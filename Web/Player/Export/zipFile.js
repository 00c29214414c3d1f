import { ByteWriter } from './bytes.js';

const kVersion = 20;
const kUtf8Names = 0x0800;

const kCrcTable = Uint32Array.from({ length: 256 }, (_, byte) => {
  let crc = byte;
  for (let bit = 0; bit < 8; ++bit) {
    crc = crc & 1 ? (crc >>> 1) ^ 0xedb88320 : crc >>> 1;
  }
  return crc;
});

/** CRC-32 as ZIP files have it. */
export function crc32(bytes) {
  let crc = 0xffffffff;
  for (const byte of bytes) {
    crc = (crc >>> 8) ^ kCrcTable[(crc ^ byte) & 0xff];
  }
  return ~crc >>> 0;
}

/**
 * A ZIP file of stored, uncompressed files: audio hardly shrinks.
 *
 * @param {{name: string, bytes: Uint8Array}[]} files at most 65535, of less than 4 GB together
 * @param {Date} date of all files
 * @returns {Blob}
 */
export function zipFile(files, date = new Date()) {
  const parts = [];
  const directory = new ByteWriter();
  let offset = 0;
  for (const { name, bytes } of files) {
    const common = new ByteWriter()
      .little(kVersion, 2).little(kUtf8Names, 2).little(0, 2)
      .little(dosTime(date), 2).little(dosDate(date), 2)
      .little(crc32(bytes), 4).little(bytes.length, 4).little(bytes.length, 4)
      .little(new TextEncoder().encode(name).length, 2).little(0, 2)
      .toArray();
    const header = new ByteWriter().text('PK\x03\x04').raw(common).text(name).toArray();
    directory.text('PK\x01\x02').little(kVersion, 2).raw(common)
      .little(0, 2).little(0, 2).little(0, 2).little(0, 4).little(offset, 4).text(name);
    parts.push(header, bytes);
    offset += header.length + bytes.length;
  }
  const end = new ByteWriter().text('PK\x05\x06').little(0, 2).little(0, 2)
    .little(files.length, 2).little(files.length, 2)
    .little(directory.length, 4).little(offset, 4).little(0, 2).toArray();
  return new Blob([...parts, directory.toArray(), end], { type: 'application/zip' });
}

function dosTime(date) {
  return (date.getHours() << 11) | (date.getMinutes() << 5) | (date.getSeconds() >> 1);
}

function dosDate(date) {
  return ((date.getFullYear() - 1980) << 9) | ((date.getMonth() + 1) << 5) | date.getDate();
}
