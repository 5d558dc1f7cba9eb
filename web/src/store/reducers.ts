// How each event of the controller changes what the store holds.

import type { Announcement, Popup, ServerEvent, WholeState } from '../api/types';
import { byId, type Store } from './Store';

type Reducer = (store: Store, data: never, event: ServerEvent) => void;
interface OfRoom { room: number }
interface OfAnnouncement { announcement: number }

export const reducers: Record<string, Reducer> = {
  state(store: Store, data: WholeState) {
    store.status = data.status;
    store.announcements = byId(data.announcements);
    store.rooms = byId(data.rooms);
    store.screens = byId(data.navigators);
    store.variables = data.variables;
    store.endings += 1;
  },
  play_asked(store: Store) {
    store.refreshSoon();
  },
  announcement_started(store: Store, { announcement }: OfAnnouncement, event: ServerEvent) {
    if (!store.status) return;
    const playing = { announcement, name: store.announcementName(announcement), since: event.time };
    store.status = { ...store.status, playing, waiting: store.status.waiting.filter((id) => id !== announcement) };
    store.endings += 1;
    store.refreshSoon();
  },
  announcement_ended(store: Store) {
    if (store.status) store.status = { ...store.status, playing: null };
    store.endings += 1;
    store.refreshSoon();
  },
  announcement_stored(store: Store, data: { announcement: number; now: Announcement | null }) {
    if (!data.now) return;
    store.announcements.set(data.announcement, data.now);
    store.announcements = new Map(store.announcements);
  },
  announcement_removed(store: Store, { announcement }: OfAnnouncement) {
    store.announcements.delete(announcement);
    store.announcements = new Map(store.announcements);
    store.leaving.delete(announcement);
  },
  room_set_up: (store: Store, { room }: OfRoom) => store.changeRoom(room, { in_announcement: true, trouble: null }),
  room_volume_changed: (store: Store, data: OfRoom & { volume: number }) => store.changeRoom(data.room, { volume: data.volume }),
  room_restored: (store: Store, data: OfRoom & { volume: number }) =>
    store.changeRoom(data.room, { in_announcement: false, volume: data.volume }),
  room_output_failed: (store: Store, data: OfRoom & { reason: string }) => store.changeRoom(data.room, { trouble: data.reason }),
  screens_woken: (store: Store, { room }: OfRoom) => store.changeRoom(room, { awake: true }),
  screens_rested: (store: Store, { room }: OfRoom) => store.changeRoom(room, { awake: false }),
  sound_started(store: Store, { file }: { file: string }, event: ServerEvent) {
    if (store.status) store.status = { ...store.status, sound: { file, since: event.time } };
  },
  sound_ended(store: Store) {
    if (store.status) store.status = { ...store.status, sound: null };
  },
  popup_shown: (store: Store, data: { navigator: number; popup: Popup }) => store.changeScreen(data.navigator, { popup: data.popup }),
  popup_changed(store: Store, data: { navigator: number; number: number; message: string }) {
    const popup = store.popupOn(data.navigator);
    if (popup?.number === data.number) store.changeScreen(data.navigator, { popup: { ...popup, message: data.message } });
  },
  popup_hidden(store: Store, data: { navigator: number; number: number }) {
    if (store.popupOn(data.navigator)?.number === data.number) store.changeScreen(data.navigator, { popup: null });
  },
  pages_changed: (store: Store, data: { navigator: number; pages: number }) => store.changeScreen(data.navigator, { pages: data.pages }),
  variable_changed(store: Store, data: { device: number; variable: number; value: string }) {
    store.variables = store.variables.map((one) =>
      (one.device === data.device && one.variable === data.variable ? { ...one, value: data.value } : one));
  },
  state_saved(store: Store) {
    if (store.status) store.status = { ...store.status, state_saved: true, state_error: null };
  },
  state_not_saved(store: Store, { reason }: { reason: string }) {
    if (store.status) store.status = { ...store.status, state_saved: false, state_error: reason };
  },
};
