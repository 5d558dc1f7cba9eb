// What stands on every view: names, units, the frame.

import { number } from '../language';
import type { common as English } from '../english/common';

export const common: typeof English = {
  and: (most: string, last: string) => `${most} und ${last}`,
  appName: 'Durchsagen',
  skip: 'Zum Inhalt springen',
  title: (view: string, house: string) => `${view} · ${house}`,
  cancel: 'Abbrechen',
  close: 'Schließen',
  save: 'Speichern',
  undo: 'Rückgängig',
  delete: 'Löschen',
  yes: 'ja',
  no: 'nein',
  places: {
    label: 'Seiten',
    announcements: 'Durchsagen',
    house: 'Haus',
    media: 'Medien',
    history: 'Verlauf',
    log: 'Protokoll',
  },
  names: {
    announcement: (id: number) => `Durchsage ${id}`,
    room: (id: number) => `Raum ${id}`,
    screen: (id: number) => `Bildschirm ${id}`,
    testTone: 'Testton',
    spokenSound: 'gesprochener Ton',
    variable: (device: number, variable: number) => `Variable ${variable} von Gerät ${device}`,
  },
  excerpt: {
    search: (list: string) => `${list} durchsuchen`,
    shown: (shown: number, all: number) =>
      `${number(shown)} von ${number(all)}. Die anderen sind mit ihrem Namen zu finden.`,
  },
  units: {
    secondsName: 's',
    seconds: (value: number) => `${number(value)} s`,
    minutes: (minutes: number, seconds: number) => `${minutes} min ${seconds} s`,
    bytes: (value: number) => `${number(value)} Byte`,
    kilobytes: (value: number) => `${number(value)} kB`,
    megabytes: (value: number) => `${number(value)} MB`,
    percent: (value: number) => `${value} %`,
    unchanged: 'wie sie ist',
  },
  problem: {
    noAgent: 'Der Agent läuft nicht: Durchsagen können nicht gespielt werden.',
    notSaved: (why: string) => `Änderungen stehen noch nicht auf der Platte: ${why}`,
  },
  link: {
    connected: 'Verbunden',
    connecting: 'Verbindung wird aufgebaut …',
    lost: 'Nicht verbunden',
    lostLong: 'Nicht verbunden. Was hier steht, kann veraltet sein; neuer Versuch …',
    awaited: 'Das wird gezeigt, sobald es eine Verbindung gibt.',
  },
  theme: { light: 'Hell', dark: 'Dunkel', auto: 'Wie das System', label: (name: string) => `Farben: ${name}` },
  access: {
    title: 'Anmelden',
    intro:
      'Dieses Haus verlangt ein Token. Wer sich um die Steuerung kümmert, macht eines mit diesem Befehl; es wird einmal gezeigt:',
    command: 'announcement-controller token add mein-handy --right admin --house haus.yaml',
    field: 'Token',
    keep: 'Auf diesem Gerät angemeldet bleiben',
    submit: 'Anmelden',
    signOut: 'Abmelden',
    wrong: 'Dieses Token ist hier nicht bekannt. Wurde es ganz kopiert?',
    often: 'Zu viele falsche Tokens. In einer Minute noch einmal versuchen.',
    screenTitle: 'Dieses Token gehört einem Bildschirm',
    screenText:
      'Es öffnet die Seite dieses Bildschirms und sonst nichts. Diese Seite braucht ein Token mit dem Recht „play“ oder „admin“.',
    openScreen: (id: number) => `Die Seite von Bildschirm ${id} öffnen`,
  },
};
