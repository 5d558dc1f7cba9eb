// Files and recordings, decoded by the browser.

const RATE = 48000; // of everything that the page makes
const MOST_MINUTES = 10; // decoded sound takes 23 MB a minute
export const LONGEST_DECODED = MOST_MINUTES * 60000;

/** In milliseconds, without decoding it; null where the browser cannot say. */
export function durationOf(file: Blob): Promise<number | null> {
  const audio = new Audio();
  const address = URL.createObjectURL(file);
  return new Promise<number | null>((resolve) => {
    audio.onloadedmetadata = () => resolve(Number.isFinite(audio.duration) ? 1000 * audio.duration : null);
    audio.onerror = () => resolve(null);
    audio.preload = 'metadata';
    audio.src = address;
  }).finally(() => {
    audio.removeAttribute('src');
    URL.revokeObjectURL(address);
  });
}

/** Throws what the browser throws when it does not know the format. */
export async function decoded(file: Blob): Promise<AudioBuffer> {
  return new OfflineAudioContext(1, 1, RATE).decodeAudioData(await file.arrayBuffer());
}
