// Keeps the screen on while somebody wants it to be.

export class Wakefulness {
  private readonly reasons = new Set<string>();
  private lock: WakeLockSentinel | null = null;
  private isAsking = false;
  private keeper: HTMLVideoElement | null = null;

  constructor() {
    // A lock is lost when the page is hidden; it is asked for again when it comes back.
    document.addEventListener('visibilitychange', () => this.apply());
  }

  set(reason: string, isWanted: boolean): void {
    if (isWanted) this.reasons.add(reason);
    else this.reasons.delete(reason);
    this.apply();
  }

  private apply(): void {
    const isWanted = this.reasons.size > 0;
    const { wakeLock } = navigator as Partial<Navigator>; // not where the address is not secure
    if (!wakeLock) this.applyKeeper(isWanted);
    else if (isWanted) void this.takeLock(wakeLock);
    else this.releaseLock();
  }

  private releaseLock(): void {
    const lock = this.lock;
    this.lock = null;
    lock?.release().catch(() => undefined);
  }

  private async takeLock(wakeLock: WakeLock): Promise<void> {
    if (this.lock || this.isAsking || document.hidden) return;
    this.isAsking = true;
    try {
      const lock = await wakeLock.request('screen');
      lock.addEventListener('release', () => {
        if (this.lock === lock) this.lock = null;
      });
      this.lock = lock;
    } catch {
      // Refused, as with a low battery: the popup shows all the same.
    }
    this.isAsking = false;
    if (this.reasons.size === 0) this.releaseLock();
  }

  /**
   * Browsers have the wake lock on secure addresses only, which a house without a certificate has not. They keep the
   * screen on for a video that plays, though: an empty one, made here.
   */
  private applyKeeper(isWanted: boolean): void {
    if (!isWanted) {
      this.keeper?.pause();
      return;
    }
    this.keeper = this.keeper ?? makeKeeper();
    this.keeper?.play().catch(() => undefined);
  }
}

function makeKeeper(): HTMLVideoElement | null {
  const canvas = document.createElement('canvas');
  if (!('captureStream' in canvas)) return null;
  canvas.width = canvas.height = 2;
  canvas.getContext('2d')?.fillRect(0, 0, 2, 2);
  const video = document.createElement('video');
  video.className = 'keeper';
  video.muted = true;
  video.setAttribute('playsinline', '');
  video.setAttribute('aria-hidden', 'true');
  video.srcObject = canvas.captureStream(1);
  document.body.appendChild(video);
  return video;
}
