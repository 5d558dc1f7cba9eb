// The page as a loudspeaker: plays the sounds of its room when the controller says, once its browser lets it.

import type { ScreenEvents } from '../api/events';

type Order = ScreenEvents['sound_play'];
export type News = 'started' | 'late' | 'ended' | 'failed';

export interface SpeakerListeners {
  /** Whether the browser lets the page play now. */
  onArmed(isArmed: boolean): void;
  onNews(play: number, news: News): void;
  /** When a moment of the controller is, on the page's own clock; null when that is not known. */
  pageTime(moment: number): number | null;
}

interface Playing {
  gain: number;
  node: GainNode | null; // null until its sound is there
  source: AudioBufferSourceNode | null;
  ends: number; // on the page's clock
}

const LATE = 0.03; // seconds; what is less is heard as the beginning
const TOO_LATE = 1;
const FADE = 0.05;
const KEPT = 2; // decoded sounds: the one that plays, and the next

/** Browsers until 2021 know the one with a prefix alone. */
function contextOfAnyName(): AudioContext | null {
  const names = window as unknown as { AudioContext?: typeof AudioContext; webkitAudioContext?: typeof AudioContext };
  const Context = names.AudioContext ?? names.webkitAudioContext;
  return Context ? new Context() : null;
}

export class Speaker {
  private context: AudioContext | null = null;
  private isArmed = false;
  private readonly sounds = new Map<number, Promise<AudioBuffer>>();
  private readonly playing = new Map<number, Playing>();

  constructor(private readonly listeners: SpeakerListeners) {}

  /** From now on the page is a loudspeaker, whose first tap or key lets it play. */
  begin(): void {
    if (this.context) return;
    this.context = contextOfAnyName();
    if (!this.context) return;
    this.context.addEventListener('statechange', () => this.look());
    for (const gesture of ['pointerup', 'touchend', 'click', 'keydown']) {
      document.addEventListener(gesture, () => this.unlock(), true);
    }
    this.look();
  }

  get armed(): boolean {
    return this.isArmed;
  }

  get isPlaying(): boolean {
    return this.playing.size > 0;
  }

  /** The sound will probably be played: it is fetched and decoded now. */
  fetch(sound: number, address: string): void {
    this.load(sound, address).catch(() => undefined); // told when it is to be played
  }

  async play(order: Order): Promise<void> {
    const playing: Playing = { gain: order.gain, node: null, source: null, ends: Infinity };
    this.playing.set(order.play, playing);
    try {
      const buffer = await this.load(order.sound, order.address);
      if (this.playing.get(order.play) === playing) this.start(order, playing, buffer);
    } catch {
      if (this.playing.delete(order.play)) this.listeners.onNews(order.play, 'failed');
    }
  }

  setGain(play: number, gain: number): void {
    const playing = this.playing.get(play);
    if (!playing) return;
    playing.gain = gain;
    if (this.context) playing.node?.gain.setTargetAtTime(gain, this.context.currentTime, FADE / 4);
  }

  stop(play: number): void {
    const playing = this.playing.get(play);
    this.playing.delete(play);
    if (!playing?.source || !playing.node || !this.context) return;
    // Let go by the controller at its end, of which a slow device may still have some to play.
    if (performance.now() >= playing.ends) return;
    const now = this.context.currentTime;
    const { gain } = playing.node;
    gain.cancelScheduledValues(now);
    gain.setValueAtTime(gain.value, now);
    gain.linearRampToValueAtTime(0, now + FADE);
    playing.source.stop(now + FADE);
  }

  private look(): void {
    const isArmed = this.context?.state === 'running';
    if (isArmed === this.isArmed) return;
    this.isArmed = isArmed;
    this.listeners.onArmed(isArmed);
  }

  private unlock(): void {
    const { context } = this;
    if (!context || context.state === 'running') return;
    context.resume().then(
      () => this.look(),
      () => undefined,
    );
    // Some tablets believe a sound alone.
    const source = context.createBufferSource();
    source.buffer = context.createBuffer(1, 1, 22050);
    source.connect(context.destination);
    source.start(0);
  }

  private load(sound: number, address: string): Promise<AudioBuffer> {
    const known = this.sounds.get(sound);
    if (known) return known;
    const loading = this.fetchAndDecode(address);
    this.sounds.set(sound, loading);
    loading.catch(() => this.sounds.delete(sound));
    for (const older of Array.from(this.sounds.keys()).slice(0, -KEPT)) this.sounds.delete(older);
    return loading;
  }

  private async fetchAndDecode(address: string): Promise<AudioBuffer> {
    const response = await fetch(address);
    const { context } = this;
    if (!response.ok || !context) throw new Error(`no sound at ${address}`);
    const bytes = await response.arrayBuffer();
    return new Promise((resolve, reject) => {
      // Those that give a promise want somebody to look after it.
      const promise = context.decodeAudioData(bytes, resolve, reject) as Promise<AudioBuffer> | undefined;
      promise?.catch(reject);
    });
  }

  private start({ play, at }: Order, playing: Playing, buffer: AudioBuffer): void {
    const { context } = this;
    if (!context) return;
    const moment = this.listeners.pageTime(at);
    const wait = moment === null ? 0 : (moment - performance.now()) / 1000;
    if (wait < -Math.min(TOO_LATE, buffer.duration)) {
      this.playing.delete(play); // the controller says so
      return;
    }
    const source = (playing.source = context.createBufferSource());
    const node = (playing.node = context.createGain());
    source.buffer = buffer;
    node.gain.value = playing.gain;
    source.connect(node);
    node.connect(context.destination);
    source.onended = () => {
      if (this.playing.delete(play)) this.listeners.onNews(play, 'ended');
    };
    playing.ends = performance.now() + (wait + buffer.duration) * 1000;
    source.start(context.currentTime + Math.max(wait, 0), Math.max(-wait, 0));
    setTimeout(
      () => {
        if (this.playing.get(play) === playing) this.listeners.onNews(play, wait < -LATE ? 'late' : 'started');
      },
      Math.max(wait, 0) * 1000,
    );
  }
}
