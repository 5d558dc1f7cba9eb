// What is announced now, as the controller is asked for it.

import { request, upload } from '../api/request';
import { t } from '../texts/page';
import { soundFileName, soundName } from './media';
import type { Targets } from './targets';
import type { Part } from './trim';
import { fileOf, type Samples } from './wav';

export type Way = 'text' | 'record' | 'sound';

export interface Saying {
  way: Way;
  text: string;
  sound: string; // as announcements name it
  recorded: { sound: Samples; part: Part } | null;
  targets: Targets;
}

/** What is missing, in words; empty when it can be sent. */
export function missingIn({ way, text, sound, recorded, targets }: Saying): string {
  if (way === 'text' && !text.trim()) return t.say.missing.text;
  if (way === 'record' && !recorded) return t.say.missing.recording;
  if (way === 'sound' && !sound) return t.say.missing.sound;
  if (targets.rooms.length === 0 && (way !== 'text' || targets.screens.length === 0))
    return way === 'text' ? t.say.missing.place : t.say.missing.room;
  return '';
}

/** Gives why the text is not heard, though it is shown; null when all is well. Throws `Problem`. */
export async function send(saying: Saying): Promise<string | null> {
  const { text, targets } = saying;
  const words = text.trim();
  const sound = saying.way === 'record' ? await bringRecording(saying) : saying.way === 'sound' ? saying.sound : '';
  const said = await request('post', '/api/say', {
    body: {
      ...(words && { text: words }),
      ...(sound && { sound }),
      ...(!sound && targets.voice && { voice: targets.voice }),
      rooms: targets.rooms.map((id) => ({ id })),
      navigators: words ? targets.screens.map((id) => ({ id })) : [],
    },
  });
  return said.trouble ?? null;
}

async function bringRecording({ recorded }: Saying): Promise<string> {
  if (!recorded) return '';
  const wanted = soundFileName(`${t.say.recordingName} ${new Date().toISOString().slice(0, 19)}`);
  const file = await upload(wanted, fileOf(recorded.sound, recorded.part), () => undefined, { passing: 'true' });
  return soundName(file);
}
