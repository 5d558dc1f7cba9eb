import { describe, expect, it } from 'vitest';
import { english } from '../src/texts/english';
import { german } from '../src/texts/german';
import { languageOf } from '../src/texts/language';
import { loadTexts, t } from '../src/texts/page';

describe('the language', () => {
  it('is what this browser was told', () => {
    expect(languageOf('de', ['en-US'])).toBe('de');
    expect(languageOf('en', ['de-AT'])).toBe('en');
  });

  it('is the first of the browser’s own that there is, and English where there is none', () => {
    expect(languageOf(null, ['fr-FR', 'de-AT', 'en-US'])).toBe('de');
    expect(languageOf('tlh', ['en-GB', 'de'])).toBe('en');
    expect(languageOf(null, ['fr-FR'])).toBe('en');
    expect(languageOf(null, [])).toBe('en');
  });

  it('is that of every text', async () => {
    await loadTexts('de');
    expect(t.list.count(1, 1)).toBe('1 Durchsage');
    expect(t.list.count(2, 3)).toBe('2 von 3 Durchsagen');
    await loadTexts('en');
    expect(t.list.count(1, 1)).toBe('1 announcement');
    expect(t.list.count(2, 3)).toBe('2 of 3 announcements');
  });
});

/** The places of all texts below, with what is there: 'list.title' -> 'Announcements'. */
function textsIn(texts: object, place = ''): [string, unknown][] {
  return Object.entries(texts).flatMap(([name, value]: [string, unknown]) =>
    typeof value === 'object' && value !== null ? textsIn(value, `${place}${name}.`) : [[place + name, value]],
  );
}

it('has a German text in every place that English has one, and none left empty', () => {
  const [one, other] = [textsIn(english), textsIn(german)];
  expect(other.map(([place]) => place).sort()).toEqual(one.map(([place]) => place).sort());
  expect(other.filter(([, text]) => text === '')).toEqual([]);
});
