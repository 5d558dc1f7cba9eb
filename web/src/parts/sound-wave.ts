// A sound as a picture: how loud it is over its length.

import { LitElement, css, html, svg, type PropertyValues } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { MediaFile } from '../api/objects';
import { seconds } from '../model/format';
import { peaksOf } from '../model/peaks';
import { Reading } from '../store/live';
import { t } from '../texts/page';

const BARS = 72;
const HEIGHT = 64;

@customElement('sound-wave')
export class SoundWave extends LitElement {
  static override styles = css`
    :host {
      display: block;
    }
    svg {
      display: block;
      width: 100%;
      height: 4rem;
      border-radius: 12px;
      background: var(--sunk);
    }
    rect {
      fill: var(--bar-sound);
    }
  `;

  @property({ attribute: false }) file!: MediaFile;
  @state() private peaks: number[] = [];
  private watch: IntersectionObserver | null = null;
  private isSeen = false;

  constructor() {
    super();
    new Reading(this, () => {
      if (this.isSeen && this.peaks.length === 0) void this.load(); // what a lost connection has left out
    });
  }

  override connectedCallback(): void {
    super.connectedCallback();
    // Only what is looked at is fetched.
    this.watch = new IntersectionObserver((entries) => {
      if (!entries.some((one) => one.isIntersecting)) return;
      this.watch?.disconnect();
      this.isSeen = true;
      void this.load();
    });
    this.watch.observe(this);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.watch?.disconnect();
  }

  override updated(changed: PropertyValues): void {
    const former = changed.get('file') as MediaFile | undefined;
    if (former && former.modified !== this.file.modified && this.isSeen) void this.load();
  }

  private async load(): Promise<void> {
    const { name, modified } = this.file;
    try {
      this.peaks = await peaksOf(name, modified, BARS);
    } catch {
      this.peaks = []; // its card says why it cannot be played
    }
  }

  override render(): unknown {
    return html`<svg
      role="img"
      aria-label=${t.media.waveform(this.file.name, seconds(this.file.duration_ms ?? 0))}
      viewBox="0 0 ${4 * BARS} ${HEIGHT}"
      preserveAspectRatio="none"
    >
      ${this.peaks.map((peak, index) => this.bar(peak, index))}
    </svg>`;
  }

  private bar(peak: number, index: number): unknown {
    const height = Math.max(2, peak * (HEIGHT - 10));
    return svg`<rect x=${4 * index + 0.6} y=${(HEIGHT - height) / 2} width="2.8" height=${height} rx="1.2"></rect>`;
  }
}
