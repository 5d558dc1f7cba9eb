// Rooms and screens of a draft: chosen, left out, made louder.

import type { AnnouncementBody, RoomTarget } from '../api/objects';

/** The agent leaves the room's own volume at -1 and at 0. */
export const isKeeping = (volume: number): boolean => volume <= 0;

/** With `target` or without it, by id. */
export function toggled<T extends { id: number }>(targets: T[], target: T, isOn: boolean): T[] {
  const others = targets.filter(({ id }) => id !== target.id);
  return isOn ? [...others, target].sort((one, other) => one.id - other.id) : others;
}

export const changed = (rooms: RoomTarget[], id: number, volume: number): RoomTarget[] =>
  rooms.map((one) => (one.id === id ? { ...one, volume } : one));

/** What `draft` would do if this were its only room: heard there, and shown on the screens of it that it names. */
export function onlyIn(draft: AnnouncementBody, room: number): AnnouncementBody {
  return {
    ...draft,
    rooms: draft.rooms.filter(({ id }) => id === room),
    navigators: draft.navigators.filter((one) => one.room === room),
  };
}
