// The page of a screen.

import { number } from '../language';
import type { screen as English } from '../english/screen';

export const screen: typeof English = {
  title: (place: string, house: string) => `${place} · ${house}`,
  tokenCommand: (id: string) =>
    `announcement-controller token add navigator-${id} --right navigator:${id} --house HAUS.yaml`,
  connecting: 'Verbindung wird aufgebaut …',
  connected: 'Verbunden',
  needsToken: 'Nicht verbunden: Dieser Bildschirm braucht ein Token',
  otherScreens: (ids: string, id: string) =>
    `Dieses Token ist für Bildschirm ${ids}; dies ist Bildschirm ${id}. Dessen Seite öffnen oder ein anderes eingeben`,
  refused: (why: string) => `Nicht verbunden: ${why}`,
  inAMoment: 'Nicht verbunden. Gleich ein neuer Versuch …',
  tryingAgain: 'Nicht verbunden. Neuer Versuch …',
  seconds: (value: number) => `${number(value)} s`,
  fixed: {
    tokenLabel: 'Dieser Bildschirm braucht ein Token. Auf der Steuerung eines machen und hier eingeben:',
    connect: 'Verbinden',
    ok: 'OK',
    tap: 'Einmal tippen, um Durchsagen hier zu hören',
  },
  labels: { dialog: 'Durchsage', left: 'Schließt in' },
};
