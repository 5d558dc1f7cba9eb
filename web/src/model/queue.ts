// What waits, in order, and how one of it comes earlier or later.

export interface Waiting {
  entry: number;
}

/**
 * The entry that this one is to stand in front of after a step of -1 (earlier) or 1 (later); null: at the end,
 * undefined: there is no such step.
 */
export function placeAfter(queue: Waiting[], entry: number, step: -1 | 1): number | null | undefined {
  const at = queue.findIndex((one) => one.entry === entry);
  const to = at + step;
  if (at < 0 || to < 0 || to >= queue.length) return undefined;
  return queue[step < 0 ? to : to + 1]?.entry ?? null;
}
