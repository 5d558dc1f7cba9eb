// What is shown of a list that is too long to be shown whole.

import { plain } from './search';

export const MOST = 200; // beyond that a page becomes slow, and nobody reads on

/** A short list whole; of a longer one the first whose names have all the words, and besides those that are chosen. */
export function excerpt<One extends { name: string }>(
  all: One[],
  words: string,
  isChosen: (one: One) => boolean = () => false,
): One[] {
  if (all.length <= MOST) return all;
  const wanted = plain(words).split(/\s+/).filter(Boolean);
  const shown = new Set<One>();
  for (const one of all) {
    if (shown.size === MOST) break;
    const name = plain(one.name);
    if (wanted.every((word) => name.includes(word))) shown.add(one);
  }
  const others = all.filter((one) => !shown.has(one) && isChosen(one));
  return [...shown, ...others.slice(0, MOST)];
}
