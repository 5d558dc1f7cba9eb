// The list of announcements, and what one of them will do.

import { counted } from '../counted';
import { number } from '../language';
import type { announcements as English } from '../english/announcements';

const all = (count: number): string => counted(count, { one: 'Durchsage', other: 'Durchsagen' });

export const announcements: typeof English = {
  list: {
    title: 'Durchsagen',
    search: 'Durchsagen durchsuchen',
    add: 'Neue Durchsage',
    addShort: 'Neu',
    none: 'Noch keine Durchsagen',
    noneText:
      'Eine Durchsage spielt einen Ton in den gewählten Räumen und zeigt eine Nachricht auf ihren Bildschirmen: „Das Essen ist fertig“, „Jemand ist an der Tür“.',
    first: 'Die erste anlegen',
    notFound: (words: string) => `Nichts hier passt zu „${words}“`,
    clearSearch: 'Alle zeigen',
    count: (shown: number, of: number) => (shown === of ? all(of) : `${number(shown)} von ${all(of)}`),
    play: (name: string) => `${name} abspielen`,
    edit: (name: string) => `${name} bearbeiten`,
    preview: (name: string) => `Was ${name} tun wird`,
    editShort: 'Bearbeiten',
    duplicateShort: 'Duplizieren',
    playing: 'Läuft',
    failing: 'Gescheitert',
    waiting: (place: number) => (place === 1 ? 'Als Nächste' : `Wartet, Platz ${place}`),
    noSound: 'Kein Ton',
    noRooms: 'Keine Räume',
    noScreens: 'Keine Bildschirme',
    follows: (name: string) => `Zeigt den Wert von ${name}`,
    silent: 'Keine Nachricht',
    deleted: (name: string) => `„${name}“ ist gelöscht`,
    favourite: (name: string) => `${name} ist ein Favorit`,
    order: 'Reihenfolge',
    orders: { newest: 'Neueste zuerst', name: 'Nach Namen', used: 'Zuletzt gespielte zuerst' },
    tag: 'Zeigen',
    everything: 'Alles',
    favourites: '★ Favoriten',
    tags: 'Stichwörter',
  },
  faults: {
    sound: (file: string) => `Der Ton „${file}“ fehlt`,
    unplayable: (file: string, why: string) => `Der Ton „${file}“ ist nicht spielbar: ${why}`,
    image: (file: string) => `Das Bild „${file}“ fehlt`,
    room: (id: number) => `Raum ${id} gibt es in diesem Haus nicht`,
    screen: (id: number) => `Bildschirm ${id} gibt es in diesem Haus nicht`,
    idle: 'Sie würde nichts tun',
    nothing: 'Sie würde nichts tun: Sie hat keinen Ton mit einem Raum und keine Nachricht mit einem Bildschirm',
    noRoom: 'Ihr Ton ist nirgends zu hören: Kein Raum ist gewählt',
    noScreen: 'Ihre Nachricht ist nirgends zu sehen: Kein Bildschirm ist gewählt',
  },
  timeline: {
    title: 'Was geschehen wird',
    label: (length: string) => `Was geschehen wird, im Lauf der Zeit: ${length}. Die Schritte stehen darunter.`,
    takes: (length: string) => `dauert ${length}`,
    endless: 'kommt binnen zehn Minuten nicht zum Ende',
    nothing:
      'Es würde nichts geschehen: einen Ton und einen Raum wählen, oder eine Nachricht schreiben und einen Bildschirm wählen.',
    asking: 'Der Agent wird gefragt …',
    wrong: 'Etwas stimmt noch nicht; danach steht hier, was geschehen wird.',
    steps: 'Schritt für Schritt',
    kinds: { setup: 'Vorbereitung', delay: 'Warten', sound: 'Ton', popup: 'Nachricht', restore: 'Zurückstellen' },
    soundAt: (file: string, volume: number) => `${file}, ${volume} %`,
    bar: (kind: string, start: string, end: string) => `${kind}: ${start} bis ${end}`,
  },
  steps: {
    plain: {
      started: 'Sie beginnt.',
      ended: 'Sie ist zu Ende; die nächste darf beginnen.',
      stream_opened: 'Der Weg für den Ton wird geöffnet.',
      stream_ready: 'Der Weg für den Ton ist offen.',
      stream_closed: 'Der Weg für den Ton ist geschlossen.',
      sound_ended: 'Der Ton ist zu Ende.',
    },
    roomSetUp: (room: string) => `${room} macht sich bereit; die Lautstärke wird für später gemerkt.`,
    volume: (room: string, volume: number) => `${room} wird auf ${volume} % gestellt.`,
    restored: (room: string) => `${room} ist wieder wie zuvor.`,
    woken: (room: string) => `Die Bildschirme in ${room} wachen auf.`,
    rested: (room: string) => `Die Bildschirme in ${room} ruhen wieder.`,
    sound: (file: string) => `Der Ton „${file}“ beginnt.`,
    noSound: (why: string) => `Nichts ist zu hören: ${why}.`,
    noRoom: (room: string) => `${room} gibt es in diesem Haus nicht: Dort ist nichts zu hören.`,
    noScreen: (screen: string) => `${screen} gibt es in diesem Haus nicht: Dort ist nichts zu sehen.`,
    popup: (screen: string, text: string, hasOk: boolean) =>
      `${screen} zeigt „${text}“${hasOk ? ', mit einem OK-Knopf' : ''}.`,
    hidden: (screen: string) => `${screen} zeigt es nicht mehr.`,
  },
  preview: {
    screens: { tablet: 'Tablet', upright: 'Tablet, hochkant', television: 'Fernseher', phone: 'Handy' },
    size: 'Auf welchem Bildschirm',
    colours: 'In welchen Farben',
    title: 'Auf einem Bildschirm',
    none: 'Keine Nachricht: Die Bildschirme bleiben, wie sie sind.',
    label: (message: string) => `Die Nachricht, wie ein Bildschirm sie zeigt: ${message}`,
  },
};
