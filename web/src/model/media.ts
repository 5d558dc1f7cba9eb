// Files that people bring: their names, and which of them can be taken.

import type { MediaFile } from '../api/objects';
import { t } from '../texts/page';
import { bytes } from './format';

const LARGEST = 32 * 1024 * 1024;
const IMAGE = /\.(png|jpe?g|gif|webp)$/i;
const SOUND = /\.(wav|mp3|m4a|mp4|aac|og[ag]|opus|flac|weba|webm|aif[fc]?|caf|amr|3gp|wma|mka)$/i;

const IMAGES = '.png,.jpg,.jpeg,.gif,.webp';
const SOUNDS = 'audio/*,.wav,.mp3,.m4a,.mp4,.aac,.ogg,.oga,.opus,.flac,.weba,.webm,.aif,.aiff,.caf';
export const ACCEPTED = { sound: SOUNDS, image: IMAGES, any: `${SOUNDS},${IMAGES}` };
export type Wanted = keyof typeof ACCEPTED;

interface Brought {
  name: string;
  size: number;
  type?: string;
}

export const isImage = (file: Brought): boolean => IMAGE.test(file.name);
const isSound = ({ name, type }: Brought): boolean => SOUND.test(name) || /^(audio|video)\//.test(type ?? '');

/** The name that the media folder takes, as near as can be to the one that the file has. */
export function safeName(name: string): string {
  const dot = name.lastIndexOf('.');
  const ending = dot > 0 ? name.slice(dot).toLowerCase() : '';
  const base = dot > 0 ? name.slice(0, dot) : name;
  const safe = base
    .normalize('NFD')
    .replace(/\p{M}/gu, '')
    .replace(/[^A-Za-z0-9_-]+/g, '-')
    .replace(/^[^A-Za-z0-9]+|-+$/g, '');
  return (safe || 'file').slice(0, 100 - ending.length) + ending;
}

/** The name of the sound that becomes of a file: whatever it was, it is a WAV file then. */
export const soundFileName = (name: string): string =>
  safeName(`${name.replace(/\.[A-Za-z0-9]{1,5}$/, '') || 'file'}.wav`);

/** "2026-03-01 14-05", here: names of files are in no language, and sort by it. */
export function dayAndMinute(date: Date): string {
  const two = (value: number): string => String(value).padStart(2, '0');
  const day = [date.getFullYear(), two(date.getMonth() + 1), two(date.getDate())].join('-');
  return `${day} ${two(date.getHours())}-${two(date.getMinutes())}`;
}

/** Why the file cannot be taken; empty when it can. How large a sound is, is seen when it is known how long it is. */
export function refusalOf(file: Brought, wanted: Wanted): string {
  const kind = isImage(file) ? 'image' : isSound(file) ? 'sound' : '';
  if (!kind || (wanted !== 'any' && wanted !== kind)) return t.media.refusals[wanted];
  return kind === 'image' ? tooLarge(file) : '';
}

/** Too large to be sent as it is. */
export const tooLarge = (file: Brought): string => (file.size > LARGEST ? t.media.tooLarge(bytes(file.size)) : '');

/** A sound is named without its ending in announcements. */
export const soundName = (file: MediaFile): string => file.name.replace(/\.wav$/, '');
