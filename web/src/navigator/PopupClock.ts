// How long a popup still stands, by this page's own clocks: the controller's time of day does not matter.

const TICK = 200;
const JUMP = 3000;

export interface ClockListeners {
  onTick(left: number, part: number): void;
  onEnd(): void;
  onJump(): void;
}

/**
 * Counts down from what the controller said remains. The monotonic clock stands still on some devices while they
 * sleep; the time of day does not. When that runs ahead, the device slept or its clock was set: the lost time counts
 * as gone, so that nothing stale is shown, and `onJump` asks the controller what is true.
 */
export class PopupClock {
  private timer = 0;
  private whole = 1;
  private left = 0;
  private last = readings();

  constructor(private readonly listeners: ClockListeners) {
    document.addEventListener('visibilitychange', () => {
      if (this.timer) this.tick();
    });
  }

  /** `isNew`: a full bar stands for this time; otherwise for the time of the first start. */
  start(milliseconds: number, isNew: boolean): void {
    clearInterval(this.timer);
    this.left = milliseconds;
    this.whole = Math.max(1, isNew ? milliseconds : this.whole, milliseconds);
    this.last = readings();
    this.timer = window.setInterval(() => this.tick(), TICK);
    this.tick();
  }

  stop(): void {
    clearInterval(this.timer);
    this.timer = 0;
  }

  remaining(): number {
    return this.timer ? Math.max(0, this.left) : 0;
  }

  private tick(): void {
    const now = readings();
    const steady = now.steady - this.last.steady;
    const ahead = now.day - this.last.day - steady;
    this.last = now;
    this.left -= steady + (ahead > JUMP ? ahead : 0);
    if (this.left <= 0) {
      this.stop();
      this.listeners.onEnd();
    } else {
      this.listeners.onTick(this.left, Math.min(1, this.left / this.whole));
    }
    if (ahead > JUMP) this.listeners.onJump();
  }
}

function readings(): { steady: number; day: number } {
  return { steady: performance.now(), day: Date.now() };
}
