// The messages of the two event streams: the type of each, and what it carries.

import type { Announcement, Popup, WholeState } from './objects';

interface OfAnnouncement {
  announcement: number;
}
interface OfRoom {
  room: number;
}
interface OfRoomVolume extends OfRoom {
  volume: number;
}
type Nothing = Record<string, never>;

/** What the house's stream (`/api/events`) tells. */
export interface HouseEvents {
  state: WholeState;
  play_asked: OfAnnouncement;
  announcement_started: OfAnnouncement;
  announcement_ended: OfAnnouncement;
  announcement_stored: OfAnnouncement & { now: Announcement | null };
  announcement_removed: OfAnnouncement;
  room_set_up: OfRoomVolume;
  room_volume_changed: OfRoomVolume;
  room_restored: OfRoomVolume & { changed_meanwhile: boolean };
  room_output_failed: OfRoom & { reason: string };
  screens_woken: OfRoom;
  screens_rested: OfRoom;
  sound_started: { file: string };
  sound_ended: { file: string; error: string | null };
  popup_shown: { navigator: number; popup: Popup };
  popup_changed: { navigator: number; number: number; message: string };
  popup_hidden: { navigator: number; number: number; why: string };
  pages_changed: { navigator: number; pages: number };
  variable_changed: { device: number; variable: number; value: string };
  state_saved: Nothing;
  state_not_saved: { reason: string };
  log: { level: string; text: string };
}

/** What one screen's stream (`/api/navigators/{id}/events`) tells. */
export interface ScreenEvents {
  state: {
    navigator: { id: number; name: string };
    room: { id: number; name: string } | null;
    house: string;
    awake: boolean;
    popup: Popup | null;
  };
  wake: Nothing;
  rest: Nothing;
  popup_shown: { popup: Popup };
  popup_changed: { number: number; message: string };
  popup_hidden: { number: number; why: string };
}

/** A message of a stream, one of those that `Events` names. */
export type EventOf<Events> = {
  [Type in keyof Events]: { seq: number; time: string; type: Type; data: Events[Type] };
}[keyof Events];

export type HouseEvent = EventOf<HouseEvents>;
export type ScreenEvent = EventOf<ScreenEvents>;

/** What is to be done with each type; one that is not there, or that a later controller has, is passed by. */
export type Handlers<Events, Context extends unknown[], Result = void> = {
  [Type in keyof Events]?: (data: Events[Type], ...context: Context) => Result;
};

export function handle<Events, Context extends unknown[], Result>(
  handlers: Handlers<Events, Context, Result>,
  event: EventOf<Events>,
  ...context: Context
): Result | undefined {
  return handlers[event.type]?.(event.data, ...context);
}
