// What the controller says to people, in another language than its own, English: by the code that it gives with each
// text. What it has learned since, and what has no code, stays as it came.

export interface Meaning {
  code: string;
  params?: Record<string, string>;
}

let sentences: Readonly<Record<string, string>> = {};

export function sayAs(table: Readonly<Record<string, string>>): void {
  sentences = table;
}

/** `own` is what the controller says itself. */
export function said({ code, params = {} }: Meaning, own: string): string {
  return filled(code, params, '') ?? own;
}

/** What stands under a name of the values, and means something itself: `right.code` says what `right` is. */
export const saidInside = (name: string, params: Record<string, string>, own: string): string =>
  filled(params[`${name}.code`], params, `${name}.`) ?? own;

const VALUE = /\{(\w+)\}/g;

function filled(code: string | undefined, params: Record<string, string>, place: string): string | null {
  const sentence = code && Object.prototype.hasOwnProperty.call(sentences, code) ? sentences[code] : '';
  if (!sentence) return null;
  const missing: string[] = [];
  const text = sentence.replace(VALUE, (_whole, name: string) => {
    const value = filled(params[`${place}${name}.code`], params, `${place}${name}.`) ?? params[place + name];
    if (value === undefined) missing.push(name);
    return value ?? '';
  });
  return missing.length > 0 ? null : text;
}

const ENDING = '_means';

/** For `JSON.parse`: puts the page's own words in the place of each text that has its meaning beside it. */
function translate(_name: string, value: unknown): unknown {
  if (typeof value !== 'object' || value === null || Array.isArray(value)) return value;
  const object = value as Record<string, unknown>;
  for (const [name, meaning] of Object.entries(object)) {
    const text = name.slice(0, -ENDING.length);
    if (name.endsWith(ENDING) && typeof object[text] === 'string')
      object[text] = said(meaning as Meaning, object[text]);
  }
  return value;
}

/** What the controller sends. Throws where it is no JSON. */
export const read = (text: string): unknown =>
  JSON.parse(text, Object.keys(sentences).length > 0 ? translate : undefined);
