import { afterEach, describe, expect, it } from 'vitest';
import ofSounds from '../../controller/api/json/MeantSoundTexts.cpp?raw';
import meant from '../../controller/api/json/MeantTexts.cpp?raw';
import type { Code } from '../src/api/types';
import { said as german } from '../src/texts/german/said';
import { loadTexts } from '../src/texts/page';
import { read, said, saidInside } from '../src/texts/said';

/** The controller's own table: each code with the texts that it stands for. */
const TABLE = [
  ...(meant + ofSounds).replace('Meaning::kOther', '"other"').matchAll(/\{"(\w+)",\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\}/g),
].map(([, code = '', text = '']) => ({ code, text }));

const valuesIn = (text: string): string[] => [...text.matchAll(/\{([a-z]\w*)\}/g)].map(([, name = '']) => name);

describe('what the controller says', () => {
  afterEach(() => loadTexts('en'));

  it('has a German text for every code', () => {
    const all: Record<Code, string> = german;
    expect(TABLE.length).toBeGreaterThan(100);
    expect(Object.keys(all).sort()).toEqual([...new Set(TABLE.map(({ code }) => code))].sort());
    expect(Object.values(all).filter((text) => text === '')).toEqual([]);
  });

  it('has in German no value that the controller does not give with every text of the code', () => {
    const byItsCodeAlone = (code: string, text: string): boolean => code === 'damaged' && text === '"{file}: {why}"';
    const lacking = TABLE.filter(({ code, text }) => !byItsCodeAlone(code, text)).flatMap(({ code, text }) =>
      valuesIn(german[code as Code])
        .filter((name) => !valuesIn(text).includes(name))
        .map((name) => `${code}: ${name} in ${text}`),
    );
    expect(lacking).toEqual([]);
  });

  it('is said in the language of the page, with its values and what these mean themselves', async () => {
    await loadTexts('de');
    const params = { why: 'the speech: holds no sound', 'why.code': 'other', 'why.what': 'gong', 'why.why': 'x' };
    expect(said({ code: 'no_room', params: { room: '7' } }, 'own')).toBe('Im Haus gibt es keinen Raum 7');
    expect(said({ code: 'not_playable', params: { ...params, 'why.why.code': 'holds_no_sound' } }, 'own')).toBe(
      'kein spielbarer Ton: gong: enthält keinen Ton',
    );
    expect(saidInside('right', { 'right.code': 'bytes_at_most', 'right.most': '7' }, 'own')).toBe('höchstens 7 Bytes');
  });

  it('stays as it is where the page knows no word for it, or lacks a value', async () => {
    await loadTexts('de');
    expect(said({ code: 'learned_since', params: {} }, 'own')).toBe('own');
    expect(said({ code: 'no_room' }, 'own')).toBe('own');
    expect(said({ code: 'constructor' }, 'own')).toBe('own');
    expect(saidInside('right', {}, 'own')).toBe('own');
    await loadTexts('en');
    expect(said({ code: 'no_room', params: { room: '7' } }, 'own')).toBe('own');
  });

  it('is put in the place of each text that has its meaning beside it', async () => {
    const sent = JSON.stringify({
      rooms: [{ trouble: 'a', trouble_means: { code: 'not_opened', params: {} } }, { trouble: 'b' }, { trouble: null }],
    });
    await loadTexts('de');
    expect(read(sent)).toMatchObject({
      rooms: [{ trouble: 'Der Ausgang geht nicht auf' }, { trouble: 'b' }, { trouble: null }],
    });
    await loadTexts('en');
    expect(read(sent)).toMatchObject({ rooms: [{ trouble: 'a' }, { trouble: 'b' }, { trouble: null }] });
  });
});
