// Pictures that tests make for themselves.
import { deflateSync } from 'node:zlib';

// What a camera says that was held upright on its side.
export const turnedRight = Buffer.from('MM\0*\0\0\0\b\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0', 'latin1');

// PNG's own checksum, which not every Node.js has.
function crc32(bytes) {
  let sum = 0xffffffff;
  for (const byte of bytes) {
    sum ^= byte;
    for (let bit = 0; bit < 8; ++bit) sum = (sum >>> 1) ^ (sum & 1 ? 0xedb88320 : 0);
  }
  return ~sum >>> 0;
}

export function pngChunk(name, content) {
  const named = Buffer.concat([Buffer.from(name, 'latin1'), content]);
  const chunk = Buffer.alloc(content.length + 12);
  chunk.writeUInt32BE(content.length);
  named.copy(chunk, 4);
  chunk.writeUInt32BE(crc32(named), content.length + 8);
  return chunk;
}

// A black picture; one that is too large to be made only claims its size. `more`: chunks in front of its pixels.
export function pngOf(width, height, more = []) {
  const head = Buffer.alloc(13);
  head.writeUInt32BE(width);
  head.writeUInt32BE(height, 4);
  head[8] = 8; // bits; one colour
  const isClaim = width * height > 10_000_000;
  const pixels = deflateSync(isClaim ? Buffer.alloc(10) : Buffer.alloc((width + 1) * height));
  return Buffer.concat([
    Buffer.from('\x89PNG\r\n\x1a\n', 'latin1'),
    pngChunk('IHDR', head),
    ...more,
    pngChunk('IDAT', pixels),
    pngChunk('IEND', Buffer.alloc(0)),
  ]);
}
