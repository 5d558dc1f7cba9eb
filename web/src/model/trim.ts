// The part of a sound that is kept, between two handles. All in milliseconds.

import { locale } from '../texts/language';

export const LONGEST = 20000;
const SHORTEST = 100;

const seconds = new Intl.NumberFormat(locale, {
  minimumIntegerDigits: 2,
  minimumFractionDigits: 1,
  maximumFractionDigits: 1,
});

export interface Part {
  from: number;
  to: number;
}

/** What the handles stand at before anybody has moved them. */
export const firstPart = (length: number): Part => ({ from: 0, to: Math.min(length, LONGEST) });

/** A handle pushes the other one where they would meet, or be too far apart. */
export function withFrom(part: Part, from: number, length: number): Part {
  const begin = within(from, 0, Math.max(0, length - SHORTEST));
  return { from: begin, to: within(part.to, begin + Math.min(SHORTEST, length), begin + LONGEST) };
}

export function withTo(part: Part, to: number, length: number): Part {
  const end = within(to, Math.min(SHORTEST, length), length);
  return { from: within(part.from, end - LONGEST, Math.max(0, end - SHORTEST)), to: end };
}

/** The whole part, moved along. */
export function moved(part: Part, by: number, length: number): Part {
  const from = within(part.from + by, 0, length - (part.to - part.from));
  return { from, to: from + part.to - part.from };
}

const within = (value: number, least: number, most: number): number =>
  Math.round(Math.max(Math.max(0, least), Math.min(most, value)));

/** "1:02.5", or "1:02,5" */
export function positionText(milliseconds: number): string {
  const tenths = Math.round(milliseconds / 100);
  return `${Math.floor(tenths / 600)}:${seconds.format((tenths % 600) / 10)}`;
}
