// What has happened, in words: as far back as the controller keeps it, and as it happens.

import { handle, type Handlers, type HouseEvent, type HouseEvents } from '../api/events';
import { soundOf } from '../model/format';
import type { Names } from '../model/names';
import { t, textFor } from '../texts/page';

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
  announcement_stopped: (data, names) => say('playing', t.log.stopped(names.announcementName(data.announcement))),
  announcement_stored: (data, names) =>
    say('controller', t.log.stored(data.now?.name ?? names.announcementName(data.announcement))),
  announcement_removed: (data) => say('controller', t.log.removed(t.names.announcement(data.announcement))),
  room_set_up: (data, names) => say('rooms', t.log.setUp(names.roomName(data.room), data.volume)),
  room_volume_changed: (data, names) => say('rooms', t.log.volume(names.roomName(data.room), data.volume)),
  room_restored: (data, names) => say('rooms', t.log.restored(names.roomName(data.room), data.volume)),
  room_output_failed: (data, names) => say('rooms', t.log.failed(names.roomName(data.room), data.reason), 'error'),
  room_health_changed: ({ room, health, reason }, names) =>
    reason
      ? say('rooms', t.log.unheard(names.roomName(room), reason), 'error')
      : health === 'healthy'
        ? say('rooms', t.log.healthy(names.roomName(room)), 'good')
        : null,
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
    say('screens', t.log.hidden(names.screenName(data.navigator), textFor(t.log.why, data.why) ?? data.why)),
  pages_changed: (data, names) =>
    say('screens', t.log.pages(names.screenName(data.navigator), data.pages), data.pages ? 'good' : 'warning'),
  variable_changed: (data, names) =>
    say('controller', t.log.value(names.variableName(data.device, data.variable), data.value)),
  media_stored: (data) => say('controller', t.log.mediaStored(data.name)),
  media_removed: (data) => say('controller', t.log.mediaRemoved(data.name)),
  voice_failed: (data) => say('controller', t.log.voiceFailed(data.voice, data.reason), 'error'),
  voice_recovered: (data) => say('controller', t.log.voiceRecovered(data.voice), 'good'),
  state_not_saved: (data) => say('controller', t.log.notSaved(data.reason), 'error'),
  log: (data) => say('controller', data.text, TONES[data.level] ?? 'plain'),
};

export class LiveLog {
  lines: LogLine[] = [];
  private count = 0;
  private run = ''; // of the controller: its events are numbered anew after each start
  private seen = 0; // the number of its last event that has come here
  // What the last connecting has left out, and the line that stands after it.
  private gap = { after: 0, until: 0, line: 0 };

  note(event: HouseEvent, names: Names): void {
    if (event.type === 'state') this.begin(event.data.status.started, event.seq);
    this.seen = event.seq;
    const said = handle(words, event, names);
    if (said) this.lines = [...this.lines.slice(1 - LINES), this.line(event.time, said)];
  }

  /** The controller's recent events: those that nobody has noted yet. */
  noteEarlier(events: HouseEvent[], names: Names): void {
    const { after, until, line } = this.gap;
    this.gap = { after: until, until, line };
    const earlier = events
      .filter(({ seq }) => seq > after && seq <= until)
      .map((event) => ({ time: event.time, said: handle(words, event, names) }))
      .flatMap(({ time, said }) => (said ? [this.line(time, said)] : []));
    const place = this.lines.findIndex(({ number }) => number >= line);
    const at = place < 0 ? this.lines.length : place;
    this.lines = [...this.lines.slice(0, at), ...earlier, ...this.lines.slice(at)].slice(-LINES);
  }

  noteLink(isConnected: boolean): void {
    if (isConnected) return;
    const lost = this.line(new Date().toISOString(), say('controller', t.log.lost, 'warning'));
    this.lines = [...this.lines.slice(1 - LINES), lost];
  }

  clear(): void {
    this.lines = [];
  }

  private begin(run: string, seq: number): void {
    const isSame = run === this.run;
    this.run = run;
    this.gap = { after: isSame ? this.seen : 0, until: seq, line: this.count + 1 };
  }

  private line(time: string, said: Said): LogLine {
    this.count += 1;
    return { number: this.count, time, ...said };
  }
}
