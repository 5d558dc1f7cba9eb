// The list of announcements as somebody wants to see it: order, favourites, tags.

import type { Announcement, AnnouncementBody, HistoryEntry } from '../api/objects';
import { locale } from '../texts/language';

/** A favourite is an announcement with this tag, for the page as for the command line. */
export const FAVOURITE = 'favourite';

export type Order = 'newest' | 'name' | 'used';
export const ORDERS: Order[] = ['newest', 'name', 'used'];

export const isFavourite = ({ tags }: Pick<Announcement, 'tags'>): boolean => (tags ?? []).includes(FAVOURITE);
export const tagsOf = ({ tags }: Announcement): string[] => (tags ?? []).filter((tag) => tag !== FAVOURITE);

export const withFavourite = (body: AnnouncementBody, isOne: boolean): AnnouncementBody => ({
  ...body,
  tags: [...(body.tags ?? []).filter((tag) => tag !== FAVOURITE), ...(isOne ? [FAVOURITE] : [])],
});

/** As people write them: parted by commas, each once. */
export function tagsIn(text: string): string[] {
  const tags = text.split(',').map((tag) => tag.trim().replace(/\s+/g, ' '));
  return [...new Set(tags.filter(Boolean))];
}

/** All tags of the house but that of the favourites, in the order of the alphabet. */
export function allTags(announcements: Announcement[]): string[] {
  return [...new Set(announcements.flatMap(tagsOf))].sort(byName);
}

/** When each announcement was played last: its id, and a moment to compare. */
export function lastUses(history: Pick<HistoryEntry, 'announcement' | 'started'>[]): Map<number, number> {
  const uses = new Map<number, number>();
  for (const { announcement, started } of history) {
    uses.set(announcement, Math.max(uses.get(announcement) ?? 0, Date.parse(started)));
  }
  return uses;
}

const collator = new Intl.Collator(locale, { numeric: true, sensitivity: 'base' });
const byName = (one: string, other: string): number => collator.compare(one, other);

/** Favourites first. What was never played is older than all that was. */
export function sorted(announcements: Announcement[], order: Order, uses: Map<number, number>): Announcement[] {
  const useOf = ({ id }: Announcement): number => uses.get(id) ?? 0;
  const compare = {
    newest: (one: Announcement, other: Announcement) => other.id - one.id,
    name: (one: Announcement, other: Announcement) => byName(one.name, other.name) || one.id - other.id,
    used: (one: Announcement, other: Announcement) => useOf(other) - useOf(one) || other.id - one.id,
  }[order];
  return [...announcements].sort(
    (one, other) => Number(isFavourite(other)) - Number(isFavourite(one)) || compare(one, other),
  );
}

/** `tag` '' lets everything pass. */
export const withTag = (announcements: Announcement[], tag: string): Announcement[] =>
  tag ? announcements.filter(({ tags }) => (tags ?? []).includes(tag)) : announcements;
