import { describe, expect, it } from 'vitest';
import names from '../../tests/controller/media/names.json';
import type { Announcement } from '../src/api/objects';
import { blank } from '../src/model/draft';
import { bytes, listing, seconds, soundOf } from '../src/model/format';
import { dayAndMinute, refusalOf, safeName, soundFileName } from '../src/model/media';
import { peaksIn } from '../src/model/peaks';
import { routeOf } from '../src/model/route';
import { matching } from '../src/model/search';

describe('words and numbers', () => {
  it('are what people say', () => {
    expect([0, 500, 1500, 12345, 150000].map(seconds)).toEqual(['0 s', '0.5 s', '1.5 s', '12 s', '2 min 30 s']);
    expect([999, 1500, 2500000].map(bytes)).toEqual(['999 bytes', '2 kB', '2.5 MB']);
    expect(['chime', '.test-tone'].map(soundOf)).toEqual(['chime', 'test tone']);
    expect([listing([]), listing(['a']), listing(['a', 'b', 'c'])]).toEqual(['', 'a', 'a, b and c']);
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
