// What the microphone hears, for 20 seconds at most.

import { levelOf, meterAfter } from './level';
import { LONGEST } from './trim';

/** Why nothing can be recorded: texts say it. */
export type Hindrance = 'insecure' | 'unable' | 'denied' | 'none' | 'busy';

export interface Heard {
  /** While it goes on: how long so far, and how loud it is, 0 to 1. */
  onProgress: (milliseconds: number, level: number) => void;
  /** At its end, however it came. */
  onEnd: (recording: Blob) => void;
}

/** Browsers lend the microphone to no page that came unprotected from another machine. */
export function hindrance(): Hindrance | null {
  if (!window.isSecureContext) return 'insecure';
  const hasAll = 'MediaRecorder' in window && 'mediaDevices' in navigator;
  return hasAll ? null : 'unable';
}

const HINDRANCES: Record<string, Hindrance> = {
  NotAllowedError: 'denied',
  SecurityError: 'denied',
  NotFoundError: 'none',
  OverconstrainedError: 'none',
};

export function hindranceOf(error: unknown): Hindrance {
  return (error instanceof DOMException && HINDRANCES[error.name]) || 'busy';
}

export class Recording {
  private readonly recorder: MediaRecorder;
  private readonly context = new AudioContext();
  private readonly analyser = this.context.createAnalyser();
  private readonly samples = new Float32Array(this.analyser.fftSize);
  private readonly pieces: Blob[] = [];
  private readonly timer: number;
  private frame = 0;
  private begun = performance.now();
  private looked = this.begun;
  private meter = 0;
  private isDropped = false;

  /** Throws what the browser throws when it lends no microphone. */
  static async begin(heard: Heard): Promise<Recording> {
    return new Recording(await navigator.mediaDevices.getUserMedia({ audio: true }), heard);
  }

  private constructor(
    private readonly microphone: MediaStream,
    private readonly heard: Heard,
  ) {
    this.context.createMediaStreamSource(microphone).connect(this.analyser);
    this.recorder = new MediaRecorder(microphone);
    this.recorder.ondataavailable = ({ data }) => this.pieces.push(data);
    this.recorder.onstart = () => {
      this.begun = performance.now();
    };
    this.recorder.onstop = () => this.end();
    this.recorder.start();
    this.timer = window.setTimeout(() => this.stop(), LONGEST);
    this.look();
  }

  stop(): void {
    if (this.recorder.state !== 'inactive') this.recorder.stop();
  }

  /** Ends it, and nobody hears of it. */
  drop(): void {
    this.isDropped = true;
    this.stop();
  }

  private look(): void {
    const now = performance.now();
    this.analyser.getFloatTimeDomainData(this.samples);
    this.meter = meterAfter(this.meter, levelOf(this.samples), now - this.looked);
    this.looked = now;
    this.heard.onProgress(Math.min(LONGEST, now - this.begun), this.meter);
    this.frame = requestAnimationFrame(() => this.look());
  }

  private end(): void {
    clearTimeout(this.timer);
    cancelAnimationFrame(this.frame);
    for (const track of this.microphone.getTracks()) track.stop();
    void this.context.close();
    if (!this.isDropped) this.heard.onEnd(new Blob(this.pieces, { type: this.recorder.mimeType }));
  }
}
