// The page of a screen.

import { number } from '../language';

export const screen = {
  title: (place: string, house: string) => `${place} · ${house}`,
  tokenCommand: (id: string) =>
    `announcement-controller token add navigator-${id} --right navigator:${id} --house HOUSE.yaml`,
  connecting: 'Connecting …',
  connected: 'Connected',
  needsToken: 'Not connected: this screen needs a token',
  otherScreens: (ids: string, id: string) =>
    `this token is for screen ${ids}, and this is screen ${id}. Open the page of that screen, or enter another`,
  refused: (why: string) => `Not connected: ${why}`,
  inAMoment: 'Not connected. Trying again in a moment …',
  tryingAgain: 'Not connected. Trying again …',
  seconds: (value: number) => `${number(value)} s`,
  fixed: {
    tokenLabel: 'This screen needs a token. Make one on the controller and enter it here:',
    connect: 'Connect',
    ok: 'OK',
    tap: 'Tap once to hear announcements here',
  },
  labels: { dialog: 'Announcement', left: 'Closes in' },
};
