// What was played: filtered, and as files for other programs.

import type { HistoryEntry } from '../api/objects';
import { t, textFor } from '../texts/page';
import { soundOf } from './format';
import type { PlaceNames } from './names';
import { plain } from './search';

/** Empty ones let everything pass. */
export interface Filter {
  words: string;
  outcome: string;
  place: string; // "room 1" or "screen 11"
}

const FAILED = 'failed: '; // before the reason

/** How it ended, without the reason: 'played', 'dismissed', 'failed', 'interrupted'. */
export function outcomeOf({ outcome }: HistoryEntry): string {
  if (outcome.startsWith(FAILED)) return 'failed';
  return outcome === 'ended' ? 'played' : outcome;
}

export const reasonOf = ({ reason }: HistoryEntry): string => reason ?? '';

export function placesOf(entry: HistoryEntry, names: PlaceNames): string[] {
  return [...entry.rooms.map((id) => names.roomName(id)), ...entry.navigators.map((id) => names.screenName(id))];
}

export function filtered(entries: HistoryEntry[], filter: Filter, names: PlaceNames): HistoryEntry[] {
  const words = plain(filter.words).split(/\s+/).filter(Boolean);
  return entries.filter((entry) => {
    if (filter.outcome && outcomeOf(entry) !== filter.outcome) return false;
    if (filter.place && !isAt(entry, filter.place)) return false;
    const text = plain([entry.name, entry.file, ...placesOf(entry, names)].join(' '));
    return words.every((word) => text.includes(word));
  });
}

/** Whether the announcement can be played again: ids are given anew after a restart, so it must bear its name too. */
export const isThere = (entry: HistoryEntry, announcements: ReadonlyMap<number, { name: string }>): boolean =>
  announcements.get(entry.announcement)?.name === entry.name;

function isAt(entry: HistoryEntry, place: string): boolean {
  const [kind, id] = place.split(' ');
  return (kind === 'room' ? entry.rooms : entry.navigators).includes(Number(id));
}

export function asJson(entries: HistoryEntry[]): string {
  return `${JSON.stringify({ history: entries }, null, 2)}\n`;
}

export function asCsv(entries: HistoryEntry[], names: PlaceNames): string {
  const head = ['started', 'ended', 'announcement', 'name', 'sound', 'rooms', 'screens', 'outcome'];
  const rows = entries.map((one) => [
    one.started,
    one.ended,
    String(one.announcement),
    one.name,
    soundOf(one.file),
    one.rooms.map((id) => names.roomName(id)).join('; '),
    one.navigators.map((id) => names.screenName(id)).join('; '),
    one.outcome,
  ]);
  return [head, ...rows].map((row) => row.map(cell).join(',')).join('\r\n') + '\r\n';
}

/**
 * Spreadsheets take a text that begins like a formula for one: a quote in front keeps it a text. In many countries
 * they part cells at semicolons.
 */
function cell(text: string): string {
  const safe = /^[=+\-@\t\r]/.test(text) ? `'${text}` : text;
  return /[",;\r\n]/.test(safe) ? `"${safe.replace(/"/g, '""')}"` : safe;
}

export const outcomeText = (outcome: string): string => textFor(t.history.outcomes, outcome) ?? outcome;

export function download(name: string, type: string, text: string): void {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(new Blob([text], { type }));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}
