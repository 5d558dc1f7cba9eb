import { afterEach, beforeEach, expect, it, vi } from 'vitest';
import { Update } from '../src/navigator/Update';

let tag: string | null;
let went: string[];
let mayGo: boolean;

beforeEach(() => {
  vi.useFakeTimers();
  [tag, went, mayGo] = ['"a"', [], true];
  vi.stubGlobal('location', { pathname: '/navigator/11', search: '', assign: (to: string) => went.push(to) });
  vi.stubGlobal('fetch', () => {
    if (tag === null) return Promise.reject(new TypeError('no network'));
    return Promise.resolve(new Response('', { headers: { ETag: tag } }));
  });
});

afterEach(() => {
  vi.useRealTimers();
  vi.unstubAllGlobals();
});

it('goes to a page that is newer than the one that is shown, and to no other', async () => {
  const update = new Update(() => mayGo);
  await update.check();
  tag = null;
  await update.check();
  tag = '"a"';
  await update.check();
  expect(went).toEqual([]);
  tag = '"b"';
  await update.check();
  expect(went).toEqual(['/navigator/11']);
});

it('waits with that for as long as something is shown or heard', async () => {
  mayGo = false;
  const update = new Update(() => mayGo);
  await update.check();
  tag = '"b"';
  await update.check();
  vi.advanceTimersByTime(60000);
  expect(went).toEqual([]);
  mayGo = true;
  vi.advanceTimersByTime(5000);
  expect(went).toEqual(['/navigator/11']);
});
