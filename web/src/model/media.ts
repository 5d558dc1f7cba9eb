// Files that people bring: their names, and which of them can be taken.

import type { MediaFile } from '../api/objects';
import { t } from '../texts/page';
import { bytes } from './format';

const LARGEST = 32 * 1024 * 1024;
const ENDINGS = { sound: /\.wav$/i, image: /\.(png|jpe?g|gif|webp)$/i };

export const ACCEPTED = {
  sound: '.wav,audio/wav',
  image: '.png,.jpg,.jpeg,.gif,.webp',
  any: '.wav,.png,.jpg,.jpeg,.gif,.webp,audio/wav',
};
export type Wanted = keyof typeof ACCEPTED;

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

/** Why the file cannot be taken; empty when it can. */
export function refusalOf(file: { name: string; size: number }, wanted: Wanted): string {
  const name = safeName(file.name);
  const fits = wanted === 'any' ? ENDINGS.sound.test(name) || ENDINGS.image.test(name) : ENDINGS[wanted].test(name);
  if (!fits) return t.media.refusals[wanted];
  return file.size > LARGEST ? t.media.tooLarge(bytes(file.size)) : '';
}

/** A sound is named without its ending in announcements. */
export const soundName = (file: MediaFile): string => file.name.replace(/\.wav$/, '');
