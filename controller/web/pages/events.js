// The stream of events from the controller, which comes back by itself.

import { request } from './api.js';

const FIRST_PAUSE = 1000;
const LONGEST_PAUSE = 30000;
const SILENCE = 45000;

/**
 * Keeps a WebSocket to `path` open for as long as the page lives.
 *   onEvent(event)   every message with a type; after each connecting a `state` comes first
 *   onLink(link)     {connected, retryAt, problem}: `retryAt` on the page's monotonic clock, `problem` when the
 *                    controller answered and refused, null otherwise
 *   onRights(rights) what this page's token allows; gives false when that is not enough to go on
 */
export class EventStream {
  constructor(path, listeners) {
    this.path = path;
    this.onEvent = listeners.onEvent;
    this.onLink = listeners.onLink;
    this.onRights = listeners.onRights || (() => {});
    this.socket = null;
    this.attempt = 0; // counts up with each try, so that what belongs to an older one is known
    this.pause = FIRST_PAUSE;
    this.timer = 0;
    this.lastHeard = 0;
    window.addEventListener('online', () => this.hurry());
    window.addEventListener('pageshow', (event) => event.persisted && this.reconnect());
    document.addEventListener('visibilitychange', () => {
      if (document.hidden) return;
      if (this.isSilent()) this.reconnect();
      else this.hurry();
    });
    setInterval(() => this.isSilent() && this.reconnect(), 5000);
  }

  /** Connects now, whatever there was. */
  async reconnect() {
    const attempt = this.drop();
    try {
      const ticket = await request('POST', '/api/tickets');
      if (attempt !== this.attempt) return;
      if (this.onRights(ticket.rights) === false) return;
      this.open(attempt, ticket.ticket);
    } catch (problem) {
      if (attempt === this.attempt) this.retryLater(problem.status ? problem : null);
    }
  }

  /** Does not wait any longer for the next try. */
  hurry() {
    if (this.timer) this.reconnect();
  }

  isSilent() {
    return this.socket !== null && performance.now() - this.lastHeard > SILENCE;
  }

  drop() {
    clearTimeout(this.timer);
    this.timer = 0;
    const former = this.socket;
    this.socket = null;
    if (former) {
      former.onmessage = former.onclose = null;
      former.close();
    }
    return ++this.attempt;
  }

  open(attempt, ticket) {
    const scheme = location.protocol === 'https:' ? 'wss:' : 'ws:';
    const socket = new WebSocket(`${scheme}//${location.host}${this.path}?ticket=${encodeURIComponent(ticket)}`);
    this.socket = socket;
    this.lastHeard = performance.now();
    socket.onmessage = (message) => this.hear(message.data);
    socket.onclose = () => attempt === this.attempt && this.retryLater(null);
  }

  hear(text) {
    this.lastHeard = performance.now();
    const event = JSON.parse(text);
    if (event.type === 'state') {
      this.pause = FIRST_PAUSE;
      this.onLink({ connected: true, retryAt: 0, problem: null });
    }
    if (event.type !== 'alive') this.onEvent(event);
  }

  retryLater(problem) {
    this.drop();
    const pause = this.pause * (1 + Math.random() / 4);
    this.pause = Math.min(this.pause * 2, LONGEST_PAUSE);
    this.timer = setTimeout(() => this.reconnect(), pause);
    this.onLink({ connected: false, retryAt: performance.now() + pause, problem });
  }
}
