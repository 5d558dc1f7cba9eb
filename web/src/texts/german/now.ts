// Jetzt durchsagen: was gesagt wird, was läuft, was wartet.

import type { now as English } from '../english/now';

export const now: typeof English = {
  now: {
    label: 'Läuft gerade',
    sound: (file: string, rooms: string) => (rooms ? `♪ ${file} in ${rooms}` : `♪ ${file}`),
    screens: (names: string) => `auf ${names}`,
    waiting: (names: string) => `dann ${names}`,
    left: (time: string) => `noch ${time}`,
    playing: 'Läuft',
    stopped: 'Angehalten; die Räume werden, wie sie waren',
    failed: (name: string, why: string) => `„${name}“: ${why}`,
    stop: 'Anhalten',
    stopLabel: (name: string) => `${name} anhalten: Der Ton endet in jedem Raum, die Nachricht schließt`,
    dismiss: 'Schließen',
    dismissLabel: 'Schließen, was läuft: die Nachricht auf jedem Bildschirm',
  },
  say: {
    title: 'Jetzt durchsagen',
    how: 'Wie',
    ways: { text: 'Sagen', record: 'Aufnehmen', sound: 'Ton' },
    text: 'Was gesagt und gezeigt wird',
    placeholder: 'Das Essen ist fertig',
    message: 'Was Bildschirme zeigen',
    sound: 'Welcher Ton',
    noSound: 'Einen Ton wählen',
    rooms: 'Räume, die es hören',
    screens: 'Bildschirme, die es zeigen',
    all: 'Alle',
    voice: 'Stimme',
    silentVoice: (name: string) => `${name} (spricht gerade nicht)`,
    keys: 'Strg + Enter schickt es ab',
    send: 'Durchsagen',
    recordingName: 'Gesagt',
    missing: {
      text: 'Was soll gesagt werden?',
      recording: 'Erst etwas aufnehmen.',
      sound: 'Welcher Ton? Einen wählen.',
      place: 'Wo? Einen Raum oder einen Bildschirm wählen.',
      room: 'Wo? Einen Raum wählen.',
    },
  },
  queue: {
    label: 'Was wartet',
    open: (number: string) => `${number} ${number === '1' ? 'wartet' : 'warten'}`,
    since: (time: string) => `seit ${time}`,
    earlier: (name: string) => `${name}: früher`,
    later: (name: string) => `${name}: später`,
    remove: (name: string) => `${name}: zurücknehmen`,
    removed: (name: string) => `„${name}“ ist zurückgenommen`,
  },
};
