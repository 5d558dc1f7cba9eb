// What the controller's clock says, by pings over the screen's socket: of those of the last minute the one with the
// least round trip counts.

const FIRST = 20; // pings when the socket is new
const LATER = 6; // and after each pause
const PAUSE = 30000;
const STEP = 50;
const KEPT = 65000; // two bursts

interface Answer {
  heard: number;
  roundTrip: number;
  offset: number; // of the controller's clock to the page's, in milliseconds
}

export class ServerClock {
  private answers: Answer[] = [];
  private sent = new Map<number, number>();
  private lastPing = 0;
  private timer: ReturnType<typeof setTimeout> | undefined;

  /** `ask` sends a ping with this number. */
  constructor(private readonly ask: (ping: number) => void) {}

  /** The socket is new; what was known may be of another controller. */
  restart(): void {
    this.answers = [];
    this.sent.clear();
    clearTimeout(this.timer);
    this.burst(FIRST);
  }

  /** `now`: of the controller, in microseconds. */
  hear(ping: number, now: number): void {
    const sent = this.sent.get(ping);
    if (sent === undefined) return;
    this.sent.delete(ping);
    const heard = performance.now();
    this.answers = this.answers.filter((answer) => heard - answer.heard < KEPT);
    this.answers.push({ heard, roundTrip: heard - sent, offset: now / 1000 - (sent + heard) / 2 });
  }

  /** When a moment of the controller's clock, in microseconds, is on the page's; null when that is not known. */
  pageTime(moment: number): number | null {
    let best: Answer | undefined;
    for (const answer of this.answers) {
      if (!best || answer.roundTrip <= best.roundTrip) best = answer;
    }
    return best ? moment / 1000 - best.offset : null;
  }

  private burst(left: number): void {
    this.lastPing += 1;
    if (left === LATER) this.sent.clear(); // nobody answers those of the former burst any more
    this.sent.set(this.lastPing, performance.now());
    this.ask(this.lastPing);
    this.timer = setTimeout(() => this.burst(left > 1 ? left - 1 : LATER), left > 1 ? STEP : PAUSE);
  }
}
