import { describe, expect, it } from 'vitest';
import { blank } from '../src/model/draft';
import { merged } from '../src/model/merge';

const base = {
  ...blank(),
  name: 'Dinner',
  rooms: [
    { id: 1, volume: 30 },
    { id: 2, volume: -1 },
  ],
  tags: ['meals'],
};

describe('two changes of one announcement', () => {
  it('go together where they are of different fields, rooms and screens', () => {
    const mine = { ...base, name: 'Supper', rooms: [{ id: 1, volume: 60 }], video: { ...base.video, text: 'Come' } };
    const theirs = {
      ...base,
      audio: { file: 'gong', delay_ms: 0 },
      video: { ...base.video, timeout_ms: 5000 },
      urgent: true,
      rooms: [
        { id: 1, volume: 30 },
        { id: 2, volume: -1 },
        { id: 3, volume: 10 },
      ],
      navigators: [{ id: 11, room: 1, onscreen: true }],
      tags: ['meals', 'evening'],
    };
    expect(merged(base, mine, theirs)).toEqual({
      name: 'Supper',
      audio: { file: 'gong', delay_ms: 0 },
      video: { ...base.video, text: 'Come', timeout_ms: 5000 },
      rooms: [
        { id: 1, volume: 60 },
        { id: 3, volume: 10 },
      ],
      navigators: [{ id: 11, room: 1, onscreen: true }],
      tags: ['meals', 'evening'],
      urgent: true,
    });
  });

  it('go together where both have made the same of a field', () => {
    const both = { ...base, name: 'Supper' };
    expect(merged(base, both, { ...both, tags: [] })).toEqual({ ...both, tags: [] });
  });

  it('do not where they have made different things of one field or one room', () => {
    expect(merged(base, { ...base, name: 'Supper' }, { ...base, name: 'Lunch' })).toBeNull();
    const [louder, gone] = [
      {
        ...base,
        rooms: [
          { id: 1, volume: 80 },
          { id: 2, volume: -1 },
        ],
      },
      { ...base, rooms: [{ id: 2, volume: -1 }] },
    ];
    expect(merged(base, louder, gone)).toBeNull();
  });
});
