import { describe, expect, it } from 'vitest';
import { progressOf } from '../src/model/progress';
import { placeAfter } from '../src/model/queue';
import { targetsFrom, toggled } from '../src/model/targets';

describe('where it was announced last', () => {
  const kept = JSON.stringify({ rooms: [3, 1, 9], screens: [11], voice: 'Anna' });

  it('is remembered, without what the house no longer has', () => {
    expect(targetsFrom(kept, [1, 2, 3], [12])).toEqual({ rooms: [1, 3], screens: [], voice: 'Anna' });
  });

  it('is nowhere before the first time, but in a house of one room', () => {
    expect(targetsFrom(null, [1, 2], [11])).toEqual({ rooms: [], screens: [], voice: '' });
    expect(targetsFrom(null, [7], [11])).toEqual({ rooms: [7], screens: [], voice: '' });
  });

  it('is nowhere when what the browser kept is not ours', () => {
    for (const text of ['', 'null', '[]', '{"rooms": 1}', 'x'])
      expect(targetsFrom(text, [1, 2], [])).toEqual({ rooms: [], screens: [], voice: '' });
  });

  it('gains and loses a place by a touch', () => {
    expect([toggled([3], 1), toggled([1, 3], 3)]).toEqual([[1, 3], [1]]);
  });
});

describe('what waits', () => {
  const queue = [{ entry: 5 }, { entry: 6 }, { entry: 7 }];

  it('comes a step earlier or later, and no further than the ends', () => {
    expect([placeAfter(queue, 6, -1), placeAfter(queue, 5, 1), placeAfter(queue, 6, 1)]).toEqual([5, 7, null]);
    expect([placeAfter(queue, 5, -1), placeAfter(queue, 7, 1), placeAfter(queue, 99, 1)]).toEqual([
      undefined,
      undefined,
      undefined,
    ]);
  });
});

describe('how far it is', () => {
  const at = (now: string): unknown => progressOf('2026-03-01T10:00:00Z', '2026-03-01T10:00:10Z', Date.parse(now));

  it('goes from nothing to all, and no further', () => {
    expect([at('2026-03-01T09:59:59Z'), at('2026-03-01T10:00:04Z'), at('2026-03-01T10:01:00Z')]).toEqual([
      { share: 0, left: 11000 },
      { share: 0.4, left: 6000 },
      { share: 1, left: 0 },
    ]);
  });

  it('is all where it takes no time', () => {
    expect(progressOf('2026-03-01T10:00:00Z', '2026-03-01T10:00:00Z', 0).share).toBe(1);
  });
});
