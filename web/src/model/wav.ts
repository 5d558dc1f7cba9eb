// Sound as the controller takes it from every page: a WAV file of 16 bits.

const HEAD = 44;
const FADE_MS = 4; // a cut in mid-sound would be heard as a click

/** What of an `AudioBuffer` is needed here. */
export interface Samples {
  readonly sampleRate: number;
  readonly length: number;
  readonly numberOfChannels: number;
  getChannelData(channel: number): Float32Array;
}

export const lengthOf = (sound: Samples): number => Math.round((1000 * sound.length) / sound.sampleRate);

/** The file that holds what lies between these milliseconds; what is louder than a file can hold is cut off. */
export function wavOf(sound: Samples, from = 0, to = Infinity): ArrayBuffer {
  const first = frameAt(sound, from);
  const end = to >= lengthOf(sound) ? sound.length : frameAt(sound, to);
  const frames = Math.max(0, end - first);
  const channels = Math.min(2, sound.numberOfChannels);
  const file = new ArrayBuffer(HEAD + 2 * channels * frames);
  const view = new DataView(file);
  writeHead(view, channels, sound.sampleRate, frames);
  const fade = Math.round((FADE_MS * sound.sampleRate) / 1000);
  const edges = { begin: first > 0 ? fade : 0, end: end < sound.length ? fade : 0 };
  for (let channel = 0; channel < channels; channel += 1) {
    const samples = sound.getChannelData(channel);
    for (let frame = 0; frame < frames; frame += 1) {
      const gain = gainAt(frame, frames, edges);
      const value = Math.max(-1, Math.min(1, (samples[first + frame] ?? 0) * gain));
      view.setInt16(HEAD + 2 * (frame * channels + channel), Math.round(value * 32767), true);
    }
  }
  return file;
}

/** A part of a decoded sound, as it is brought into the media folder. */
export const fileOf = (sound: Samples, part: { from: number; to: number }): Blob =>
  new Blob([wavOf(sound, part.from, part.to)], { type: 'audio/wav' });

const frameAt = (sound: Samples, milliseconds: number): number =>
  Math.max(0, Math.min(sound.length, Math.round((milliseconds * sound.sampleRate) / 1000)));

function gainAt(frame: number, frames: number, edges: { begin: number; end: number }): number {
  const rising = edges.begin > 0 ? (frame + 1) / edges.begin : 1;
  const falling = edges.end > 0 ? (frames - frame) / edges.end : 1;
  return Math.min(1, rising, falling);
}

function writeHead(view: DataView, channels: number, rate: number, frames: number): void {
  const text = (at: number, letters: string): void =>
    Array.from(letters).forEach((letter, index) => view.setUint8(at + index, letter.charCodeAt(0)));
  const bytes = 2 * channels * frames;
  text(0, 'RIFF');
  view.setUint32(4, HEAD - 8 + bytes, true);
  text(8, 'WAVEfmt ');
  view.setUint32(16, 16, true);
  view.setUint16(20, 1, true);
  view.setUint16(22, channels, true);
  view.setUint32(24, rate, true);
  view.setUint32(28, 2 * channels * rate, true);
  view.setUint16(32, 2 * channels, true);
  view.setUint16(34, 16, true);
  text(36, 'data');
  view.setUint32(40, bytes, true);
}
