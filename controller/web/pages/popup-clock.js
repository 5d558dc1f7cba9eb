// How long a popup still stands, by this page's own clocks: the controller's time of day does not matter.

const TICK = 200;
const JUMP = 3000;

/**
 * Counts down from what the controller said remains. The monotonic clock stands still on some devices while they
 * sleep; the time of day does not. When that runs ahead, the device slept or its clock was set: the lost time counts
 * as gone, so that nothing stale is shown, and `onJump` asks the controller what is true.
 */
export class PopupClock {
  /** `listeners`: onTick(left, part), onEnd(), onJump(). */
  constructor(listeners) {
    this.listeners = listeners;
    this.timer = 0;
    this.whole = 1;
    this.left = 0;
    this.last = null;
    document.addEventListener('visibilitychange', () => this.timer && this.tick());
  }

  /** `isNew`: a full bar stands for this time; otherwise for the time of the first start. */
  start(milliseconds, isNew) {
    clearInterval(this.timer);
    this.left = milliseconds;
    this.whole = Math.max(1, isNew ? milliseconds : this.whole, milliseconds);
    this.last = readings();
    this.timer = setInterval(() => this.tick(), TICK);
    this.tick();
  }

  stop() {
    clearInterval(this.timer);
    this.timer = 0;
  }

  remaining() {
    return this.timer ? Math.max(0, this.left) : 0;
  }

  tick() {
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

const readings = () => ({ steady: performance.now(), day: Date.now() });
