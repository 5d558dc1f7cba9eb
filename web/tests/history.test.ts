import { describe, expect, it } from 'vitest';
import type { HistoryEntry } from '../src/api/objects';
import { asCsv, filtered, isThere, outcomeOf, reasonOf } from '../src/model/history';

const names = { roomName: (id: number) => `Room ${id}`, screenName: (id: number) => `Screen ${id}` };
const entry = (changes: Partial<HistoryEntry>): HistoryEntry => ({
  id: 1,
  announcement: 3,
  name: 'Dinner',
  started: '2026-03-01T18:00:00Z',
  ended: '2026-03-01T18:00:05Z',
  rooms: [1],
  navigators: [5],
  file: 'chime',
  outcome: 'played',
  ...changes,
});

describe('the history', () => {
  it('tells a failure from its reason', () => {
    const failed = entry({ outcome: 'failed: there is no sound file', reason: 'there is no sound file' });
    expect([outcomeOf(failed), reasonOf(failed)]).toEqual(['failed', 'there is no sound file']);
    expect(reasonOf(entry({}))).toBe('');
  });

  it('is filtered by words, outcome and place', () => {
    const all = [entry({}), entry({ id: 2, name: 'Café', rooms: [2], outcome: 'dismissed' })];
    const ids = (filter: object) =>
      filtered(all, { words: '', outcome: '', place: '', ...filter }, names).map((one) => one.id);
    expect(ids({})).toEqual([1, 2]);
    expect(ids({ words: 'cafe room' })).toEqual([2]);
    expect(ids({ outcome: 'dismissed' })).toEqual([2]);
    expect(ids({ place: 'room 1' })).toEqual([1]);
    expect(ids({ place: 'screen 5', outcome: 'played' })).toEqual([1]);
  });

  it('can be played again where the announcement is still there, and no other one has its id', () => {
    const there = new Map([[3, { name: 'Dinner' }]]);
    expect([entry({}), entry({ name: 'Lunch' }), entry({ announcement: 4 })].map((one) => isThere(one, there))).toEqual(
      [true, false, false],
    );
  });

  it('becomes CSV that no text breaks out of, and none of which is a formula', () => {
    const lines = asCsv([entry({ name: '=1+1, "x"\nnew' })], names).split('\r\n');
    expect(lines).toEqual([
      'started,ended,announcement,name,sound,rooms,screens,outcome',
      '2026-03-01T18:00:00Z,2026-03-01T18:00:05Z,3,"\'=1+1, ""x""\nnew",chime,Room 1,Screen 5,played',
      '',
    ]);
    const cells = (name: string) => asCsv([entry({ name, rooms: [1, 2] })], names).split('\r\n')[1];
    for (const begin of ['=', '+', '-', '@', '\t'])
      expect(cells(`${begin}cmd`)).toContain(`,3,'${begin}cmd,chime,"Room 1; Room 2",`);
    expect(cells('a;=b')).toContain(',3,"a;=b",chime,');
    expect(cells('\r=b')).toContain(`,3,"'\r=b",chime,`);
  });
});
