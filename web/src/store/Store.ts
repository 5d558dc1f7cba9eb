// What the controller says is so: the full state first, then every change. The one place that components look at.

import type { Link } from '../api/EventStream';
import { request } from '../api/request';
import type { Announcement, MediaFile, Popup, Room, Screen, ServerEvent, Status, Variable } from '../api/types';
import { t } from '../texts';
import { LiveLog } from './LiveLog';
import { reducers } from './reducers';

const GATHERING = 150; // several reasons to ask again become one question

export class Store {
  status: Status | null = null; // null until the first state
  announcements = new Map<number, Announcement>();
  rooms = new Map<number, Room>();
  screens = new Map<number, Screen>();
  variables: Variable[] = [];
  media: MediaFile[] | null = null; // null until it is asked for
  rights: string[] = [];
  link: Link = { isConnected: false, problem: null };
  endings = 0; // grows when the history has something new
  /** Ids that are about to be deleted, and are not shown any more. */
  readonly leaving = new Set<number>();
  readonly log = new LiveLog();
  private readonly listeners = new Set<() => void>();
  private isTelling = false;
  private refreshTimer = 0;
  private changes = 0; // counts what has been taken from the event stream

  get isReady(): boolean { return this.status !== null; }
  get mayEdit(): boolean { return this.rights.includes('admin'); }
  get mayPlay(): boolean { return this.mayEdit || this.rights.includes('play'); }

  /** `listener` is called after changes, once for several at a time. Gives the way to end it. */
  subscribe(listener: () => void): () => void {
    this.listeners.add(listener);
    return () => { this.listeners.delete(listener); };
  }

  changed(): void {
    if (this.isTelling) return;
    this.isTelling = true;
    queueMicrotask(() => {
      this.isTelling = false;
      for (const listener of [...this.listeners]) listener();
    });
  }

  setLink(link: Link): void {
    if (this.isReady && link.isConnected !== this.link.isConnected) this.log.noteLink(link.isConnected);
    this.link = link;
    this.changed();
  }

  setRights(rights: string[]): void {
    this.rights = rights;
    this.changed();
  }

  apply(event: ServerEvent): void {
    const reducer = reducers[event.type];
    if (reducer) this.changes += 1;
    reducer?.(this, event.data as never, event);
    this.log.note(event, this);
    this.changed();
  }

  /** Asks, in a moment, for what no event tells: who waits, which outputs can be heard. */
  refreshSoon(): void {
    if (this.refreshTimer) return;
    this.refreshTimer = window.setTimeout(() => {
      this.refreshTimer = 0;
      void this.refresh();
    }, GATHERING);
  }

  async refresh(): Promise<void> {
    if (!this.isReady || !this.link.isConnected) return;
    const asked = this.changes;
    try {
      const [status, rooms, screens] = await Promise.all([
        request<Status>('GET', '/api/status'),
        request<{ rooms: Room[] }>('GET', '/api/rooms'),
        request<{ navigators: Screen[] }>('GET', '/api/navigators'),
      ]);
      if (asked !== this.changes) {
        this.refreshSoon(); // what came meanwhile is newer than the answer may be
        return;
      }
      this.status = status;
      this.rooms = byId(rooms.rooms);
      this.screens = byId(screens.navigators);
      this.changed();
    } catch {
      // The next event or the next try brings it.
    }
  }

  /** Throws `Problem`. */
  async loadMedia(): Promise<void> {
    this.media = (await request<{ media: MediaFile[] }>('GET', '/api/media')).media;
    this.changed();
  }

  announcementName(id: number): string {
    return this.announcements.get(id)?.name
      ?? (this.status?.playing?.announcement === id && this.status.playing.name ? this.status.playing.name : t.names.announcement(id));
  }

  roomName(id: number): string { return this.rooms.get(id)?.name ?? t.names.room(id); }
  screenName(id: number): string { return this.screens.get(id)?.name ?? t.names.screen(id); }

  variableName(device: number, variable: number): string {
    return this.variables.find((one) => one.device === device && one.variable === variable)?.name ?? t.names.variable(device, variable);
  }

  /** Announcements that a sound or an image of the media folder belongs to. */
  usersOf(file: MediaFile): Announcement[] {
    const sound = file.name.replace(/\.wav$/, '');
    const isUser = (one: Announcement): boolean => (file.kind === 'sound' ? one.audio.file === sound : one.video.image === file.name);
    return [...this.announcements.values()].filter(isUser);
  }

  changeRoom(id: number, changes: Partial<Room>): void {
    const room = this.rooms.get(id);
    if (room) this.rooms.set(id, { ...room, ...changes });
  }

  changeScreen(id: number, changes: Partial<Screen>): void {
    const screen = this.screens.get(id);
    if (screen) this.screens.set(id, { ...screen, ...changes });
  }

  popupOn(id: number): Popup | null { return this.screens.get(id)?.popup ?? null; }
}

export function byId<T extends { id: number }>(items: T[]): Map<number, T> {
  return new Map(items.map((item) => [item.id, item]));
}
