// The page of a screen. What never changes stands in navigator.html.

export const screen = {
  title: (place: string, house: string) => `${place} · ${house}`,
  tokenCommand: (id: string) => `announcement-controller token add navigator-${id} --right navigator:${id}`,
  connecting: 'Connecting …',
  connected: 'Connected',
  needsToken: 'Not connected: this screen needs a token',
  inAMoment: 'Not connected. Trying again in a moment …',
  tryingAgain: 'Not connected. Trying again …',
  seconds: (value: number) => `${value} s`,
};
