// Listening to a sound here, in this browser: one at a time.

import { fetchFile, mediaAddress } from '../api/request';

let audio: HTMLAudioElement | null = null;
let end: (() => void) | null = null;

export function stop(): void {
  audio?.pause();
  if (audio) URL.revokeObjectURL(audio.src);
  audio = null;
  end?.();
  end = null;
}

/** Calls `onEnd` when it is over, however it ends. Throws when it cannot be fetched or played. */
export async function listen(name: string, onEnd: () => void): Promise<void> {
  stop();
  end = onEnd;
  const own = new Audio(URL.createObjectURL(await fetchFile(mediaAddress(name))));
  if (end !== onEnd) return; // another one was wanted meanwhile
  audio = own;
  own.onended = () => {
    if (audio === own) stop();
  };
  await own.play();
}
