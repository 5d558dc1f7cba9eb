// The lines of the live log.

import type { live as English } from '../english/log';

export const live: typeof English = {
  log: {
    state: 'Mit der Steuerung verbunden',
    lost: 'Die Verbindung ist verloren',
    asked: (name: string) => `„${name}“ wurde verlangt`,
    started: (name: string) => `„${name}“ beginnt`,
    ended: (name: string) => `„${name}“ ist vorbei`,
    stopped: (name: string) => `„${name}“ wurde angehalten`,
    stored: (name: string) => `„${name}“ wurde gespeichert`,
    removed: (name: string) => `${name} wurde gelöscht`,
    setUp: (room: string, volume: number) => `${room} macht sich bereit (eigene Lautstärke: ${volume} %)`,
    volume: (room: string, volume: number) => `${room} steht auf ${volume} %`,
    restored: (room: string, volume: number) => `${room} steht wieder auf ${volume} %`,
    failed: (room: string, reason: string) => `${room} ist nicht zu hören: ${reason}`,
    unheard: (room: string, reason: string) => `${room} wäre jetzt nicht zu hören: ${reason}`,
    healthy: (room: string) => `${room} ist zu hören`,
    woken: (room: string) => `Die Bildschirme in ${room} wachen auf`,
    rested: (room: string) => `Die Bildschirme in ${room} ruhen wieder`,
    sound: (file: string) => `Der Ton „${file}“ beginnt`,
    soundEnded: (file: string) => `Der Ton „${file}“ wurde bis zum Ende gespielt`,
    soundFailed: (file: string, error: string) => `Der Ton „${file}“ konnte nicht gespielt werden: ${error}`,
    popup: (screen: string, message: string) => `${screen} zeigt „${message}“`,
    hidden: (screen: string, why: string) => `Die Nachricht auf ${screen} ist weg: ${why}`,
    why: {
      time_is_up: 'ihre Zeit ist um',
      hidden: 'weggenommen',
      dismissed: 'geschlossen',
      replaced: 'eine andere nahm ihren Platz ein',
    },
    pages: (screen: string, pages: number) =>
      pages ? `${screen} ist verbunden` : `${screen} ist nicht mehr verbunden`,
    value: (name: string, value: string) => `${name} ist nun „${value}“`,
    mediaStored: (name: string) => `„${name}“ kam hinzu`,
    mediaRemoved: (name: string) => `„${name}“ wurde gelöscht`,
    voiceFailed: (voice: string, reason: string) => `Die Stimme „${voice}“ spricht nicht: ${reason}`,
    voiceRecovered: (voice: string) => `Die Stimme „${voice}“ spricht wieder`,
    notSaved: (reason: string) => `Änderungen konnten nicht auf die Platte geschrieben werden: ${reason}`,
  },
};
