import { afterEach, beforeEach, describe, expect, it, vi } from 'vitest';
import { setToken } from '../src/api/access';
import { addressOf, exchange, Problem, request } from '../src/api/request';

let asked: { address: string; options: RequestInit }[];
let answer: () => Promise<Response>;

const json = (status: number, body: object, headers: Record<string, string> = {}): Promise<Response> =>
  Promise.resolve(
    new Response(JSON.stringify(body), { status, headers: { 'Content-Type': 'application/json', ...headers } }),
  );

beforeEach(() => {
  asked = [];
  vi.stubGlobal('window', {});
  vi.stubGlobal('fetch', (address: string, options: RequestInit) => {
    asked.push({ address, options });
    return answer();
  });
});

afterEach(() => {
  setToken('', false);
  vi.unstubAllGlobals();
});

async function problemOf(work: Promise<unknown>): Promise<Problem> {
  const found: unknown = await work.catch((problem: unknown) => problem);
  if (found instanceof Problem) return found;
  throw new Error('it was not refused');
}

describe('an address', () => {
  it('has its values in the place of the braces, and the query behind it, encoded', () => {
    expect(addressOf('/api/rooms')).toBe('/api/rooms');
    expect(addressOf('/api/variables/{device}/{variable}', { device: 9, variable: 4 })).toBe('/api/variables/9/4');
    expect(addressOf('/api/media/{name}', { name: 'a b/ü.wav' })).toBe('/api/media/a%20b%2F%C3%BC.wav');
    expect(addressOf('/api/history', {}, { limit: 5, before: 'x&y' })).toBe('/api/history?limit=5&before=x%26y');
  });
});

describe('a request', () => {
  it('sends what it is given, with the token, and gives the reply with its tag', async () => {
    setToken(' secret ', false);
    answer = () => json(200, { id: 12, volume: 40 }, { ETag: '"v1"' });
    const given = { path: { id: 12 }, body: { volume: 40 }, ifMatch: '"v0"' };
    expect(await exchange('put', '/api/rooms/{id}/volume', given)).toEqual({
      value: { id: 12, volume: 40 },
      etag: '"v1"',
    });
    expect(asked).toEqual([
      {
        address: '/api/rooms/12/volume',
        options: {
          method: 'PUT',
          headers: { Authorization: 'Bearer secret', 'Content-Type': 'application/json', 'If-Match': '"v0"' },
          body: '{"volume":40}',
        },
      },
    ]);
  });

  it('sends no more than that, and gives null where there is no reply', async () => {
    answer = () => Promise.resolve(new Response(null, { status: 204 }));
    expect(await request('delete', '/api/announcements/{id}', { path: { id: 3 } })).toBeNull();
    expect(asked).toEqual([
      { address: '/api/announcements/3', options: { method: 'DELETE', headers: {}, body: undefined } },
    ]);
  });

  it('tells what was refused, and what would be right', async () => {
    answer = () => json(409, { detail: 'it is in use', right: 'another', users: [{ id: 1, name: 'Dinner' }] });
    const problem = await problemOf(request('delete', '/api/media/{name}', { path: { name: 'a.wav' } }));
    expect(problem.status).toBe(409);
    expect(problem.text).toBe('it is in use. Right would be: another');
    expect(problem.users).toEqual([{ id: 1, name: 'Dinner' }]);
  });

  it('tells of a refusal without words, and of a controller that cannot be reached', async () => {
    answer = () => Promise.resolve(new Response('<html>', { status: 502, statusText: 'Bad Gateway' }));
    expect((await problemOf(request('get', '/api/rooms'))).text).toBe('The controller answered 502 Bad Gateway');
    answer = () => Promise.reject(new TypeError('network'));
    const problem = await problemOf(request('get', '/api/rooms'));
    expect([problem.status, problem.text]).toEqual([
      0,
      'The controller cannot be reached. Is it running, and is this device on the home network?',
    ]);
  });
});
