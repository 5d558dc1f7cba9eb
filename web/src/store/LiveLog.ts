// What has happened since the page was opened, in words.

import { handle, type Handlers, type HouseEvent, type HouseEvents } from '../api/events';
import { soundOf } from '../model/format';
import type { Names } from '../model/names';
import { t } from '../texts/page';

const LINES = 1000;

export type Tone = 'plain' | 'good' | 'warning' | 'error';
export type Topic = 'playing' | 'rooms' | 'screens' | 'controller';
interface Said {
  topic: Topic;
  tone: Tone;
  text: string;
}
export interface LogLine extends Said {
  number: number;
  time: string;
}

const TONES: Record<string, Tone> = { error: 'error', warning: 'warning' };

const say = (topic: Topic, text: string, tone: Tone = 'plain'): Said => ({ topic, tone, text });

const words: Handlers<HouseEvents, [names: Names], Said | null> = {
  state: () => say('controller', t.log.state, 'good'),
  play_asked: (data, names) => say('playing', t.log.asked(names.announcementName(data.announcement))),
  announcement_started: (data, names) =>
    say('playing', t.log.started(names.announcementName(data.announcement)), 'good'),
  announcement_ended: (data, names) => say('playing', t.log.ended(names.announcementName(data.announcement))),
  announcement_stored: (data) => (data.now ? say('controller', t.log.stored(data.now.name)) : null),
  announcement_removed: (data) => say('controller', t.log.removed(t.names.announcement(data.announcement))),
  room_set_up: (data, names) => say('rooms', t.log.setUp(names.roomName(data.room), data.volume)),
  room_volume_changed: (data, names) => say('rooms', t.log.volume(names.roomName(data.room), data.volume)),
  room_restored: (data, names) => say('rooms', t.log.restored(names.roomName(data.room), data.volume)),
  room_output_failed: (data, names) => say('rooms', t.log.failed(names.roomName(data.room), data.reason), 'error'),
  screens_woken: (data, names) => say('screens', t.log.woken(names.roomName(data.room))),
  screens_rested: (data, names) => say('screens', t.log.rested(names.roomName(data.room))),
  sound_started: (data) => say('playing', t.log.sound(soundOf(data.file))),
  sound_ended: ({ file, error }) =>
    error
      ? say('playing', t.log.soundFailed(soundOf(file), error), 'error')
      : say('playing', t.log.soundEnded(soundOf(file))),
  popup_shown: (data, names) => say('screens', t.log.popup(names.screenName(data.navigator), data.popup.message)),
  popup_changed: (data, names) => say('screens', t.log.popup(names.screenName(data.navigator), data.message)),
  popup_hidden: (data, names) =>
    say('screens', t.log.hidden(names.screenName(data.navigator), t.log.why[data.why] ?? data.why)),
  pages_changed: (data, names) =>
    say('screens', t.log.pages(names.screenName(data.navigator), data.pages), data.pages ? 'good' : 'warning'),
  variable_changed: (data, names) =>
    say('controller', t.log.value(names.variableName(data.device, data.variable), data.value)),
  state_not_saved: (data) => say('controller', t.log.notSaved(data.reason), 'error'),
  log: (data) => say('controller', data.text, TONES[data.level] ?? 'plain'),
};

export class LiveLog {
  lines: LogLine[] = [];
  private count = 0;

  note(event: HouseEvent, names: Names): void {
    const said = handle(words, event, names);
    if (said) this.add(event.time, said);
  }

  noteLink(isConnected: boolean): void {
    if (!isConnected) this.add(new Date().toISOString(), say('controller', t.log.lost, 'warning'));
  }

  clear(): void {
    this.lines = [];
  }

  private add(time: string, said: Said): void {
    this.count += 1;
    this.lines = [...this.lines.slice(1 - LINES), { number: this.count, time, ...said }];
  }
}
