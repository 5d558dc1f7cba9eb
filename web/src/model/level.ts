// How loud a microphone is, as a meter shows it.

const FLOOR = -54; // decibels at which the meter begins
const FALL = 0.0012; // of its length in a millisecond: a peak stays long enough to be seen

/** The loudest of the samples, 0 to 1, evenly in decibels. */
export function levelOf(samples: ArrayLike<number>): number {
  let peak = 0;
  for (let at = 0; at < samples.length; at += 1) peak = Math.max(peak, Math.abs(samples[at] ?? 0));
  if (peak === 0) return 0;
  return Math.max(0, Math.min(1, 1 - (20 * Math.log10(peak)) / FLOOR));
}

/** What the meter shows now: it rises at once, and falls slowly. */
export const meterAfter = (former: number, level: number, milliseconds: number): number =>
  Math.max(level, former - FALL * milliseconds, 0);
