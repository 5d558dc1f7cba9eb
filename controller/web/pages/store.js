// What the controller says is so: the full state first, then every change.

import { request } from './api.js';

const LOG_LINES = 400;

export class Store {
  constructor() {
    this.status = null; // null until the first state
    this.announcements = new Map();
    this.rooms = new Map();
    this.navigators = new Map();
    this.variables = [];
    this.log = [];
    this.rights = [];
    this.link = { connected: false, retryAt: 0, problem: null };
    this.endings = 0; // grows when the history has something new
    this.listeners = new Set();
    this.isTelling = false;
  }

  get isReady() { return this.status !== null; }
  get mayEdit() { return this.rights.includes('admin'); }
  get mayPlay() { return this.mayEdit || this.rights.includes('play'); }

  /** `listener()` is called after changes, once for several at a time. Gives the way to end it. */
  subscribe(listener) {
    this.listeners.add(listener);
    return () => this.listeners.delete(listener);
  }

  changed() {
    if (this.isTelling) return;
    this.isTelling = true;
    Promise.resolve().then(() => {
      this.isTelling = false;
      for (const listener of [...this.listeners]) listener();
    });
  }

  setLink(link) {
    this.link = link;
    this.changed();
  }

  setRights(rights) {
    this.rights = rights;
    this.changed();
  }

  apply(event) {
    const reducer = REDUCERS[event.type];
    if (reducer) reducer(this, event.data, event);
    this.changed();
  }

  /** Asks for what no event tells: who waits, which screens are connected, which outputs can be heard. */
  async refresh() {
    if (!this.isReady || !this.link.connected) return;
    try {
      const [status, rooms, navigators] = await Promise.all([
        request('GET', '/api/status'), request('GET', '/api/rooms'), request('GET', '/api/navigators'),
      ]);
      this.status = status;
      this.rooms = byId(rooms.rooms);
      this.navigators = byId(navigators.navigators);
      this.changed();
    } catch (problem) {
      // The next event or the next try brings it.
    }
  }

  announcementName(id) {
    const found = this.announcements.get(id);
    return found ? found.name : `Announcement ${id}`;
  }

  roomName(id) {
    return this.rooms.has(id) ? this.rooms.get(id).name : `Room ${id}`;
  }

  navigatorName(id) {
    return this.navigators.has(id) ? this.navigators.get(id).name : `Screen ${id}`;
  }

  note(level, text, time) {
    this.log.push({ level, text, time });
    if (this.log.length > LOG_LINES) this.log.shift();
  }

  changeRoom(id, changes) {
    if (this.rooms.has(id)) this.rooms.set(id, { ...this.rooms.get(id), ...changes });
  }

  changePopup(id, popup) {
    if (this.navigators.has(id)) this.navigators.set(id, { ...this.navigators.get(id), popup });
  }
}

const byId = (items) => new Map(items.map((item) => [item.id, item]));

const REDUCERS = {
  state(store, data) {
    store.status = data.status;
    store.announcements = byId(data.announcements);
    store.rooms = byId(data.rooms);
    store.navigators = byId(data.navigators);
    store.variables = data.variables;
    store.endings += 1;
  },
  announcement_started(store, data, event) {
    const { announcement } = data;
    const playing = { announcement, name: store.announcementName(announcement), since: event.time };
    const waiting = store.status.waiting.filter((id) => id !== announcement);
    store.status = { ...store.status, playing, waiting };
    store.endings += 1;
    store.refresh();
  },
  announcement_ended(store) {
    store.status = { ...store.status, playing: null };
    store.endings += 1;
    store.refresh();
  },
  announcement_stored(store, data) {
    store.announcements.set(data.announcement, data.now);
  },
  announcement_removed(store, data) {
    store.announcements.delete(data.announcement);
  },
  room_set_up: (store, data) => store.changeRoom(data.room, { in_announcement: true, trouble: null }),
  room_volume_changed: (store, data) => store.changeRoom(data.room, { volume: data.volume }),
  room_restored: (store, data) => store.changeRoom(data.room, { in_announcement: false, volume: data.volume }),
  room_output_failed: (store, data) => store.changeRoom(data.room, { trouble: data.reason }),
  screens_woken: (store, data) => store.changeRoom(data.room, { awake: true }),
  screens_rested: (store, data) => store.changeRoom(data.room, { awake: false }),
  sound_started(store, data, event) {
    store.status = { ...store.status, sound: { file: data.file, since: event.time } };
  },
  sound_ended(store, data, event) {
    store.status = { ...store.status, sound: null };
    if (data.error) store.note('error', `${data.file}: ${data.error}`, event.time);
  },
  popup_shown: (store, data) => store.changePopup(data.navigator, data.popup),
  popup_changed(store, data) {
    const navigator = store.navigators.get(data.navigator);
    if (navigator && navigator.popup) store.changePopup(data.navigator, { ...navigator.popup, message: data.message });
  },
  popup_hidden(store, data) {
    const navigator = store.navigators.get(data.navigator);
    if (navigator && navigator.popup && navigator.popup.number === data.number) store.changePopup(data.navigator, null);
  },
  variable_changed(store, data) {
    const isIt = (one) => one.device === data.device && one.variable === data.variable;
    store.variables = store.variables.map((one) => (isIt(one) ? { ...one, value: data.value } : one));
  },
  state_saved(store) {
    store.status = { ...store.status, state_saved: true, state_error: null };
  },
  state_not_saved(store, data) {
    store.status = { ...store.status, state_saved: false, state_error: data.reason };
  },
  log: (store, data, event) => store.note(data.level, data.text, event.time),
};
