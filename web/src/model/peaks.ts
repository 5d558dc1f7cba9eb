// How loud a sound is over its length, for its picture.

import { fetchFile, mediaAddress } from '../api/request';

const known = new Map<string, Promise<number[]>>();

/** The loudness of each of `count` parts, 0 to 1. `version` changes with the file. */
export function peaksOf(name: string, version: string, count: number): Promise<number[]> {
  const key = `${name} ${version} ${count}`;
  let peaks = known.get(key);
  if (!peaks) {
    peaks = read(name, count);
    known.set(key, peaks);
    peaks.catch(() => known.delete(key));
  }
  return peaks;
}

async function read(name: string, count: number): Promise<number[]> {
  const bytes = await (await fetchFile(mediaAddress(name))).arrayBuffer();
  const sound = await new OfflineAudioContext(1, 1, 44100).decodeAudioData(bytes);
  return peaksIn(sound.getChannelData(0), count);
}

export function peaksIn(samples: ArrayLike<number>, count: number): number[] {
  const peaks: number[] = [];
  for (let part = 0; part < count; part += 1) {
    const end = Math.ceil(((part + 1) * samples.length) / count);
    let peak = 0;
    for (let at = Math.floor((part * samples.length) / count); at < end; at += 1)
      peak = Math.max(peak, Math.abs(samples[at] ?? 0));
    peaks.push(Math.min(1, peak));
  }
  return peaks;
}
