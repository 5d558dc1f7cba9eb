// Moves long texts on by itself, for screens that nobody touches.

const WAIT = 3500; // before it begins, and left over at the end
const FASTEST = 90; // CSS pixels a second: faster cannot be read

export class AutoScroll {
  private timer = 0;
  private request = 0;

  /** `remaining()`: for how long the text is still shown, in milliseconds. */
  constructor(
    private readonly frame: HTMLElement,
    private readonly remaining: () => number,
  ) {
    // Whoever scrolls has taken over.
    for (const sign of ['pointerdown', 'wheel', 'touchstart']) {
      frame.addEventListener(sign, () => this.stop(), { passive: true });
    }
  }

  start(): void {
    this.stop();
    if (matchMedia('(prefers-reduced-motion: reduce)').matches) return;
    this.timer = window.setTimeout(() => this.run(performance.now(), this.frame.scrollTop), WAIT);
  }

  stop(): void {
    clearTimeout(this.timer);
    cancelAnimationFrame(this.request);
    this.timer = this.request = 0;
  }

  /** `position` is kept here, since browsers round what is scrolled to. */
  private run(before: number, position: number): void {
    this.request = requestAnimationFrame((now) => {
      const distance = this.frame.scrollHeight - this.frame.clientHeight - position;
      if (distance <= 0) return;
      const seconds = Math.max(1, this.remaining() - WAIT) / 1000;
      const next = position + (Math.min(FASTEST, distance / seconds) * Math.max(0, now - before)) / 1000;
      this.frame.scrollTop = next;
      this.run(now, next);
    });
  }
}
