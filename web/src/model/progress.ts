// How far something is that has a beginning and an expected end.

export interface Progress {
  share: number; // 0 to 1
  left: number; // milliseconds
}

/** Of times as the controller writes them; `now` is of its clock too. */
export function progressOf(since: string, ends: string, now: number): Progress {
  const [begin, end] = [Date.parse(since), Date.parse(ends)];
  const left = Math.max(0, end - now);
  return { left, share: end > begin ? Math.max(0, Math.min(1, (now - begin) / (end - begin))) : 1 };
}
