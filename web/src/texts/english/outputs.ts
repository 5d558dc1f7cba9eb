// Where rooms could be heard.

export const finding = {
  outputs: {
    title: 'Where rooms can be heard',
    intro:
      'What this machine, and the servers that the house names, can play on. The line belongs to a room in the house file.',
    none: 'Nothing was found: no sound server answers here, and there is no sound card.',
    look: 'Look again',
    kinds: { sound_server: 'Sound server', sound_card: 'Sound card', snapcast: 'Snapcast', page: 'Page' },
    heard: (rooms: string) => `Room: ${rooms}.`,
    free: 'No room yet.',
    usual: 'The usual one.',
    copy: 'Copy line',
    copyLabel: (name: string) => `Copy the line for ${name}`,
    copied: 'The line is copied',
    notCopied: 'The browser does not copy it; mark it and copy it by hand',
    testLabel: (name: string) => `Play a test tone on ${name}`,
    played: (name: string) => `The tone was played on ${name}`,
    unheard: (name: string, why: string) => `${name} cannot be heard: ${why}`,
  },
};
