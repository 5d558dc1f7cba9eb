import { describe, expect, it } from 'vitest';
import names from '../../tests/controller/media/names.json';
import type { Announcement } from '../src/api/objects';
import { blank } from '../src/model/draft';
import { bytes, listing, loudnessText, seconds, soundOf } from '../src/model/format';
import { dayAndMinute, refusalOf, safeName, soundFileName } from '../src/model/media';
import { peaksIn } from '../src/model/peaks';
import { routeOf } from '../src/model/route';
import { sizesFor } from '../src/model/screens';
import { matching } from '../src/model/search';

describe('words and numbers', () => {
  it('are what people say', () => {
    expect([0, 500, 1500, 12345, 150000].map(seconds)).toEqual(['0 s', '0.5 s', '1.5 s', '12 s', '2 min 30 s']);
    expect([999, 1500, 2500000].map(bytes)).toEqual(['999 bytes', '2 kB', '2.5 MB']);
    expect(['chime', '.test-tone', '.speech-16'].map(soundOf)).toEqual(['chime', 'test tone', 'spoken sound']);
    expect([listing([]), listing(['a']), listing(['a', 'b', 'c'])]).toEqual(['', 'a', 'a, b and c']);
  });
});

describe('the loudness of a sound', () => {
  it('is told with what is made of it', () => {
    const text = (lufs: number | null, gain: number | null): string =>
      loudnessText({ lufs, gain, true_peak: -1, as_it_is: false });
    expect([text(-18.27, 2.27), text(-9.04, -6.96), text(-16.04, 0.04), text(null, 0)]).toEqual([
      '-18.3 LUFS, is played 2.3 dB louder',
      '-9 LUFS, is played 7 dB quieter',
      '-16 LUFS, is played as it is',
      'Too quiet to be measured',
    ]);
  });
});

describe('the sizes of a preview', () => {
  const screen = { room: 1, pages: 1, awake: true, popup: null, armed: null };
  const screens = new Map([
    [11, { ...screen, id: 11, name: 'Hall', size: { width: 1280, height: 720 } }],
    [12, { ...screen, id: 12, name: 'Bath', pages: 0, size: null }],
    [13, { ...screen, id: 13, name: 'Attic', size: { width: 800, height: 480 } }],
  ]);
  const usual = ['tablet', 'upright', 'television', 'phone'];
  const keys = (...ids: number[]): string[] => {
    const navigators = ids.map((id) => ({ id, room: 1, onscreen: true }));
    return sizesFor({ ...blank(), navigators }, screens).map(({ key }) => key);
  };

  it('are those of its own screens that are open, before the usual ones', () => {
    expect(keys(12, 11)).toEqual(['screen 11', ...usual]);
    expect(keys(13, 11)).toEqual(['screen 13', 'screen 11', ...usual]);
    const [first] = sizesFor({ ...blank(), navigators: [{ id: 11, room: 1, onscreen: true }] }, screens);
    expect(first).toEqual({ key: 'screen 11', name: 'Hall, 1280 × 720', width: 1280, height: 720 });
  });

  it('are the usual ones where no screen of it is open, or is there at all', () => {
    expect([keys(), keys(12), keys(99)]).toEqual([usual, usual, usual]);
  });
});

describe('names of files', () => {
  it('become such as the media folder takes', () => {
    // The controller is held against the same list.
    expect(names.map(([given = '']) => safeName(given))).toEqual(names.map(([, good]) => good));
    expect(names.map(([given = '']) => soundFileName(given))).toEqual(names.map(([, , sound]) => sound));
  });

  it('end as the sound does that becomes of them', () => {
    expect(['My song.MP3', 'memo.m4a', 'a.b', 'Gong (2)', 'x.wav'].map(soundFileName)).toEqual([
      'My-song.wav',
      'memo.wav',
      'a.wav',
      'Gong-2.wav',
      'x.wav',
    ]);
    expect(dayAndMinute(new Date(2026, 2, 1, 4, 5))).toBe('2026-03-01 04-05');
  });

  it('are refused by kind, and images by size', () => {
    for (const name of ['a.wav', 'a.MP3', 'a.m4a', 'a.opus', 'a.aiff'])
      expect(refusalOf({ name, size: 10 }, 'sound')).toBe('');
    expect(refusalOf({ name: 'memo', size: 10, type: 'audio/amr' }, 'any')).toBe('');
    expect(refusalOf({ name: 'a.png', size: 10 }, 'sound')).toMatch(/no sound/);
    expect(refusalOf({ name: 'a.pdf', size: 10, type: 'application/pdf' }, 'any')).toMatch(/neither a sound nor/);
    expect(refusalOf({ name: 'a.wav', size: 10 }, 'image')).toMatch(/only PNG/);
    expect(refusalOf({ name: 'a.wav', size: 40e6 }, 'any')).toBe('');
    expect(refusalOf({ name: 'a.png', size: 40e6 }, 'any')).toMatch(/at most 32 MB/);
  });
});

describe('the address', () => {
  it('names the view', () => {
    expect(routeOf('')).toEqual({ place: 'announcements' });
    expect(routeOf('#/house')).toEqual({ place: 'house' });
    expect(routeOf('#/announcements/12')).toEqual({ place: 'announcements', editing: 12 });
    expect(routeOf('#/announcements/new')).toEqual({ place: 'announcements', editing: null });
    expect(routeOf('#/announcements/new?copy=7')).toEqual({ place: 'announcements', editing: null, copyOf: 7 });
    expect(routeOf('#/announcements/x')).toEqual({ place: 'announcements' });
  });
});

describe('searching', () => {
  const all: Announcement[] = [
    { ...blank(), id: 1, name: 'Café' },
    { ...blank(), id: 2, name: 'Bus' },
  ];
  it('wants every word somewhere, marks or not', () => {
    const ids = (words: string) => matching(all, words, (one) => (one.id === 2 ? 'Kitchen' : '')).map((one) => one.id);
    expect([ids(' '), ids('CAFE'), ids('kitch bus'), ids('bus cafe')]).toEqual([[1, 2], [1], [2], []]);
  });
});

describe('the picture of a sound', () => {
  it('has the loudest of each part', () => {
    expect(peaksIn([0, -0.5, 0.25, 0.1, 2, 0], 3)).toEqual([0.5, 0.25, 1]);
    expect(peaksIn([], 2)).toEqual([0, 0]);
  });
});
