// What the controller says is so: the full state first, then every change. The one place that components look at.

import type { Link } from '../api/EventStream';
import { handle, type HouseEvent } from '../api/events';
import { request } from '../api/request';
import type { MediaFile, Voice } from '../api/objects';
import { byId, House } from './House';
import { LiveLog } from './LiveLog';
import { leavesQuestions, reducers } from './reducers';

const GATHERING = 150; // several reasons to ask again become one question
const MOST_RECENT = 1000; // as many as the controller keeps

export class Store extends House {
  media: MediaFile[] | null = null; // null until it is asked for
  voices: Voice[] = []; // empty until they are asked for
  rights: string[] = [];
  link: Link = { isConnected: false, retryAt: 0, problem: null };
  readonly log = new LiveLog();
  private readonly listeners = new Set<() => void>();
  private isTelling = false;
  private refreshTimer = 0;
  private mediaTimer = 0;
  private ahead = 0; // of this device's clock, the controller's
  private changes = 0; // counts what has been taken from the event stream

  get mayEdit(): boolean {
    return this.rights.includes('admin');
  }
  get mayPlay(): boolean {
    return this.mayEdit || this.rights.includes('play');
  }

  /** `listener` is called after changes, once for several at a time. Gives the way to end it. */
  subscribe(listener: () => void): () => void {
    this.listeners.add(listener);
    return () => {
      this.listeners.delete(listener);
    };
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

  /** By the controller's clock. */
  now(): number {
    return Date.now() + this.ahead;
  }

  apply(event: HouseEvent): void {
    this.ahead = Date.parse(event.time) - Date.now();
    if (event.type in reducers) this.changes += 1;
    handle(reducers, event, this, event.time);
    if (leavesQuestions(event.type)) this.refreshSoon();
    if (event.type === 'media_stored' || event.type === 'media_removed') this.reloadMediaSoon();
    if (event.type === 'voice_failed' || event.type === 'voice_recovered') this.loadVoices().catch(() => undefined);
    this.log.note(event, this);
    if (event.type === 'state') void this.lookBack();
    this.changed();
  }

  /** What happened before this page heard of it. */
  private async lookBack(): Promise<void> {
    try {
      const { events } = await request('get', '/api/events/recent', { query: { limit: String(MOST_RECENT) } });
      this.log.noteEarlier(events as HouseEvent[], this);
      this.changed();
    } catch {
      // The next connection brings it.
    }
  }

  private reloadMediaSoon(): void {
    if (this.media === null || this.mediaTimer) return;
    this.mediaTimer = window.setTimeout(() => {
      this.mediaTimer = 0;
      // The next event or the next connection brings what could not be had.
      this.loadMedia().catch(() => undefined);
    }, GATHERING);
  }

  /** Asks, in a moment, for what no event tells. */
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
        request('get', '/api/status'),
        request('get', '/api/rooms'),
        request('get', '/api/navigators'),
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
    this.media = (await request('get', '/api/media')).media;
    this.changed();
  }

  /** Throws `Problem`. */
  async loadVoices(): Promise<void> {
    this.voices = (await request('get', '/api/voices')).voices;
    this.changed();
  }
}
