// Which language the pages speak, and its numbers: as this browser was told, else the first of its own that there is.

/** Each by its own name. Another language is a row here and in `page.ts`, `problem.ts`, `screen.ts`; and a folder. */
export const LANGUAGES = { en: 'English', de: 'Deutsch' };
export type Language = keyof typeof LANGUAGES;

const KEY = 'announcement-language';
const CODES = Object.keys(LANGUAGES) as Language[];

const own = (): readonly string[] => (typeof navigator === 'undefined' ? [] : navigator.languages);
const isOf = (locale: string, language: Language): boolean => locale.split('-')[0]?.toLowerCase() === language;

function told(): string | null {
  try {
    return localStorage.getItem(KEY);
  } catch {
    return null;
  }
}

export function languageOf(choice: string | null, locales: readonly string[]): Language {
  const chosen = CODES.find((one) => one === choice);
  if (chosen) return chosen;
  for (const locale of locales) {
    const found = CODES.find((one) => isOf(locale, one));
    if (found) return found;
  }
  return 'en';
}

export const language: Language = languageOf(told(), own());

/** The one that a switch goes on to. */
export const nextLanguage = (): Language => CODES[(CODES.indexOf(language) + 1) % CODES.length] ?? 'en';

/** The page speaks it from its next loading on. */
export function keepLanguage(wanted: Language): void {
  try {
    localStorage.setItem(KEY, wanted);
  } catch {
    // Some private windows keep nothing: the browser's own language stays.
  }
}

/** With its country, where the browser names one: 14:05 or 2:05 PM. */
export const locale: string = own().find((one) => isOf(one, language)) ?? language;

/** "1.5" or "1,5" */
export const number = (value: number): string => new Intl.NumberFormat(locale).format(value);
