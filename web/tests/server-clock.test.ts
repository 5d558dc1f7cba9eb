import { afterEach, beforeEach, describe, expect, it, vi } from 'vitest';
import { ServerClock } from '../src/navigator/ServerClock';

const AHEAD = 5_000_000; // microseconds that the controller's clock is before the page's

let pings: number[];
let clock: ServerClock;
let there: number; // how long the next pings take, in milliseconds, and their answers
let back: number;

beforeEach(() => {
  vi.useFakeTimers();
  pings = [];
  [there, back] = [10, 10];
  clock = new ServerClock((ping) => {
    pings.push(ping);
    const [way, home] = [there, back];
    setTimeout(() => {
      const now = performance.now() * 1000 + AHEAD;
      setTimeout(() => clock.hear(ping, now), home);
    }, way);
  });
});

afterEach(() => {
  vi.useRealTimers();
});

const wait = (milliseconds: number): void => void vi.advanceTimersByTime(milliseconds);
/** How wrong it is, in milliseconds. */
const error = (): number => (clock.pageTime(AHEAD + 7_000_000) ?? NaN) - 7000;

describe('the clock of the controller, on the page', () => {
  it('is not known before a ping is answered', () => {
    expect(clock.pageTime(1)).toBeNull();
    clock.restart();
    expect(clock.pageTime(1)).toBeNull();
    wait(20);
    expect(error()).toBeCloseTo(0, 3);
  });

  it('asks 20 times at the start, and 6 times every 30 s', () => {
    clock.restart();
    wait(2000);
    expect(pings.length).toBe(20);
    wait(30000);
    expect(pings.length).toBe(26);
    wait(30000);
    expect(pings.length).toBe(32);
  });

  it('goes by the answer with the least round trip, whatever came before and after', () => {
    [there, back] = [39, 1]; // half of the round trip is taken for the way, wrongly
    clock.restart();
    wait(40);
    expect(error()).toBeCloseTo(-19, 3);
    [there, back] = [3, 1];
    wait(60);
    expect(error()).toBeCloseTo(-1, 3);
    [there, back] = [1, 60];
    wait(2000);
    expect(error()).toBeCloseTo(-1, 3);
  });

  it('forgets what is older than two bursts, for clocks drift', () => {
    [there, back] = [3, 1];
    clock.restart();
    wait(2000);
    expect(error()).toBeCloseTo(-1, 3);
    [there, back] = [1, 8];
    wait(60000);
    expect(error()).toBeCloseTo(-1, 3);
    wait(30000);
    expect(error()).toBeCloseTo(3.5, 3);
  });

  it('begins anew with a new connection, and takes no answer to what it asked before', () => {
    clock.restart();
    wait(2000);
    const former = pings[0] ?? 0;
    clock.restart();
    clock.hear(former, 1);
    expect(clock.pageTime(1)).toBeNull();
    wait(2000);
    expect(pings.length).toBe(40);
    expect(error()).toBeCloseTo(0, 3);
  });
});
