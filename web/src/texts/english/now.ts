// Announcing now: what is said, what plays, what waits.

export const now = {
  now: {
    label: 'Playing now',
    sound: (file: string, rooms: string) => (rooms ? `♪ ${file} in ${rooms}` : `♪ ${file}`),
    screens: (names: string) => `on ${names}`,
    waiting: (names: string) => `then ${names}`,
    playing: 'Playing',
    stopped: 'Stopped; the rooms go back to what they were',
    failed: (name: string, why: string) => `“${name}”: ${why}`,
    stop: 'Stop',
    stopLabel: (name: string) => `Stop ${name}: its sound ends in every room, its message closes`,
    dismiss: 'Dismiss',
    dismissLabel: 'Dismiss what plays: close its message on every screen',
  },
};
