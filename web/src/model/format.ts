// Times, lengths and numbers as people say them.

import type { Loudness } from '../api/objects';
import { locale, number } from '../texts/language';
import { t } from '../texts/page';

const clock = new Intl.DateTimeFormat(locale, { hour: '2-digit', minute: '2-digit', second: '2-digit' });
const day = new Intl.DateTimeFormat(locale, { weekday: 'short', day: 'numeric', month: 'short' });

/** 1500 -> "1.5 s" */
export function seconds(milliseconds: number): string {
  const value = milliseconds / 1000;
  if (value >= 120) return t.units.minutes(Math.floor(value / 60), Math.round(value % 60));
  return t.units.seconds(Number(value.toFixed(value < 10 ? 1 : 0)));
}

export const timeOfDay = (text: string): string => clock.format(new Date(text));

/** "14:05:10" today, "Mon 3 Mar, 14:05:10" on other days. */
export function moment(text: string): string {
  const date = new Date(text);
  const time = clock.format(date);
  return date.toDateString() === new Date().toDateString() ? time : `${day.format(date)}, ${time}`;
}

export function bytes(number: number): string {
  if (number < 1000) return t.units.bytes(number);
  if (number < 1e6) return t.units.kilobytes(Math.round(number / 1000));
  return t.units.megabytes(Math.round(number / 1e5) / 10);
}

export function listing(words: string[]): string {
  return words.length < 2 ? words.join('') : t.and(words.slice(0, -1).join(', '), words[words.length - 1] ?? '');
}

/** What a sound is called: the name that announcements know it by. What was made for one has a name of no use. */
export function soundOf(file: string): string {
  if (file === '.test-tone') return t.names.testTone;
  return file.startsWith('.') ? t.names.spokenSound : file;
}

export const volume = (value: number): string => (value > 0 ? t.units.percent(value) : t.units.unchanged);

export const percent = (value: number): string => t.units.percent(value);

/** What is heard of a sound's own loudness: "-18.3 LUFS, is played 2.3 dB louder" */
export function loudnessText({ lufs, gain }: Loudness): string {
  if (lufs === null) return t.media.silent;
  const [own, change] = [lufs, gain ?? 0].map((value) => Math.round(value * 10) / 10) as [number, number];
  if (change === 0) return t.media.asLoud(number(own));
  const text = change > 0 ? t.media.louder : t.media.quieter;
  return text(number(own), number(Math.abs(change)));
}
