// Keeps the screen on while somebody wants it to be.

export class Wakefulness {
  constructor() {
    this.reasons = new Set();
    this.lock = null;
    this.isAsking = false;
    this.keeper = null;
    // A lock is lost when the page is hidden; it is asked for again when it comes back.
    document.addEventListener('visibilitychange', () => this.apply());
  }

  set(reason, wanted) {
    if (wanted) this.reasons.add(reason);
    else this.reasons.delete(reason);
    this.apply();
  }

  apply() {
    const wanted = this.reasons.size > 0;
    if (navigator.wakeLock) this.applyLock(wanted);
    else this.applyKeeper(wanted);
  }

  async applyLock(wanted) {
    if (!wanted) {
      const lock = this.lock;
      this.lock = null;
      if (lock) await lock.release().catch(() => {});
      return;
    }
    if (this.lock || this.isAsking || document.hidden) return;
    this.isAsking = true;
    try {
      const lock = await navigator.wakeLock.request('screen');
      lock.addEventListener('release', () => {
        if (this.lock === lock) this.lock = null;
      });
      this.lock = lock;
    } catch (error) {
      // Refused, as with a low battery: the popup shows all the same.
    }
    this.isAsking = false;
    if (this.reasons.size === 0) this.applyLock(false);
  }

  /**
   * Browsers have the wake lock on secure addresses only, which a house without a certificate has not. They keep the
   * screen on for a video that plays, though: an empty one, made here.
   */
  applyKeeper(wanted) {
    if (!wanted) {
      if (this.keeper) this.keeper.pause();
      return;
    }
    if (!this.keeper) this.keeper = makeKeeper();
    const playing = this.keeper && this.keeper.play();
    if (playing) playing.catch(() => {});
  }
}

function makeKeeper() {
  const canvas = document.createElement('canvas');
  if (!canvas.captureStream) return null;
  canvas.width = canvas.height = 2;
  canvas.getContext('2d').fillRect(0, 0, 2, 2);
  const video = document.createElement('video');
  video.className = 'keeper';
  video.muted = true;
  video.setAttribute('playsinline', '');
  video.setAttribute('aria-hidden', 'true');
  video.srcObject = canvas.captureStream(1);
  document.body.appendChild(video);
  return video;
}
