// What the page knows of the house, and what the things in it are called.

import type { Announcement, MediaFile, Popup, Room, Screen, Status, Variable } from '../api/objects';
import type { Names } from '../model/names';
import { t } from '../texts/page';

export class House implements Names {
  status: Status | null = null; // null until the first state
  announcements = new Map<number, Announcement>();
  rooms = new Map<number, Room>();
  screens = new Map<number, Screen>();
  variables: Variable[] = [];
  states = 0; // as many as came: one after each connecting
  endings = 0; // grows when the history has something new
  stopped: number | null = null; // what somebody has stopped, until the agent has let go of it
  failures: string[] = []; // of what plays, in words
  /** What ended last with failures. */
  failed: { name: string; failures: string[] } | null = null;
  /** Ids that are about to be deleted, and are not shown any more. */
  readonly leaving = new Set<number>();

  get isReady(): boolean {
    return this.status !== null;
  }

  announcementName(id: number): string {
    const playing = this.status?.playing;
    const nameOfPlaying = playing?.announcement === id ? playing.name : '';
    return this.announcements.get(id)?.name ?? (nameOfPlaying || t.names.announcement(id));
  }

  roomName(id: number): string {
    return this.rooms.get(id)?.name ?? t.names.room(id);
  }

  screenName(id: number): string {
    return this.screens.get(id)?.name ?? t.names.screen(id);
  }

  variableName(device: number, variable: number): string {
    const found = this.variables.find((one) => one.device === device && one.variable === variable);
    return found?.name ?? t.names.variable(device, variable);
  }

  popupOn(id: number): Popup | null {
    return this.screens.get(id)?.popup ?? null;
  }

  /** Announcements that a sound or an image of the media folder belongs to. */
  usersOf(file: MediaFile): Announcement[] {
    const sound = file.name.replace(/\.wav$/, '');
    const isUser = (one: Announcement): boolean =>
      file.kind === 'sound' ? one.audio.file === sound : one.video.image === file.name;
    return [...this.announcements.values()].filter(isUser);
  }

  changeStatus(changes: Partial<Status>): void {
    if (this.status) this.status = { ...this.status, ...changes };
  }

  changeRoom(id: number, changes: Partial<Room>): void {
    const room = this.rooms.get(id);
    if (room) this.rooms.set(id, { ...room, ...changes });
  }

  changeScreen(id: number, changes: Partial<Screen>): void {
    const screen = this.screens.get(id);
    if (screen) this.screens.set(id, { ...screen, ...changes });
  }
}

export function byId<T extends { id: number }>(items: T[]): Map<number, T> {
  return new Map(items.map((item) => [item.id, item]));
}
