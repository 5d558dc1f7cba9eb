import { describe, expect, it } from 'vitest';
import type { Announcement, MediaFile } from '../src/api/objects';
import { blank } from '../src/model/draft';
import { faultsOf, fewOf, lackOf } from '../src/model/faults';
import { allTags, FAVOURITE, lastUses, sorted, tagsIn, tagsOf, withTag } from '../src/model/order';

const one = (id: number, name: string, ...tags: string[]): Announcement => ({ ...blank(), id, name, tags });
const ids = (list: Announcement[]): number[] => list.map(({ id }) => id);

describe('the list', () => {
  const all = [one(1, 'ünder 10', 'b'), one(2, 'Under 9', FAVOURITE), one(3, 'apple', 'a', 'b'), one(4, 'Zoo')];
  const uses = lastUses([
    { announcement: 1, started: '2026-03-01T10:00:00Z' },
    { announcement: 3, started: '2026-03-03T10:00:00Z' },
    { announcement: 1, started: '2026-02-01T10:00:00Z' },
  ]);

  it('has favourites first, and then an order by name, last use or age', () => {
    expect(ids(sorted(all, 'newest', uses))).toEqual([2, 4, 3, 1]);
    expect(ids(sorted(all, 'name', uses))).toEqual([2, 3, 1, 4]);
    expect(ids(sorted(all, 'used', uses))).toEqual([2, 3, 1, 4]);
    expect(ids(all)).toEqual([1, 2, 3, 4]);
  });

  it('shows what has a tag, and offers each tag once', () => {
    expect(allTags(all)).toEqual(['a', 'b']);
    expect(ids(withTag(all, 'b'))).toEqual([1, 3]);
    expect(ids(withTag(all, FAVOURITE))).toEqual([2]);
    expect(ids(withTag(all, ''))).toEqual([1, 2, 3, 4]);
  });

  it('takes tags as people write them', () => {
    expect(tagsIn(' meals,  two   words,,meals, ')).toEqual(['meals', 'two words']);
    expect(tagsOf(one(1, '', 'meals', FAVOURITE))).toEqual(['meals']);
  });
});

describe('what is wrong with an announcement', () => {
  const media = [
    { kind: 'sound', name: 'gong.wav' },
    { kind: 'sound', name: 'noise.wav', trouble: 'it is cut short' },
    { kind: 'image', name: 'pan.png' },
  ] as unknown as MediaFile[];
  const room = { name: 'Kitchen', health: 'healthy' as const, trouble: null };
  const known = { rooms: new Map([[1, room]]), screens: new Map([[11, {}]]), media };
  const whole = {
    ...blank(),
    audio: { file: 'gong', delay_ms: 0 },
    video: { ...blank().video, text: 'Come', image: 'pan.png' },
    rooms: [{ id: 1, volume: -1 }],
    navigators: [{ id: 11, room: 1, onscreen: true }],
  };

  it('is nothing where all is there, and where nobody knows yet what is there', () => {
    expect(faultsOf(whole, known)).toEqual([]);
    const strange = { ...whole, audio: { file: 'gone', delay_ms: 0 } };
    expect(faultsOf(strange, { ...known, media: null })).toEqual([]);
  });

  it('is a room in which it would be lost now, not one that is silent on purpose or knows of none', () => {
    const lost = { name: 'Hall', health: 'unheard' as const, trouble: 'it is away' };
    const faults = (
      ...rooms: (typeof lost | { name: string; health: 'silent' | 'unknown'; trouble: string | null })[]
    ) =>
      faultsOf(
        { ...whole, rooms: rooms.map((_, index) => ({ id: index, volume: -1 })) },
        { ...known, rooms: new Map(rooms.map((one, index) => [index, one])) },
      );
    expect(faults({ ...lost, health: 'silent', trouble: null }, { ...lost, health: 'unknown', trouble: null })).toEqual(
      [],
    );
    expect(faults(lost, { ...lost, health: 'silent', name: 'Attic' })).toEqual([
      'Cannot be heard now in Hall and Attic',
    ]);
    expect(faults(lost, lost, lost, lost)).toEqual(['Cannot be heard now in 4 rooms']);
  });

  it('leaves room for all else where many rooms fail', () => {
    expect([fewOf(['a', 'b']), fewOf(['a', 'b', 'c', 'd'])]).toEqual([
      ['a', 'b'],
      ['a', 'b', '2 more: see House'],
    ]);
  });

  it('is each sound, image, room and screen that is gone', () => {
    const broken = {
      ...whole,
      audio: { file: 'gone', delay_ms: 0 },
      video: { ...whole.video, image: 'gone.png' },
      rooms: [{ id: 7, volume: -1 }],
      navigators: [{ id: 19, room: 1, onscreen: true }],
    };
    expect(faultsOf(broken, known)).toEqual([
      'The sound “gone” is missing',
      'The image “gone.png” is missing',
      'Room 7 is not in this house',
      'Screen 19 is not in this house',
    ]);
    expect(faultsOf({ ...whole, audio: { file: 'noise', delay_ms: 0 } }, known)).toEqual([
      'The sound “noise” cannot be played: it is cut short',
    ]);
    expect(faultsOf({ ...whole, video: { ...whole.video, image: 'https://a/b.png' } }, known)).toEqual([]);
  });

  it('is that it would do nothing, or half of what it holds', () => {
    expect(lackOf(blank())).toMatch(/^It would do nothing/);
    expect(lackOf({ ...whole, rooms: [], navigators: [] })).toMatch(/^It would do nothing/);
    expect(lackOf({ ...whole, rooms: [] })).toBe('Its sound is heard nowhere: no room is chosen');
    expect(lackOf({ ...whole, navigators: [] })).toBe('Its message is shown nowhere: no screen is chosen');
    expect(lackOf(whole)).toBe('');
  });
});
