// What the controller's API gives and takes, under its own names.

export interface Binding {
  device: number;
  variable: number;
  name: string;
}

export interface RoomTarget {
  id: number;
  volume: number;
}

export interface NavigatorTarget {
  id: number;
  room: number;
  onscreen: boolean;
}

/** An announcement without its id, as it is edited and sent. */
export interface AnnouncementBody {
  name: string;
  audio: { file: string; delay_ms: number };
  video: {
    image: string;
    text: string;
    delay_ms: number;
    timeout_ms: number;
    ok_button: boolean;
    variable: Binding | null;
  };
  rooms: RoomTarget[];
  navigators: NavigatorTarget[];
}

export interface Announcement extends AnnouncementBody {
  id: number;
}

export interface Popup {
  number: number;
  message: string;
  image: string;
  ok_button: boolean;
  remaining_ms: number;
  ends: string;
}

export interface Room {
  id: number;
  name: string;
  output: string;
  volume: number;
  max_volume: number;
  in_announcement: boolean;
  awake: boolean;
  trouble: string | null;
}

export interface Screen {
  id: number;
  name: string;
  room: number;
  pages: number;
  awake: boolean;
  popup: Popup | null;
}

export interface Variable {
  device: number;
  variable: number;
  name: string;
  value: string;
}

export interface Status {
  house: string;
  version: string;
  started: string;
  agent: boolean;
  playing: { announcement: number; name: string; since: string } | null;
  waiting: number[];
  sound: { file: string; since: string } | null;
  state_saved: boolean;
  state_error: string | null;
}

export interface WholeState {
  status: Status;
  announcements: Announcement[];
  rooms: Room[];
  navigators: Screen[];
  variables: Variable[];
}

export interface HistoryEntry {
  id: number;
  announcement: number;
  name: string;
  started: string;
  ended: string | null;
  rooms: number[];
  navigators: number[];
  file: string;
  outcome: string;
}

export interface MediaFile {
  name: string;
  kind: 'sound' | 'image';
  bytes: number;
  modified: string;
  duration_ms?: number;
  sample_rate?: number;
  channels?: number;
  trouble?: string;
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
