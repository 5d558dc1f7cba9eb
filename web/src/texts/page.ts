// The texts of the page, in one language, which is loaded before anything is shown.

import type { english } from './english';
import { language, type Language } from './language';

export type Texts = typeof english;

const files: Record<Language, () => Promise<Texts>> = {
  en: async () => (await import('./english')).english,
  de: async () => (await import('./german')).german,
};

/** The text for something that the controller names; undefined for what it has learned since. */
export const textFor = (texts: Record<string, string>, name: string): string | undefined => texts[name];

/** Empty until `loadTexts` is done. */
export const t = {} as Texts;

export async function loadTexts(wanted = language): Promise<void> {
  Object.assign(t, await files[wanted]());
}
