// Records with this device's microphone: a level to see, then to listen to, to trim, and to do again.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { decoded } from '../model/decode';
import { hindrance, hindranceOf, Recording, type Hindrance } from '../model/Recording';
import { LONGEST, positionText, type Part } from '../model/trim';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import './sound-trimmer';

/** What was recorded, and which part of it is kept; null while there is none. */
export type Recorded = { sound: AudioBuffer; part: Part } | null;

@customElement('sound-recorder')
export class SoundRecorder extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 0.75rem;
      }
      .meter {
        display: grid;
        gap: 0.6rem;
      }
      svg {
        display: block;
        width: 100%;
        height: 1.5rem;
        border-radius: 8px;
        background: var(--sunk);
      }
      .level {
        fill: var(--bar-sound);
      }
      .level.loud {
        fill: var(--bad);
      }
      .line {
        display: flex;
        flex-wrap: wrap;
        align-items: center;
        gap: 0.75rem 1rem;
      }
      .time {
        font-variant-numeric: tabular-nums;
        font-weight: 600;
      }
    `,
  ];

  @state() private why: Hindrance | null = hindrance();
  @state() private isAsking = false;
  @state() private recording: Recording | null = null;
  @state() private time = 0;
  @state() private level = 0;
  @state() private sound: AudioBuffer | null = null;

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.recording?.drop();
    this.recording = null;
  }

  override render(): unknown {
    if (this.why) {
      const isFinal = this.why === 'insecure' || this.why === 'unable';
      return html`<p class="problem" role="alert">${t.record.hindrances[this.why]}</p>
        ${isFinal ? nothing : this.renderBegin(t.record.again)}`;
    }
    if (this.recording) return this.renderRecording();
    if (!this.sound) return this.renderBegin(t.record.begin);
    return html`<sound-trimmer .sound=${this.sound} @part=${(event: CustomEvent<Part>) => this.tell(event.detail)}
      ><sl-button @click=${this.begin}
        ><ui-icon slot="prefix" name="microphone"></ui-icon>${t.record.again}</sl-button
      ></sound-trimmer
    >`;
  }

  private renderBegin(words: string): unknown {
    return html`<div class="line">
      <sl-button ?loading=${this.isAsking} @click=${this.begin}
        ><ui-icon slot="prefix" name="microphone"></ui-icon>${words}</sl-button
      >
      <span class="soft small">${this.isAsking ? t.record.asking : t.record.help}</span>
    </div>`;
  }

  private renderRecording(): unknown {
    const share = Math.round(this.level * 100);
    return html`<div class="meter">
      <svg
        role="meter"
        aria-label=${t.record.level}
        aria-valuemin="0"
        aria-valuemax="100"
        aria-valuenow=${share}
        viewBox="0 0 100 10"
        preserveAspectRatio="none"
      >
        <rect class="level ${this.level > 0.98 ? 'loud' : ''}" width=${share} height="10"></rect>
      </svg>
      <div class="line">
        <sl-button variant="primary" @click=${() => this.recording?.stop()}
          ><ui-icon slot="prefix" name="stop"></ui-icon>${t.record.stop}</sl-button
        >
        <span class="time">${t.record.time(positionText(this.time), positionText(LONGEST))}</span>
      </div>
    </div>`;
  }

  private async begin(): Promise<void> {
    this.tell(null);
    this.sound = null;
    this.why = null;
    this.isAsking = true;
    try {
      const recording = await Recording.begin({
        onProgress: (time, level) => {
          this.time = time;
          this.level = level;
        },
        onEnd: (file) => void this.take(file),
      });
      if (this.isConnected) this.recording = recording;
      else recording.drop(); // it went while the browser asked for leave
    } catch (error) {
      this.why = hindranceOf(error);
    }
    this.isAsking = false;
  }

  private async take(file: Blob): Promise<void> {
    try {
      this.sound = await decoded(file);
    } catch {
      this.why = 'busy'; // not one sample has come
    }
    this.recording = null;
  }

  private tell(part: Part | null): void {
    const detail: Recorded = part && this.sound ? { sound: this.sound, part } : null;
    this.dispatchEvent(new CustomEvent<Recorded>('recorded', { detail }));
  }
}
