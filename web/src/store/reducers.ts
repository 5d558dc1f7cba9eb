// How each event of the controller changes what is known of the house.

import type { Handlers, HouseEvents } from '../api/events';
import { soundOf } from '../model/format';
import { t } from '../texts/page';
import { byId, type House } from './House';

export const reducers: Handlers<HouseEvents, [house: House, time: string]> = {
  state(data, house) {
    house.status = data.status;
    house.announcements = byId(data.announcements);
    house.rooms = byId(data.rooms);
    house.screens = byId(data.navigators);
    house.variables = data.variables;
    house.endings += 1;
    house.states += 1;
    house.failures = [];
    house.stopped = null;
  },
  announcement_started({ announcement }, house, time) {
    if (!house.status) return;
    const name = house.announcementName(announcement);
    // How far it comes is told at once.
    const playing = {
      announcement,
      name,
      since: time,
      ends: time,
      can_be_dismissed: false,
      stopped: false,
      sound: null,
    };
    house.changeStatus({ playing, waiting: house.status.waiting.filter((id) => id !== announcement) });
    house.endings += 1;
    house.failures = [];
    house.stopped = null;
  },
  announcement_ended({ announcement }, house) {
    if (house.failures.length > 0)
      house.failed = { name: house.announcementName(announcement), failures: house.failures };
    house.changeStatus({ playing: null });
    house.endings += 1;
    house.failures = [];
    house.stopped = null;
  },
  playing_changed: ({ playing }, house) => house.changeStatus({ playing }),
  announcement_stopped({ announcement }, house) {
    house.stopped = announcement;
  },
  queue_changed: ({ queue }, house) => house.changeStatus({ queue }),
  announcement_stored(data, house) {
    if (!data.now) return;
    house.announcements = new Map(house.announcements).set(data.announcement, data.now);
  },
  announcement_removed({ announcement }, house) {
    house.announcements = new Map(house.announcements);
    house.announcements.delete(announcement);
    house.leaving.delete(announcement);
    if (house.status) house.changeStatus({ waiting: house.status.waiting.filter((id) => id !== announcement) });
  },
  room_set_up({ room }, house) {
    house.changeRoom(room, { in_announcement: true });
    // What it says of itself stands, whatever is played.
    const health = house.rooms.get(room)?.health;
    if (health === 'healthy' || health === 'unknown') house.changeRoom(room, { trouble: null });
  },
  room_volume_changed: ({ room, volume }, house) => house.changeRoom(room, { volume }),
  room_restored: ({ room, volume }, house) => house.changeRoom(room, { in_announcement: false, volume }),
  room_output_failed({ room, reason }, house) {
    house.changeRoom(room, { trouble: reason });
    house.failures = [...house.failures, t.log.failed(house.roomName(room), reason)];
  },
  room_health_changed: ({ room, health, reason }, house) => house.changeRoom(room, { health, trouble: reason }),
  screens_woken: ({ room }, house) => house.changeRoom(room, { awake: true }),
  screens_rested: ({ room }, house) => house.changeRoom(room, { awake: false }),
  sound_started: ({ file }, house, time) => house.changeStatus({ sound: { file, since: time } }),
  sound_ended({ file, error }, house) {
    house.changeStatus({ sound: null });
    if (error) house.failures = [...house.failures, t.log.soundFailed(soundOf(file), error)];
  },
  popup_shown: ({ navigator, popup }, house) => house.changeScreen(navigator, { popup }),
  popup_changed({ navigator, number, message }, house) {
    const popup = house.popupOn(navigator);
    if (popup?.number === number) house.changeScreen(navigator, { popup: { ...popup, message } });
  },
  popup_hidden({ navigator, number }, house) {
    if (house.popupOn(navigator)?.number === number) house.changeScreen(navigator, { popup: null });
  },
  pages_changed: ({ navigator, pages, size, armed }, house) => house.changeScreen(navigator, { pages, size, armed }),
  variable_changed({ device, variable, value }, house) {
    house.variables = house.variables.map((one) =>
      one.device === device && one.variable === variable ? { ...one, value } : one,
    );
  },
  state_saved: (_data, house) => house.changeStatus({ state_saved: true, state_error: null }),
  state_not_saved: ({ reason }, house) => house.changeStatus({ state_saved: false, state_error: reason }),
};

/** After these something has changed that no event tells: who waits, which outputs can be heard. */
export const leavesQuestions = (type: string): boolean =>
  ['play_asked', 'queue_changed', 'announcement_started', 'announcement_ended'].includes(type);
