// The list of announcements, and what one of them will do.

import { counted } from '../counted';
import { number } from '../language';

const all = (count: number): string => counted(count, { one: 'announcement', other: 'announcements' });

export const announcements = {
  list: {
    title: 'Announcements',
    search: 'Search announcements',
    add: 'New announcement',
    addShort: 'New',
    none: 'No announcements yet',
    noneText:
      'An announcement plays a sound in the rooms you choose and shows a message on their screens: “Dinner is ready”, “Somebody is at the door”.',
    first: 'Make the first one',
    notFound: (words: string) => `Nothing here matches “${words}”`,
    clearSearch: 'Show all',
    count: (shown: number, of: number) => (shown === of ? all(of) : `${number(shown)} of ${all(of)}`),
    play: (name: string) => `Play ${name}`,
    edit: (name: string) => `Edit ${name}`,
    preview: (name: string) => `What ${name} will do`,
    editShort: 'Edit',
    duplicateShort: 'Duplicate',
    playing: 'Playing',
    failing: 'Failed',
    waiting: (place: number) => (place === 1 ? 'Next' : `Waiting, number ${place}`),
    noSound: 'No sound',
    noRooms: 'No rooms',
    noScreens: 'No screens',
    follows: (name: string) => `Shows the value of ${name}`,
    silent: 'No message',
    deleted: (name: string) => `“${name}” is deleted`,
  },
  timeline: {
    title: 'What will happen',
    label: (length: string) => `What will happen, over time: ${length}. The steps stand below.`,
    takes: (length: string) => `takes ${length}`,
    endless: 'does not come to an end within ten minutes',
    nothing: 'Nothing would happen: choose a sound and a room, or write a message and choose a screen.',
    asking: 'Asking the agent …',
    wrong: 'Something is not right yet; then what will happen stands here.',
    steps: 'Step by step',
    kinds: { setup: 'Set-up', delay: 'Delay', sound: 'Sound', popup: 'Popup', restore: 'Restore' } as Record<
      string,
      string
    >,
    soundAt: (file: string, volume: number) => `${file}, ${volume} %`,
    bar: (kind: string, start: string, end: string) => `${kind}: ${start} to ${end}`,
  },
  steps: {
    plain: {
      started: 'It starts.',
      ended: 'It has ended; the next one may start.',
      stream_opened: 'The way for the sound is being opened.',
      stream_ready: 'The way for the sound is open.',
      stream_closed: 'The way for the sound is closed.',
      sound_ended: 'The sound has ended.',
    } as Record<string, string>,
    roomSetUp: (room: string) => `${room} gets ready; its volume is kept for later.`,
    volume: (room: string, volume: number) => `${room} is set to ${volume} %.`,
    restored: (room: string) => `${room} is as it was before.`,
    woken: (room: string) => `The screens in ${room} wake up.`,
    rested: (room: string) => `The screens in ${room} go back to rest.`,
    sound: (file: string) => `The sound “${file}” begins.`,
    noSound: (why: string) => `Nothing is heard: ${why}.`,
    noRoom: (room: string) => `${room} is not in this house: nothing is heard there.`,
    noScreen: (screen: string) => `${screen} is not in this house: nothing is shown there.`,
    popup: (screen: string, text: string, hasOk: boolean) =>
      `${screen} shows “${text}”${hasOk ? ', with an OK button' : ''}.`,
    hidden: (screen: string) => `${screen} no longer shows it.`,
  },
  preview: {
    title: 'On a screen',
    none: 'No message: the screens stay as they are.',
    label: (message: string) => `The message as a screen shows it: ${message}`,
  },
};
