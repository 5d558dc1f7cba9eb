// Jetzt durchsagen: was gesagt wird, was läuft, was wartet.

import type { now as English } from '../english/now';

export const now: typeof English = {
  now: {
    label: 'Läuft gerade',
    sound: (file: string, rooms: string) => (rooms ? `♪ ${file} in ${rooms}` : `♪ ${file}`),
    screens: (names: string) => `auf ${names}`,
    waiting: (names: string) => `dann ${names}`,
    playing: 'Läuft',
    stopped: 'Angehalten; die Räume werden, wie sie waren',
    failed: (name: string, why: string) => `„${name}“: ${why}`,
    stop: 'Anhalten',
    stopLabel: (name: string) => `${name} anhalten: Der Ton endet in jedem Raum, die Nachricht schließt`,
    dismiss: 'Schließen',
    dismissLabel: 'Schließen, was läuft: die Nachricht auf jedem Bildschirm',
  },
};
