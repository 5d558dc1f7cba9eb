// How a file comes into the media folder: as it is, when the controller can take it; else as this browser reads it.

import { html } from 'lit';
import { fetched } from '../api/later';
import { Problem, upload } from '../api/request';
import { decoded, durationOf, LONGEST_DECODED } from '../model/decode';
import { seconds } from '../model/format';
import { isImage, safeName, soundFileName, tooLarge } from '../model/media';
import { firstPart, LONGEST, type Part } from '../model/trim';
import { fileOf, lengthOf } from '../model/wav';
import { store } from '../store/live';
import { t } from '../texts/page';
import { ask } from './ask';

export type OnShare = (share: number) => void;

/** What the controller refuses, and this browser may be able to do. */
const ELSEWHERE = ['too_long', 'cannot_decode', 'conversion_failed'];

/** Gives the name that it has in the media folder; '' when somebody thought better of it. Throws `Problem`. */
export async function bring(file: File, onShare: OnShare): Promise<string> {
  if (isImage(file)) return put(safeName(file.name), file, onShare);
  const length = await durationOf(file);
  if (length !== null && length > LONGEST) return bringPart(file, length, onShare);
  const refusal = tooLarge(file);
  if (refusal) throw new Problem(413, refusal);
  if (!(await mayReplace(soundFileName(file.name)))) return '';
  try {
    return (await upload(safeName(file.name), file, onShare)).name;
  } catch (problem) {
    if (problem instanceof Problem && ELSEWHERE.includes(problem.code)) return bringRead(file, problem, onShare);
    throw problem;
  }
}

/** Stores a file under a name that is good; asks before it takes the place of another. */
export async function put(name: string, file: Blob, onShare: OnShare): Promise<string> {
  return (await mayReplace(name)) ? (await upload(name, file, onShare)).name : '';
}

/** As a WAV file of this browser's making; `problem` holds when it cannot make one either. */
async function bringRead(file: File, problem: Problem, onShare: OnShare): Promise<string> {
  const sound = await decoded(file).catch(() => null);
  if (!sound) return bringBeginning(file, problem, onShare);
  const part = lengthOf(sound) > LONGEST ? await partOf(file.name, sound) : firstPart(LONGEST);
  return part ? (await upload(soundFileName(file.name), fileOf(sound, part), onShare)).name : '';
}

/** A long sound that this browser cannot show: the controller can cut off its beginning at least. */
async function bringBeginning(file: File, problem: Problem, onShare: OnShare): Promise<string> {
  if (problem.code !== 'too_long') throw problem;
  const answer = await ask(t.trim.title(file.name), html`<p>${t.trim.unseen(problem.message)}</p>`, [
    { key: 'keep', text: t.trim.beginning },
  ]);
  if (answer !== 'keep') return '';
  return (await upload(safeName(file.name), file, onShare, { from_ms: 0, to_ms: LONGEST })).name;
}

async function bringPart(file: File, length: number, onShare: OnShare): Promise<string> {
  if (length > LONGEST_DECODED)
    throw new Problem(422, t.trim.tooLong(seconds(length), seconds(LONGEST_DECODED), seconds(LONGEST)));
  const sound = await decoded(file).catch(() => null);
  if (!sound) throw new Problem(422, t.trim.unreadable);
  const part = await partOf(file.name, sound);
  return part ? put(soundFileName(file.name), fileOf(sound, part), onShare) : '';
}

/** The part that somebody wants; null when none. */
async function partOf(name: string, sound: AudioBuffer): Promise<Part | null> {
  await fetched(() => import('./sound-trimmer'));
  let part = firstPart(lengthOf(sound));
  const take = (event: CustomEvent<Part>): void => {
    part = event.detail;
  };
  const answer = await ask(t.trim.title(name), html`<sound-trimmer .sound=${sound} @part=${take}></sound-trimmer>`, [
    { key: 'keep', text: t.trim.keep },
  ]);
  return answer === 'keep' ? part : null;
}

async function mayReplace(name: string): Promise<boolean> {
  if (!store.media?.some((one) => one.name === name)) return true;
  const answer = await ask(t.media.replaceTitle(name), html`<p>${t.media.replaceText}</p>`, [
    { key: 'replace', text: t.media.replace },
  ]);
  return answer === 'replace';
}
