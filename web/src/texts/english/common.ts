// What stands on every view: names, units, the frame.

import { number } from '../language';

export const common = {
  and: (most: string, last: string) => `${most} and ${last}`,
  appName: 'Announcements',
  skip: 'Skip to the content',
  title: (view: string, house: string) => `${view} · ${house}`,
  cancel: 'Cancel',
  close: 'Close',
  save: 'Save',
  undo: 'Undo',
  delete: 'Delete',
  yes: 'yes',
  no: 'no',
  places: {
    label: 'Pages',
    announcements: 'Announcements',
    house: 'House',
    media: 'Media',
    history: 'History',
    log: 'Log',
  },
  names: {
    announcement: (id: number) => `Announcement ${id}`,
    room: (id: number) => `Room ${id}`,
    screen: (id: number) => `Screen ${id}`,
    testTone: 'test tone',
    spokenSound: 'spoken sound',
    variable: (device: number, variable: number) => `variable ${variable} of device ${device}`,
  },
  excerpt: {
    search: (list: string) => `Search ${list}`,
    shown: (shown: number, all: number) => `${number(shown)} of ${number(all)}. Search for the others by name.`,
  },
  units: {
    secondsName: 's',
    seconds: (value: number) => `${number(value)} s`,
    minutes: (minutes: number, seconds: number) => `${minutes} min ${seconds} s`,
    bytes: (value: number) => `${number(value)} bytes`,
    kilobytes: (value: number) => `${number(value)} kB`,
    megabytes: (value: number) => `${number(value)} MB`,
    percent: (value: number) => `${value} %`,
    unchanged: 'as it is',
  },
  problem: {
    noAgent: 'The agent is not running: announcements cannot be played.',
    notSaved: (why: string) => `Changes are not on the disk yet: ${why}`,
  },
  link: {
    connected: 'Connected',
    connecting: 'Connecting …',
    lost: 'Not connected',
    lostLong: 'Not connected. What you see may be out of date; trying again …',
    awaited: 'This is shown as soon as there is a connection.',
  },
  theme: { light: 'Light', dark: 'Dark', auto: 'As the system', label: (name: string) => `Colours: ${name}` },
  access: {
    title: 'Sign in',
    intro:
      'This house needs a token. Whoever looks after the controller makes one with this command, and it is shown once:',
    command: 'announcement-controller token add my-phone --right admin --house house.yaml',
    field: 'Token',
    keep: 'Keep me signed in on this device',
    submit: 'Sign in',
    signOut: 'Sign out',
    wrong: 'This token is not known here. Check that all of it was copied.',
    often: 'Too many wrong tokens. Wait a minute and try again.',
    screenTitle: 'This token belongs to a screen',
    screenText:
      'It opens the page of that screen, and nothing else. This page needs a token with the right “play” or “admin”.',
    openScreen: (id: number) => `Open the page of screen ${id}`,
  },
};
