// A sound that the browser holds, as a picture with two handles: what lies between them is kept.

import { LitElement, html, nothing, svg, type PropertyValues } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { seconds } from '../model/format';
import { peaksIn } from '../model/peaks';
import { listenToPart, stop } from '../model/sound';
import { firstPart, LONGEST, moved, positionText, withFrom, withTo, type Part } from '../model/trim';
import { lengthOf } from '../model/wav';
import { shared } from '../styles/shared';
import { trimmerStyles } from '../styles/trimmer';
import { t } from '../texts/page';

const BARS = 150;
const HEIGHT = 80;
const STEPS: Record<string, number> = { ArrowLeft: -100, ArrowRight: 100, PageDown: -1000, PageUp: 1000 };

@customElement('sound-trimmer')
export class SoundTrimmer extends LitElement {
  static override styles = [shared, trimmerStyles];

  @property({ attribute: false }) sound!: AudioBuffer;
  @state() private kept: Part = { from: 0, to: 0 };
  @state() private position: number | null = null; // of what is listened to
  private peaks: number[] = [];
  private held: { x: number; part: Part } | null = null;

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    if (this.position !== null) stop();
  }

  override willUpdate(changed: PropertyValues): void {
    if (!changed.has('sound')) return;
    this.peaks = peaksIn(this.sound.getChannelData(0), BARS);
    this.take(firstPart(this.length));
  }

  private get length(): number {
    return lengthOf(this.sound);
  }

  private take(part: Part): void {
    this.kept = part;
    this.dispatchEvent(new CustomEvent<Part>('part', { detail: part }));
  }

  override render(): unknown {
    const { from, to } = this.kept;
    const isPlaying = this.position !== null;
    return html`<div class="wave">
        ${this.renderPicture()}
        ${this.renderHandle('from', t.trim.from, from, (value) => withFrom(this.kept, value, this.length))}
        ${this.renderHandle('to', t.trim.to, to, (value) => withTo(this.kept, value, this.length))}
      </div>
      <div class="line">
        <sl-button @click=${this.listen}>
          <ui-icon slot="prefix" name=${isPlaying ? 'stop' : 'play'}></ui-icon
          >${isPlaying ? t.media.stop : t.trim.listen}</sl-button
        ><slot></slot>
        <span class="times soft small">
          <span>${positionText(from)} – ${positionText(to)}</span>
          <strong>${t.trim.kept(seconds(to - from), seconds(this.length))}</strong>
        </span>
      </div>
      ${this.length > LONGEST ? html`<p class="soft small">${t.trim.help}</p>` : nothing}`;
  }

  private renderHandle(name: string, label: string, value: number, partAt: (value: number) => Part): unknown {
    const key = (event: KeyboardEvent): void => {
      const step = STEPS[event.key];
      if (step === undefined) return;
      event.preventDefault();
      this.take(partAt(value + step));
    };
    const drag = (event: Event): void => {
      const input = event.target as HTMLInputElement;
      this.take(partAt(Number(input.value)));
      input.value = String(this.kept[name as keyof Part]);
    };
    return html`<input
      type="range"
      class=${name}
      min="0"
      max=${this.length}
      step="1"
      aria-label=${label}
      aria-valuetext=${positionText(value)}
      .value=${String(value)}
      @keydown=${key}
      @input=${drag}
    />`;
  }

  private renderPicture(): unknown {
    const { from, to } = this.kept;
    const x = (milliseconds: number): number => (4 * BARS * milliseconds) / this.length;
    const bar = (peak: number, index: number): unknown => {
      const height = Math.max(2, peak * (HEIGHT - 10));
      return svg`<rect x=${4 * index + 0.6} y=${(HEIGHT - height) / 2} width="2.8" height=${height}></rect>`;
    };
    return html`<svg
      aria-hidden="true"
      viewBox="0 0 ${4 * BARS} ${HEIGHT}"
      preserveAspectRatio="none"
      @pointerdown=${this.grab}
      @pointermove=${this.drag}
      @pointerup=${this.release}
      @pointercancel=${this.release}
    >
      <rect class="kept" x=${x(from)} y="0" width=${x(to - from)} height=${HEIGHT}></rect>
      ${this.peaks.map(bar)}
      <rect class="cut" x="0" y="0" width=${x(from)} height=${HEIGHT}></rect>
      <rect class="cut" x=${x(to)} y="0" width=${x(this.length - to)} height=${HEIGHT}></rect>
      ${this.position === null ? nothing : this.renderNow(x(this.position))}
    </svg>`;
  }

  private renderNow(x: number): unknown {
    return svg`<rect class="now" x=${x} y="0" width="2" height=${HEIGHT}></rect>`;
  }

  private readonly grab = (event: PointerEvent): void => {
    (event.currentTarget as Element).setPointerCapture(event.pointerId);
    this.held = { x: event.clientX, part: this.kept };
  };

  private readonly drag = (event: PointerEvent): void => {
    if (!this.held) return;
    const width = (event.currentTarget as Element).getBoundingClientRect().width;
    this.take(moved(this.held.part, ((event.clientX - this.held.x) * this.length) / width, this.length));
  };

  private readonly release = (): void => {
    this.held = null;
  };

  private listen(): void {
    if (this.position !== null) {
      stop();
      return;
    }
    const position = listenToPart(this.sound, this.kept, () => {
      this.position = null;
    });
    this.position = this.kept.from;
    const follow = (): void => {
      if (this.position === null) return;
      this.position = position();
      requestAnimationFrame(follow);
    };
    requestAnimationFrame(follow);
  }
}
