// The lines of the live log.

export const live = {
  log: {
    state: 'Connected to the controller',
    lost: 'The connection is lost',
    asked: (name: string) => `“${name}” was asked for`,
    started: (name: string) => `“${name}” begins`,
    ended: (name: string) => `“${name}” is over`,
    stopped: (name: string) => `“${name}” was stopped`,
    stored: (name: string) => `“${name}” was saved`,
    removed: (name: string) => `${name} was deleted`,
    setUp: (room: string, volume: number) => `${room} gets ready (its own volume is ${volume} %)`,
    volume: (room: string, volume: number) => `${room} is at ${volume} %`,
    restored: (room: string, volume: number) => `${room} is back at ${volume} %`,
    failed: (room: string, reason: string) => `${room} cannot be heard: ${reason}`,
    woken: (room: string) => `The screens in ${room} wake up`,
    rested: (room: string) => `The screens in ${room} go back to rest`,
    sound: (file: string) => `The sound “${file}” begins`,
    soundEnded: (file: string) => `The sound “${file}” was played to its end`,
    soundFailed: (file: string, error: string) => `The sound “${file}” could not be played: ${error}`,
    popup: (screen: string, message: string) => `${screen} shows “${message}”`,
    hidden: (screen: string, why: string) => `The message on ${screen} is gone: ${why}`,
    why: {
      time_is_up: 'its time is up',
      hidden: 'taken away',
      dismissed: 'dismissed',
      replaced: 'another one took its place',
    },
    pages: (screen: string, pages: number) =>
      pages ? `${screen} is connected` : `${screen} is not connected any more`,
    value: (name: string, value: string) => `${name} is now “${value}”`,
    mediaStored: (name: string) => `“${name}” was brought in`,
    mediaRemoved: (name: string) => `“${name}” was deleted`,
    voiceFailed: (voice: string, reason: string) => `The voice “${voice}” does not speak: ${reason}`,
    voiceRecovered: (voice: string) => `The voice “${voice}” speaks again`,
    notSaved: (reason: string) => `Changes could not be written to the disk: ${reason}`,
  },
};
