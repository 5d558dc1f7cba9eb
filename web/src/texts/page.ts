// The texts of the page, in one language, which is loaded before anything is shown.

import type { english } from './english';
import { language, type Language } from './language';
import { sayAs } from './said';

export type Texts = typeof english;

/** Each with what the controller says in it; in English that is what it says itself. */
const files: Record<Language, () => Promise<[Texts, Readonly<Record<string, string>>]>> = {
  en: async () => [(await import('./english')).english, {}],
  de: async () => {
    const { german, said } = await import('./german');
    return [german, said];
  },
};

/** The text for something that the controller names; undefined for what it has learned since. */
export const textFor = (texts: Record<string, string>, name: string): string | undefined => texts[name];

/** Empty until `loadTexts` is done. */
export const t = {} as Texts;

export async function loadTexts(wanted = language): Promise<void> {
  const [texts, said] = await files[wanted]();
  Object.assign(t, texts);
  sayAs(said);
}
