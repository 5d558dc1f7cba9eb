// What is wrong with an announcement before anybody plays it.

import type { AnnouncementBody, MediaFile, Room } from '../api/objects';
import { t } from '../texts/page';
import { listing } from './format';

type Heard = Pick<Room, 'name' | 'health' | 'trouble'>;

export interface Known {
  rooms: ReadonlyMap<number, Heard>;
  screens: ReadonlyMap<number, unknown>;
  media: MediaFile[] | null; // null while nobody has asked
}

const hasMessage = ({ text, image, variable }: AnnouncementBody['video']): boolean =>
  text !== '' || image !== '' || variable !== null;

/** Why nothing, or less than was meant, would be heard or seen; empty where it is whole. */
export function lackOf({ audio, video, rooms, navigators }: AnnouncementBody): string {
  const isHeard = audio.file !== '' && rooms.length > 0;
  const isSeen = hasMessage(video) && navigators.length > 0;
  if (!isHeard && !isSeen) return t.faults.nothing;
  if (audio.file !== '' && rooms.length === 0) return t.faults.noRoom;
  if (hasMessage(video) && navigators.length === 0) return t.faults.noScreen;
  return '';
}

/** Whether what is played in the room now would be lost. One that is silent on purpose has no trouble. */
export const isUnheard = ({ health, trouble }: Omit<Heard, 'name'>): boolean =>
  health === 'unheard' || (health === 'silent' && trouble !== null);

const MOST_NAMED = 3;
const MOST_TOLD = 2;

/** As many failures as find room beside what one came for, and how many more there are. */
export function fewOf(failures: string[]): string[] {
  const rest = failures.length - MOST_TOLD;
  return rest > 0 ? [...failures.slice(0, MOST_TOLD), t.now.more(rest)] : failures;
}

/** In which of these rooms it would be lost now; empty where in none. */
export function unheardIn(ids: number[], rooms: Known['rooms']): string {
  const names = ids.flatMap((id) => {
    const room = rooms.get(id);
    return room && isUnheard(room) ? [room.name] : [];
  });
  if (names.length === 0) return '';
  return names.length > MOST_NAMED ? t.faults.manyUnheard(names.length) : t.faults.unheard(listing(names));
}

export function faultsOf(one: AnnouncementBody, known: Known): string[] {
  const strangeRooms = one.rooms.filter(({ id }) => !known.rooms.has(id));
  const strangeScreens = one.navigators.filter(({ id }) => !known.screens.has(id));
  return [
    ...soundFault(one.audio.file, known.media),
    ...imageFault(one.video.image, known.media),
    ...strangeRooms.map(({ id }) => t.faults.room(id)),
    ...strangeScreens.map(({ id }) => t.faults.screen(id)),
    ...[
      one.audio.file &&
        unheardIn(
          one.rooms.map(({ id }) => id),
          known.rooms,
        ),
    ].filter(Boolean),
    ...[lackOf(one)].filter(Boolean).map((lack) => (lack === t.faults.nothing ? t.faults.idle : lack)),
  ];
}

function soundFault(file: string, media: MediaFile[] | null): string[] {
  if (!file || !media) return [];
  const found = media.find(({ kind, name }) => kind === 'sound' && name === `${file}.wav`);
  if (!found) return [t.faults.sound(file)];
  return found.trouble ? [t.faults.unplayable(file, found.trouble)] : [];
}

function imageFault(image: string, media: MediaFile[] | null): string[] {
  if (!image || !media || /^https?:/i.test(image)) return [];
  return media.some(({ kind, name }) => kind === 'image' && name === image) ? [] : [t.faults.image(image)];
}
