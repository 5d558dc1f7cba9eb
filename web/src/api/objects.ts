// What the controller's API gives and takes, under the names that the pages have for it.

import type * as api from './types';

export type {
  Announcement,
  HistoryEntry,
  Loudness,
  MediaFile,
  Moment,
  Output,
  Popup,
  Queued,
  Rehearsal,
  Room,
  Status,
  Variable,
  Voice,
  WholeState,
} from './types';

/** An announcement without its id, as it is edited and sent. */
export type AnnouncementBody = Omit<api.Announcement, 'id'>;
export type Binding = api.VariableBinding;
export type RoomTarget = api.AnnouncementRoom;
export type Screen = api.Navigator;
export type Recipe = Required<api.SpeechRecipe>;
