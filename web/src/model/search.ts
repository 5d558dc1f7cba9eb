// Which announcements a few words mean.

import type { Announcement } from '../api/objects';

/** Every word must stand somewhere; letters with and without marks are the same. */
export function matching(
  announcements: Announcement[],
  words: string,
  placesOf: (one: Announcement) => string,
): Announcement[] {
  const wanted = plain(words).split(/\s+/).filter(Boolean);
  if (wanted.length === 0) return announcements;
  return announcements.filter((one) => {
    const text = plain([one.name, one.video.text, one.audio.file, one.video.image, placesOf(one)].join(' '));
    return wanted.every((word) => text.includes(word));
  });
}

export function plain(text: string): string {
  return text.normalize('NFD').replace(/\p{M}/gu, '').toLowerCase();
}
