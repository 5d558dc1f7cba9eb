// Töne machen: zuschneiden und aufnehmen.

import type { sounds as English } from '../english/sounds';

export const sounds: typeof English = {
  trim: {
    title: (name: string) => `Welchen Teil von „${name}“?`,
    help: 'Höchstens 20 Sekunden bleiben. Die Griffe ziehen oder den Teil im Ganzen; Pfeiltasten bewegen einen Griff.',
    from: 'Anfang',
    to: 'Ende',
    listen: 'Anhören',
    kept: (part: string, length: string) => `${part} von ${length}`,
    keep: 'Diesen Teil nehmen',
    unseen: (why: string) =>
      `${why}. Dieser Browser kann den Ton nicht zeigen, sodass sich hier kein Teil wählen lässt.`,
    beginning: 'Die ersten 20 s nehmen',
    tooLong: (length: string, most: string, kept: string) =>
      `Der Ton dauert ${length}. Richtig wäre: höchstens ${kept}, oder höchstens ${most}, um einen Teil auszuschneiden`,
    unreadable:
      'Der Ton ist länger als 20 s, und dieser Browser kann ihn nicht lesen, um einen Teil auszuschneiden. Richtig wäre: ein Ton von höchstens 20 s',
  },
  record: {
    title: 'Neue Aufnahme',
    open: 'Aufnehmen',
    begin: 'Aufnehmen',
    again: 'Noch einmal',
    stop: 'Anhalten',
    asking: 'Der Browser fragt, ob er zuhören darf …',
    help: 'Antippen und sprechen: höchstens 20 Sekunden.',
    level: 'Wie laut es ist',
    time: (now: string, most: string) => `${now} von ${most}`,
    name: 'Name',
    keep: 'Behalten',
    nameOf: (time: string) => `Aufnahme ${time}`,
    kept: (name: string) => `„${name}“ liegt bei den Medien`,
    hindrances: {
      insecure:
        'Hier gibt es kein Mikrofon: Browser leihen es nur Seiten, die über HTTPS kommen oder vom selben Gerät. Dem Controller ein Zertifikat geben („tls“ in der Hausdatei) und die Seite mit https://… öffnen, oder mit dem Rekorder dieses Geräts aufnehmen und die Datei hier ablegen.',
      unable:
        'Dieser Browser kann nicht aufnehmen. Mit dem Rekorder dieses Geräts aufnehmen und die Datei hier ablegen.',
      denied:
        'Der Browser leiht dieser Seite sein Mikrofon nicht. Oben neben der Adresse erlauben, dann noch einmal versuchen.',
      none: 'Dieses Gerät hat kein Mikrofon, das der Browser nutzen könnte.',
      busy: 'Das Mikrofon gab nichts: Vielleicht nutzt es ein anderes Programm. Noch einmal versuchen.',
    },
  },
  speech: {
    open: 'Gesprochener Ton',
    title: 'Neuer gesprochener Ton',
    edit: (name: string) => `Gesprochener Ton „${name}“`,
    editLabel: (name: string) => `Ändern, was ${name} sagt`,
    says: (text: string) => `„${text}“`,
    name: 'Name',
    text: 'Was gesagt wird',
    values: 'Ein Wert des Hauses, wie er dann ist:',
    speed: (percent: string) => `Tempo: ${percent}`,
    chime: 'Ein Ton davor',
    noChime: 'Keiner',
    listen: 'Speichern und anhören',
  },
};
