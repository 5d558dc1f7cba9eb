// A rehearsal as a picture: rooms and screens as rows, what happens to them as bars.

import type { Moment, Rehearsal } from '../api/objects';

export type BarKind = 'setup' | 'delay' | 'sound' | 'popup' | 'restore';
export interface Bar {
  kind: BarKind;
  start: number;
  end: number;
  text: string;
}
export interface Row {
  kind: 'room' | 'screen';
  id: number;
  bars: Bar[];
  volume: number | null;
}
export interface Picture {
  length: number;
  rows: Row[];
}

const SHORTEST = 1000;

export function pictureOf(rehearsal: Rehearsal, roomOfScreen: (id: number) => number): Picture {
  const moments = rehearsal.timeline;
  const rows = [
    ...idsOf(moments, 'room_set_up', 'room').map((id) => roomRow(id, moments, rehearsal.length_ms)),
    ...idsOf(moments, 'popup_shown', 'navigator').map((id) =>
      screenRow(id, roomOfScreen(id), moments, rehearsal.length_ms),
    ),
  ];
  return { length: Math.max(SHORTEST, rehearsal.length_ms), rows };
}

function idsOf(moments: Moment[], what: string, key: 'room' | 'navigator'): number[] {
  const ids = moments.filter((one) => one.what === what).map((one) => one[key] ?? 0);
  return [...new Set(ids)];
}

function roomRow(id: number, moments: Moment[], length: number): Row {
  const at = (what: string, room?: number): number | null =>
    moments.find((one) => one.what === what && (room === undefined || one.room === room))?.at_ms ?? null;
  const setUp = at('room_set_up', id) ?? 0;
  const restored = at('room_restored', id) ?? length;
  const missing = at('sound_missing'); // silence, in which all else goes on
  const sound = at('sound_started') ?? missing;
  const bars: Bar[] = [{ kind: 'setup', start: 0, end: setUp, text: '' }];
  if (sound === null) {
    bars.push({ kind: 'restore', start: setUp, end: restored, text: '' });
  } else {
    const ended = at('sound_ended') ?? missing ?? restored;
    const file = moments.find((one) => one.what === 'sound_started')?.file ?? '';
    bars.push(
      { kind: 'delay', start: setUp, end: sound, text: '' },
      { kind: 'sound', start: sound, end: ended, text: file },
      { kind: 'restore', start: ended, end: restored, text: '' },
    );
  }
  const volume = moments.find((one) => one.what === 'volume_set' && one.room === id)?.volume ?? null;
  return { kind: 'room', id, volume, bars: bars.filter(lasts) };
}

function screenRow(id: number, room: number, moments: Moment[], length: number): Row {
  const bars: Bar[] = [];
  let free = 0; // where the row goes on
  for (const shown of moments.filter((one) => one.what === 'popup_shown' && one.navigator === id)) {
    bars.push({ kind: 'delay', start: free, end: shown.at_ms, text: '' });
    const hidden = moments.find(
      (one) => one.what === 'popup_hidden' && one.navigator === id && one.at_ms >= shown.at_ms && one !== shown,
    );
    free = hidden?.at_ms ?? length;
    bars.push({ kind: 'popup', start: shown.at_ms, end: free, text: shown.message ?? '' });
  }
  const rested = moments.find((one) => one.what === 'screens_rested' && one.room === room)?.at_ms ?? free;
  bars.push({ kind: 'restore', start: free, end: rested, text: '' });
  return { kind: 'screen', id, volume: null, bars: bars.filter(lasts) };
}

const lasts = (bar: Bar): boolean => bar.end > bar.start;

/** Where the picture has its marks, in milliseconds: few enough for a phone. */
export function marksOf(length: number): number[] {
  const step = [500, 1000, 2000, 5000, 10000, 30000, 60000].find((one) => length / one <= 5) ?? 120000;
  const marks: number[] = [];
  for (let at = 0; at <= length; at += step) marks.push(at);
  return marks;
}
