// Listening to a sound here, in this browser: one at a time.

import { fetchFile, mediaAddress } from '../api/request';
import type { Part } from './trim';

let silence: (() => void) | null = null;
let end: (() => void) | null = null;
let context: AudioContext | null = null;

export function stop(): void {
  silence?.();
  silence = null;
  const ended = end;
  end = null;
  ended?.();
}

/** Calls `onEnd` when it is over, however it ends. Throws when it cannot be fetched or played. */
export async function listen(name: string, onEnd: () => void): Promise<void> {
  stop();
  end = onEnd;
  const file = await fetchFile(mediaAddress(name));
  if (end !== onEnd) return; // another one was wanted meanwhile
  const audio = new Audio(URL.createObjectURL(file));
  silence = () => {
    audio.pause();
    URL.revokeObjectURL(audio.src);
  };
  audio.onended = () => {
    if (end === onEnd) stop();
  };
  await audio.play();
}

/** Plays a part of what is decoded; gives where it is, in milliseconds of the whole. */
export function listenToPart(sound: AudioBuffer, part: Part, onEnd: () => void): () => number {
  stop();
  const player = (context ??= new AudioContext());
  void player.resume();
  const source = player.createBufferSource();
  source.buffer = sound;
  source.connect(player.destination);
  const begun = player.currentTime;
  source.start(0, part.from / 1000, (part.to - part.from) / 1000);
  end = onEnd;
  silence = () => source.stop();
  source.onended = () => {
    if (end === onEnd) stop();
  };
  return () => Math.min(part.to, part.from + 1000 * (player.currentTime - begun));
}
