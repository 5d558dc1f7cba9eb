// What the controller's API gives and takes, under the names that the pages have for it.

import type * as api from './types';

export type { MediaFile, Popup, Room, Variable } from './types';

/**
 * What is given has every member, also those that may be left out of what is taken: the controller describes one form
 * for both.
 */
type Whole<Value> = Value extends (infer Entry)[]
  ? Whole<Entry>[]
  : Value extends object
    ? { [Name in keyof Value]-?: Whole<Value[Name]> }
    : Value;

export type Announcement = Whole<api.Announcement>;
/** An announcement without its id, as it is edited and sent. */
export type AnnouncementBody = Omit<Announcement, 'id'>;
export type Binding = Whole<api.VariableBinding>;
export type RoomTarget = Whole<api.AnnouncementRoom>;
export type Screen = api.Navigator;
export type Status = Omit<Whole<api.Status>, 'events' | 'known_from' | 'popups'>;
export type HistoryEntry = Omit<Whole<api.History>['history'][number], 'ended'> & { ended: string | null };

export interface WholeState {
  status: Status;
  announcements: Announcement[];
  rooms: api.Room[];
  navigators: Screen[];
  variables: api.Variable[];
}

export interface Moment {
  at_ms: number;
  what: string;
  announcement?: number;
  room?: number;
  navigator?: number;
  volume?: number;
  file?: string;
  message?: string;
  image?: string;
  duration_ms?: number;
  ok_button?: boolean;
  variable?: { device: number; variable: number };
  level?: string;
  text?: string;
}

export interface Rehearsal {
  announcement: number;
  length_ms: number;
  complete: boolean;
  timeline: Moment[];
}
