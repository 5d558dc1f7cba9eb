import { afterEach, beforeEach, describe, expect, it, vi } from 'vitest';
import { EventStream, type Link } from '../src/api/EventStream';
import type { HouseEvent, HouseEvents } from '../src/api/events';
import { Problem } from '../src/api/request';

class FakeSocket {
  onmessage: ((message: { data: string }) => void) | null = null;
  onclose: (() => void) | null = null;
  isClosed = false;

  constructor(readonly address: string) {
    sockets.push(this);
  }
  close(): void {
    this.isClosed = true;
  }
  say(event: object): void {
    this.onmessage?.({ data: JSON.stringify(event) });
  }
}

const STATE = { seq: 1, time: '', type: 'state', data: {} };
const CONNECTED: Link = { isConnected: true, retryAt: 0, problem: null };

let sockets: FakeSocket[];
let heard: (HouseEvent['type'] | Link)[]; // events and links, in their order
let answer: () => Promise<Response>;
let page: EventTarget;
let mayGoOn: boolean;

const json = (status: number, body: object): Promise<Response> =>
  Promise.resolve(new Response(JSON.stringify(body), { status, headers: { 'Content-Type': 'application/json' } }));

beforeEach(() => {
  vi.useFakeTimers();
  vi.spyOn(Math, 'random').mockReturnValue(0);
  sockets = [];
  heard = [];
  mayGoOn = true;
  answer = () => json(201, { ticket: 'a/b', rights: ['play'] });
  page = new EventTarget();
  vi.stubGlobal('window', Object.assign(page, { setTimeout, setInterval }));
  vi.stubGlobal('document', Object.assign(new EventTarget(), { hidden: false }));
  vi.stubGlobal('location', { protocol: 'https:', host: 'house:8765' });
  vi.stubGlobal('WebSocket', FakeSocket);
  vi.stubGlobal('fetch', () => answer());
});

afterEach(() => {
  vi.useRealTimers();
  vi.restoreAllMocks();
  vi.unstubAllGlobals();
});

function follow(): EventStream<HouseEvents> {
  const stream = new EventStream<HouseEvents>('/api/events', {
    onEvent: (event) => heard.push(event.type),
    onLink: (link) => heard.push(link),
    onRights: (rights) => (rights.includes('play') && mayGoOn ? null : new Problem(403, 'not enough')),
  });
  void stream.reconnect();
  return stream;
}

const settle = (milliseconds = 0): Promise<unknown> => vi.advanceTimersByTimeAsync(milliseconds);

/** The newest socket, after what is under way has ended. */
async function opened(): Promise<FakeSocket> {
  await settle();
  const socket = sockets[sockets.length - 1];
  if (!socket) throw new Error('no socket was opened');
  return socket;
}

const links = (): Link[] => heard.filter((one) => typeof one !== 'string');

describe('the event stream', () => {
  it('opens its socket with a ticket, tells the state, and then that it is connected', async () => {
    follow();
    const socket = await opened();
    expect(socket.address).toBe('wss://house:8765/api/events?ticket=a%2Fb');
    expect(heard).toEqual([]);
    socket.say(STATE);
    socket.say({ ...STATE, seq: 2, type: 'state_saved' });
    socket.say({ type: 'alive' });
    expect(heard).toEqual(['state', CONNECTED, 'state_saved']);
  });

  it('opens none when what its token allows is not enough', async () => {
    mayGoOn = false;
    follow();
    await settle(120000);
    expect(sockets).toEqual([]);
    expect(new Set(links().map(({ problem }) => problem?.message))).toEqual(new Set(['not enough']));
  });

  it('comes back by itself, with pauses that double up to 30 s, and begin anew after a state', async () => {
    follow();
    (await opened()).say(STATE);
    const pauses: number[] = [];
    for (let time = 0; time < 7; time += 1) {
      (await opened()).onclose?.();
      const pause = (links().pop()?.retryAt ?? 0) - performance.now();
      pauses.push(pause);
      const count = sockets.length;
      await settle(pause - 1);
      expect(sockets.length).toBe(count);
      await settle(1);
      expect(sockets.length).toBe(count + 1);
    }
    expect(pauses).toEqual([1000, 2000, 4000, 8000, 16000, 30000, 30000]);
    (await opened()).say(STATE);
    (await opened()).onclose?.();
    expect((links().pop()?.retryAt ?? 0) - performance.now()).toBe(1000);
  });

  it('connects anew after 45 s of silence, and takes every message for a sign of life', async () => {
    follow();
    const first = await opened();
    first.say(STATE);
    for (let time = 0; time < 4; time += 1) {
      await settle(20000);
      first.say({ type: 'alive' });
    }
    expect(sockets).toEqual([first]);
    await settle(50000);
    expect(first.isClosed).toBe(true);
    expect(sockets.length).toBe(2);
  });

  it('does not wait any longer when the device is on the network again', async () => {
    follow();
    (await opened()).onclose?.();
    page.dispatchEvent(new Event('online'));
    await settle();
    expect(sockets.length).toBe(2);
    await settle(1000);
    expect(sockets.length).toBe(2);
  });

  it('tells what the controller refused, and tries again', async () => {
    answer = () => json(401, { detail: 'a token is needed', right: 'Authorization: Bearer TOKEN' });
    follow();
    await settle();
    const [link] = links();
    expect(link?.isConnected).toBe(false);
    expect(link?.problem?.status).toBe(401);
    expect(link?.problem?.text).toBe('a token is needed. Right would be: Authorization: Bearer TOKEN');
    answer = () => Promise.reject(new TypeError('no network'));
    await settle(1000);
    expect(links().pop()?.problem).toBeNull();
  });

  it('leaves alone what belongs to an older try', async () => {
    let late: (response: Response) => void = () => undefined;
    answer = () => new Promise((resolve) => (late = resolve));
    const stream = follow();
    await settle();
    answer = () => json(201, { ticket: 'new', rights: ['play'] });
    void stream.reconnect();
    await settle();
    late(await json(201, { ticket: 'old', rights: ['play'] }));
    await settle();
    expect(sockets.map((one) => one.address)).toEqual(['wss://house:8765/api/events?ticket=new']);
    const former = sockets[0];
    void stream.reconnect();
    former?.onclose?.();
    await settle();
    expect(links()).toEqual([]);
  });
});
