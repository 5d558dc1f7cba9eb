// The stream of events from the controller, which comes back by itself.

import type { EventOf } from './events';
import { read } from '../texts/said';
import { Problem, request } from './request';

const FIRST_PAUSE = 1000;
const LONGEST_PAUSE = 30000;
const SILENCE = 45000;

export interface Link {
  isConnected: boolean;
  retryAt: number; // on the page's monotonic clock; 0 while it is connected
  problem: Problem | null; // when the controller answered and refused
}

export interface Listeners<Events> {
  /** Every message but `alive`; after each connecting a `state` comes first, and then `onLink`. */
  onEvent(event: EventOf<Events>): void;
  onLink(link: Link): void;
  /** What this page's token allows; gives what is wrong when that is not enough to go on. */
  onRights(rights: string[]): Problem | null;
}

/** Keeps a WebSocket open for as long as the page lives. */
export class EventStream<Events> {
  private socket: WebSocket | null = null;
  private attempt = 0; // counts up with each try, so that what belongs to an older one is known
  private pause = FIRST_PAUSE;
  private timer = 0;
  private lastHeard = 0;

  constructor(
    private readonly path: string,
    private readonly listeners: Listeners<Events>,
  ) {
    window.addEventListener('online', () => this.hurry());
    window.addEventListener('pageshow', (event) => {
      if (event.persisted) void this.reconnect();
    });
    document.addEventListener('visibilitychange', () => {
      if (document.hidden) return;
      if (this.isSilent()) void this.reconnect();
      else this.hurry();
    });
    window.setInterval(() => {
      if (this.isSilent()) void this.reconnect();
    }, 5000);
  }

  /** Connects now, whatever there was. */
  async reconnect(): Promise<void> {
    const attempt = this.drop();
    try {
      const { ticket, rights } = await request('post', '/api/tickets');
      if (attempt !== this.attempt) return;
      const refusal = this.listeners.onRights(rights);
      if (refusal) this.retryLater(refusal);
      else this.open(attempt, ticket);
    } catch (problem) {
      if (attempt !== this.attempt) return;
      this.retryLater(problem instanceof Problem && problem.status !== 0 ? problem : null);
    }
  }

  /** Says something to the controller, where it can hear it. */
  tell(message: object): void {
    if (this.socket?.readyState === WebSocket.OPEN) this.socket.send(JSON.stringify(message));
  }

  /** Does not wait any longer for the next try. */
  hurry(): void {
    if (this.timer) void this.reconnect();
  }

  private isSilent(): boolean {
    return this.socket !== null && performance.now() - this.lastHeard > SILENCE;
  }

  private drop(): number {
    clearTimeout(this.timer);
    this.timer = 0;
    const former = this.socket;
    this.socket = null;
    if (former) {
      former.onmessage = null;
      former.onclose = null;
      former.close();
    }
    this.attempt += 1;
    return this.attempt;
  }

  private open(attempt: number, ticket: string): void {
    const scheme = location.protocol === 'https:' ? 'wss:' : 'ws:';
    const socket = new WebSocket(`${scheme}//${location.host}${this.path}?ticket=${encodeURIComponent(ticket)}`);
    this.socket = socket;
    this.lastHeard = performance.now();
    socket.onmessage = (message) => this.hear(String(message.data));
    socket.onclose = () => {
      if (attempt === this.attempt) this.retryLater(null);
    };
  }

  private hear(text: string): void {
    this.lastHeard = performance.now();
    const event = read(text) as EventOf<Events> | { type: 'alive' };
    if (event.type === 'alive') return;
    if (event.type === 'state') this.pause = FIRST_PAUSE;
    this.listeners.onEvent(event as EventOf<Events>);
    if (event.type === 'state') this.listeners.onLink({ isConnected: true, retryAt: 0, problem: null });
  }

  private retryLater(problem: Problem | null): void {
    this.drop();
    const pause = this.pause * (1 + Math.random() / 4);
    this.pause = Math.min(this.pause * 2, LONGEST_PAUSE);
    this.timer = window.setTimeout(() => void this.reconnect(), pause);
    this.listeners.onLink({ isConnected: false, retryAt: performance.now() + pause, problem });
  }
}
