import { describe, expect, it } from 'vitest';
import { levelOf, meterAfter } from '../src/model/level';
import { firstPart, moved, positionText, withFrom, withTo } from '../src/model/trim';
import { lengthOf, wavOf, type Samples } from '../src/model/wav';

function sound(rate: number, ...channels: number[][]): Samples {
  return {
    sampleRate: rate,
    length: channels[0]?.length ?? 0,
    numberOfChannels: channels.length,
    getChannelData: (channel) => new Float32Array(channels[channel] ?? []),
  };
}

function read(file: ArrayBuffer): { head: unknown[]; samples: number[] } {
  const view = new DataView(file);
  const text = (at: number): string => String.fromCharCode(...new Uint8Array(file, at, 4));
  const head = [
    text(0),
    view.getUint32(4, true),
    text(8),
    text(12),
    view.getUint32(16, true),
    view.getUint16(20, true),
    view.getUint16(22, true),
    view.getUint32(24, true),
    view.getUint32(28, true),
    view.getUint16(32, true),
    view.getUint16(34, true),
    text(36),
    view.getUint32(40, true),
  ];
  return { head, samples: [...new Int16Array(file.slice(44))] };
}

describe('a WAV file', () => {
  it('holds the samples of each channel in turn, and says truly what it holds', () => {
    const { head, samples } = read(wavOf(sound(48000, [0, 0.5, 1], [-1, 2, -2])));
    expect(head).toEqual(['RIFF', 48, 'WAVE', 'fmt ', 16, 1, 2, 48000, 192000, 4, 16, 'data', 12]);
    expect(samples).toEqual([0, -32767, 16384, 32767, 32767, -32767]);
  });

  it('has two channels at most, and nothing of what lies outside of the part', () => {
    const one = sound(1000, ...[1, 2, 3].map((channel) => Array.from({ length: 100 }, () => channel / 10)));
    expect(lengthOf(one)).toBe(100);
    const { head, samples } = read(wavOf(one, 20, 60));
    expect([head[6], head[12], samples.length]).toEqual([2, 160, 80]);
    expect(read(wavOf(one, 90, 500)).samples.length).toBe(20);
    expect(read(wavOf(one, 50, 20)).samples).toEqual([]);
  });

  it('rises and falls softly where it was cut, and only there', () => {
    const one = sound(1000, [1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1]);
    expect(read(wavOf(one, 0, 8)).samples).toEqual([32767, 32767, 32767, 32767, 32767, 24575, 16384, 8192]);
    expect(read(wavOf(one, 4)).samples).toEqual([8192, 16384, 24575, 32767, 32767, 32767, 32767, 32767]);
  });
});

describe('the part that is kept', () => {
  it('is all of a short sound, and the first 20 seconds of a long one', () => {
    expect([firstPart(3000), firstPart(90000)]).toEqual([
      { from: 0, to: 3000 },
      { from: 0, to: 20000 },
    ]);
  });

  it('is never longer than 20 seconds: a handle takes the other one along', () => {
    expect(withFrom({ from: 0, to: 20000 }, 30000.4, 90000)).toEqual({ from: 30000, to: 30100 });
    expect(withFrom({ from: 30000, to: 45000 }, 10000, 90000)).toEqual({ from: 10000, to: 30000 });
    expect(withTo({ from: 0, to: 20000 }, 50000, 90000)).toEqual({ from: 30000, to: 50000 });
  });

  it('keeps its handles apart, and in the sound', () => {
    expect(withFrom({ from: 0, to: 5000 }, 99999, 5000)).toEqual({ from: 4900, to: 5000 });
    expect(withTo({ from: 4000, to: 5000 }, -5, 5000)).toEqual({ from: 0, to: 100 });
    expect(withTo({ from: 0, to: 50 }, 10, 50)).toEqual({ from: 0, to: 50 });
  });

  it('moves as a whole, and stops at both ends', () => {
    const part = { from: 1000, to: 3000 };
    expect([moved(part, 500, 9000), moved(part, -5000, 9000), moved(part, 50000, 9000)]).toEqual([
      { from: 1500, to: 3500 },
      { from: 0, to: 2000 },
      { from: 7000, to: 9000 },
    ]);
  });

  it('is told in minutes and seconds', () => {
    expect([0, 2540, 59960, 62500].map(positionText)).toEqual(['0:00.0', '0:02.5', '1:00.0', '1:02.5']);
  });
});

describe('the level of a microphone', () => {
  it('is nothing in silence and all at full stroke, evenly in decibels between', () => {
    expect([levelOf([]), levelOf([0, 0]), levelOf([0.001]), levelOf([-1, 0.2]), levelOf([3])]).toEqual([0, 0, 0, 1, 1]);
    expect(levelOf([10 ** (-27 / 20)])).toBeCloseTo(0.5);
  });

  it('rises at once and falls slowly', () => {
    expect(meterAfter(0.2, 0.9, 16)).toBe(0.9);
    expect(meterAfter(0.9, 0, 100)).toBeCloseTo(0.78);
    expect(meterAfter(0.1, 0, 5000)).toBe(0);
  });
});
