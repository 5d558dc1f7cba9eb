import { describe, expect, it } from 'vitest';
import { excerpt, MOST } from '../src/model/excerpt';

const rooms = (count: number) =>
  Array.from({ length: count }, (_, index) => ({ id: index + 1, name: `Zimmer ${index + 1}` }));
const ids = (list: { id: number }[]): number[] => list.map(({ id }) => id);

describe('a list of the house', () => {
  it('is shown whole while it is short, whatever words are left from when it was long', () => {
    const all = rooms(MOST);
    expect(excerpt(all, 'kitchen')).toBe(all);
  });

  it('shows its first ones when it is long', () => {
    const all = rooms(10000);
    expect(excerpt(all, ' ')).toEqual(all.slice(0, MOST));
  });

  it('shows those that have every word in their names, with or without marks', () => {
    const all = [...rooms(1000), { id: 1001, name: 'Küche 77' }];
    expect(ids(excerpt(all, 'KUCHE 7'))).toEqual([1001]);
    expect(ids(excerpt(all, 'zimmer 99'))).toEqual([99, 199, 299, 399, 499, 599, 699, 799, 899, ...range(990, 999)]);
    expect(excerpt(all, 'cellar')).toEqual([]);
  });

  it('shows chosen ones besides, once each', () => {
    const all = rooms(1000);
    const isChosen = ({ id }: { id: number }): boolean => id === 5 || id === 900;
    expect(ids(excerpt(all, '', isChosen))).toEqual([...range(1, MOST), 900]);
    expect(ids(excerpt(all, 'cellar', isChosen))).toEqual([5, 900]);
    expect(excerpt(all, '', () => true)).toHaveLength(2 * MOST);
  });
});

function range(first: number, last: number): number[] {
  return Array.from({ length: last - first + 1 }, (_, index) => first + index);
}
