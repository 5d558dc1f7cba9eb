// Sounds for the rooms, and what the rooms recorded.
import { readFileSync, writeFileSync } from 'node:fs';

export const rate = 48000;

// `frames` frames of one channel; the first and the last are full strokes, so that none of them can be missed.
export function clip(frames) {
  const samples = new Int16Array(frames);
  for (let frame = 0; frame < frames; ++frame) samples[frame] = Math.round(9000 * Math.sin(frame / 11)) || 1;
  samples[0] = samples[frames - 1] = 30000;
  return samples;
}

// A whole WAV file of one channel.
export function wavFile(samples, samplesASecond = rate) {
  const head = Buffer.alloc(44);
  head.write('RIFF', 0);
  head.writeUInt32LE(36 + samples.byteLength, 4);
  head.write('WAVEfmt ', 8);
  head.writeUInt32LE(16, 16);
  head.writeUInt16LE(1, 20);
  head.writeUInt16LE(1, 22);
  head.writeUInt32LE(samplesASecond, 24);
  head.writeUInt32LE(samplesASecond * 2, 28);
  head.writeUInt16LE(2, 32);
  head.writeUInt16LE(16, 34);
  head.write('data', 36);
  head.writeUInt32LE(samples.byteLength, 40);
  return Buffer.concat([head, Buffer.from(samples.buffer)]);
}

export function writeSound(file, samples) {
  writeFileSync(file, wavFile(samples));
}

// The left channel of a recording; 16 bits.
export function readRecording(file) {
  const bytes = readFileSync(file);
  let channels = 0;
  for (let at = 12; at + 8 <= bytes.length;) {
    const kind = bytes.toString('latin1', at, at + 4);
    const size = Math.min(bytes.readUInt32LE(at + 4), bytes.length - at - 8);
    if (kind === 'fmt ') {
      channels = bytes.readUInt16LE(at + 10);
      if (bytes.readUInt16LE(at + 22) !== 16) throw new Error(`${file} has not 16 bits`);
    }
    if (kind === 'data') {
      const left = [];
      for (let sample = at + 8; sample + 2 * channels <= at + 8 + size; sample += 2 * channels)
        left.push(bytes.readInt16LE(sample));
      return left;
    }
    at += 8 + size + (size % 2);
  }
  throw new Error(`${file} holds no sound`);
}

// Where sound begins and ends in a recording, and that what lies between is `samples` at the gain of `volume`.
export function heard(recording, samples, volume) {
  const first = recording.findIndex((sample) => sample !== 0);
  const last = recording.length - 1 - [...recording].reverse().findIndex((sample) => sample !== 0);
  const gain = (volume / 100) ** 3;
  const isWhole =
    first >= 0 &&
    last - first + 1 === samples.length &&
    samples.every((sample, frame) => Math.abs(recording[first + frame] - sample * gain) <= 1.5);
  return { first, last, isWhole, tail: recording.length - 1 - last };
}
