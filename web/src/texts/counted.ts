// Numbers of things.

import { locale, number } from './language';

export interface Forms {
  one: string;
  other: string;
}

/** "1 announcement", "3 announcements" */
export function counted(value: number, forms: Forms): string {
  const form = new Intl.PluralRules(locale).select(value) === 'one' ? forms.one : forms.other;
  return `${number(value)} ${form}`;
}
