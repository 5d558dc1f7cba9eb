// What has happened since the page was opened, in words.

import type { ServerEvent } from '../api/types';
import { soundOf } from '../model/format';
import { t } from '../texts';
import type { Store } from './Store';

const LINES = 1000;

export type Tone = 'plain' | 'good' | 'warning' | 'error';
export type Topic = 'playing' | 'rooms' | 'screens' | 'controller';
export interface LogLine { number: number; time: string; topic: Topic; tone: Tone; text: string }

type Words = (data: never, store: Store) => { topic: Topic; tone?: Tone; text: string } | null;

const TONES: Record<string, Tone> = { error: 'error', warning: 'warning' };

const words: Record<string, Words> = {
  state: () => ({ topic: 'controller', tone: 'good', text: t.log.state }),
  play_asked: (data: { announcement: number }, store) => ({ topic: 'playing', text: t.log.asked(store.announcementName(data.announcement)) }),
  announcement_started: (data: { announcement: number }, store) =>
    ({ topic: 'playing', tone: 'good', text: t.log.started(store.announcementName(data.announcement)) }),
  announcement_ended: (data: { announcement: number }, store) => ({ topic: 'playing', text: t.log.ended(store.announcementName(data.announcement)) }),
  announcement_stored: (data: { announcement: number; now: { name: string } | null }) =>
    (data.now ? { topic: 'controller', text: t.log.stored(data.now.name) } : null),
  announcement_removed: (data: { announcement: number }) => ({ topic: 'controller', text: t.log.removed(t.names.announcement(data.announcement)) }),
  room_set_up: (data: { room: number; volume: number }, store) => ({ topic: 'rooms', text: t.log.setUp(store.roomName(data.room), data.volume) }),
  room_volume_changed: (data: { room: number; volume: number }, store) => ({ topic: 'rooms', text: t.log.volume(store.roomName(data.room), data.volume) }),
  room_restored: (data: { room: number; volume: number }, store) => ({ topic: 'rooms', text: t.log.restored(store.roomName(data.room), data.volume) }),
  room_output_failed: (data: { room: number; reason: string }, store) =>
    ({ topic: 'rooms', tone: 'error', text: t.log.failed(store.roomName(data.room), data.reason) }),
  screens_woken: (data: { room: number }, store) => ({ topic: 'screens', text: t.log.woken(store.roomName(data.room)) }),
  screens_rested: (data: { room: number }, store) => ({ topic: 'screens', text: t.log.rested(store.roomName(data.room)) }),
  sound_started: (data: { file: string }) => ({ topic: 'playing', text: t.log.sound(soundOf(data.file)) }),
  sound_ended: (data: { file: string; error: string | null }) =>
    (data.error ? { topic: 'playing', tone: 'error', text: t.log.soundFailed(soundOf(data.file), data.error) } : { topic: 'playing', text: t.log.soundEnded(soundOf(data.file)) }),
  popup_shown: (data: { navigator: number; popup: { message: string } }, store) =>
    ({ topic: 'screens', text: t.log.popup(store.screenName(data.navigator), data.popup.message) }),
  popup_changed: (data: { navigator: number; message: string }, store) => ({ topic: 'screens', text: t.log.popup(store.screenName(data.navigator), data.message) }),
  popup_hidden: (data: { navigator: number; why: string }, store) =>
    ({ topic: 'screens', text: t.log.hidden(store.screenName(data.navigator), t.log.why[data.why] ?? data.why) }),
  pages_changed: (data: { navigator: number; pages: number }, store) =>
    ({ topic: 'screens', tone: data.pages ? 'good' : 'warning', text: t.log.pages(store.screenName(data.navigator), data.pages) }),
  variable_changed: (data: { device: number; variable: number; value: string }, store) =>
    ({ topic: 'controller', text: t.log.value(store.variableName(data.device, data.variable), data.value) }),
  state_not_saved: (data: { reason: string }) => ({ topic: 'controller', tone: 'error', text: t.log.notSaved(data.reason) }),
  log: (data: { level: string; text: string }) => ({ topic: 'controller', tone: TONES[data.level] ?? 'plain', text: data.text }),
};

export class LiveLog {
  lines: LogLine[] = [];
  private count = 0;

  note(event: ServerEvent, store: Store): void {
    const line = words[event.type]?.(event.data as never, store);
    if (line) this.add(event.time, { tone: 'plain', ...line });
  }

  noteLink(isConnected: boolean): void {
    if (!isConnected) this.add(new Date().toISOString(), { topic: 'controller', tone: 'warning', text: t.log.lost });
  }

  clear(): void {
    this.lines = [];
  }

  private add(time: string, line: Omit<LogLine, 'number' | 'time'>): void {
    this.count += 1;
    this.lines = [...this.lines.slice(1 - LINES), { number: this.count, time, ...line }];
  }
}
