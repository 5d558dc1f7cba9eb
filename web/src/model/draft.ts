// An announcement while it is edited: what it begins as, what is wrong with it, how two of them differ.

import type { Announcement, AnnouncementBody } from '../api/objects';
import { t } from '../texts/page';
import { seconds } from './format';
import type { PlaceNames } from './names';

export const LONGEST = 4294967; // seconds, as many as the agent's milliseconds hold

/** What is wrong, by the name of the field in the API. */
export type Errors = Record<string, string>;

export function blank(): AnnouncementBody {
  return {
    name: '',
    audio: { file: '', delay_ms: 0 },
    video: { image: '', text: '', delay_ms: 0, timeout_ms: 10000, ok_button: true, variable: null },
    rooms: [],
    navigators: [],
    tags: [],
    urgent: false,
  };
}

export function bodyOf({ id: _id, tags, urgent, ...body }: Announcement): AnnouncementBody {
  // Left out, the controller would keep what it has.
  return structuredClone({ ...body, tags: tags ?? [], urgent: urgent ?? false });
}

export function copyOf(announcement: Announcement): AnnouncementBody {
  return { ...bodyOf(announcement), name: t.editor.copyName(announcement.name) };
}

export const isSame = (one: AnnouncementBody, other: AnnouncementBody): boolean =>
  JSON.stringify(one) === JSON.stringify(other);

export function errorsIn(draft: AnnouncementBody): Errors {
  const errors: Errors = {};
  if (!draft.name.trim()) errors.name = t.editor.errors.name;
  const { image, delay_ms: delay, timeout_ms: timeout } = draft.video;
  const times: [string, number][] = [
    ['audio.delay_ms', draft.audio.delay_ms],
    ['video.delay_ms', delay],
    ['video.timeout_ms', timeout],
  ];
  for (const [place, time] of times) {
    if (!(time >= 0 && time <= LONGEST * 1000)) errors[place] = t.editor.errors.seconds;
  }
  if (image && !isImageAddress(image)) errors['video.image'] = t.editor.errors.image;
  return errors;
}

export function isImageAddress(image: string): boolean {
  return /^https?:\/\/[^\s/]+/i.test(image) || /^[A-Za-z0-9][A-Za-z0-9._-]{0,99}\.(png|jpe?g|gif|webp)$/i.test(image);
}

/** The field that a refusal of the controller is about, and what it says; null when it names none. */
export function errorOf(text: string): { place: string; text: string } | null {
  const match = /^([a-z_]+(?:\.[a-z_]+)?)(?:\[\d+\][a-z_.]*)?:? (.*)$/s.exec(text);
  const known = [
    'name',
    'audio',
    'audio.file',
    'audio.delay_ms',
    'video.image',
    'video.text',
    'video.delay_ms',
    'video.timeout_ms',
    'video.variable',
    'rooms',
    'navigators',
    'tags',
  ];
  if (!match || !known.includes(match[1] ?? '')) return null;
  return { place: match[1] ?? '', text: match[2] ?? '' };
}

export interface Difference {
  field: string;
  mine: string;
  theirs: string;
}

/** What two people have made of the same announcement, field by field, in words. */
export function differences(mine: AnnouncementBody, theirs: AnnouncementBody, names: PlaceNames): Difference[] {
  const one = fieldsOf(mine, names);
  const other = fieldsOf(theirs, names);
  return Object.keys(one)
    .filter((field) => one[field] !== other[field])
    .map((field) => ({ field, mine: one[field] || t.editor.nothing, theirs: other[field] || t.editor.nothing }));
}

function fieldsOf(
  { name, audio, video, rooms, navigators, tags, urgent }: AnnouncementBody,
  names: PlaceNames,
): Record<string, string> {
  const f = t.editor.fields;
  const time = (milliseconds: number): string =>
    milliseconds === 0 ? t.editor.timing.automatic : seconds(milliseconds);
  return {
    [f.name]: name,
    [f.sound]: audio.file,
    [f.soundDelay]: time(audio.delay_ms),
    [f.urgent]: urgent ? t.yes : t.no,
    [f.text]: video.text,
    [f.variable]: video.variable?.name ?? '',
    [f.image]: video.image,
    [f.popupDelay]: time(video.delay_ms),
    [f.timeout]: time(video.timeout_ms),
    [f.ok]: video.ok_button ? t.yes : t.no,
    [f.rooms]: rooms
      .map(({ id, volume }) => `${names.roomName(id)}${volume > 0 ? ` (${t.units.percent(volume)})` : ''}`)
      .join(', '),
    [f.tags]: (tags ?? []).join(', '),
    [f.screens]: navigators.map(({ id }) => names.screenName(id)).join(', '),
  };
}
