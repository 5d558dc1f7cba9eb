// Wo Räume zu hören sein können.

import type { finding as English } from '../english/outputs';

export const finding: typeof English = {
  outputs: {
    title: 'Wo Räume zu hören sein können',
    intro:
      'Worauf diese Maschine und die Server, die das Haus nennt, spielen können. Die Zeile gehört zu einem Raum in der Hausdatei.',
    none: 'Nichts gefunden: Hier antwortet kein Tonserver, und es gibt keine Tonkarte.',
    look: 'Noch einmal suchen',
    kinds: { sound_server: 'Tonserver', sound_card: 'Tonkarte', snapcast: 'Snapcast', page: 'Seite' },
    heard: (rooms: string) => `Raum: ${rooms}.`,
    free: 'Noch kein Raum.',
    usual: 'Der gewöhnliche.',
    copy: 'Zeile kopieren',
    copyLabel: (name: string) => `Zeile für ${name} kopieren`,
    copied: 'Die Zeile ist kopiert',
    notCopied: 'Der Browser kopiert sie nicht; von Hand markieren und kopieren',
    testLabel: (name: string) => `Testton auf ${name} spielen`,
    played: (name: string) => `Der Ton wurde auf ${name} gespielt`,
    unheard: (name: string, why: string) => `${name} ist nicht zu hören: ${why}`,
  },
};
