// A room: what it is doing, how loud it is, and a tone to try it out.

import type SlRange from '@shoelace-style/shoelace/dist/components/range/range.js';
import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { request } from '../api/request';
import type { Room } from '../api/objects';
import { isUnheard } from '../model/faults';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { attempt } from './ui-toasts';
import { named } from './named';

const HELD = 1500; // after a touch, news must not move the slider under the finger

@customElement('room-card')
export class RoomCard extends LitElement {
  static override styles = [
    shared,
    css`
      article {
        display: grid;
        gap: 0.75rem;
        padding: 1.1rem 1.25rem;
        height: 100%;
        align-content: start;
      }
      .title {
        display: flex;
        align-items: center;
        justify-content: space-between;
        gap: 0.75rem;
      }
      .level {
        display: grid;
        grid-template-columns: 1fr auto;
        align-items: center;
        gap: 1rem;
      }
      output {
        min-width: 3.5rem;
        font-size: 1.3rem;
        font-weight: 600;
        text-align: right;
        font-variant-numeric: tabular-nums;
      }
      sl-range {
        padding: 0.5rem 0;
      }
      .end {
        display: flex;
        align-items: center;
        justify-content: space-between;
        gap: 0.75rem;
      }
    `,
  ];

  @property({ attribute: false }) room!: Room;
  @state() private wanted: number | null = null; // while the slider is held
  private isSending = false;
  private release = 0;
  private next: number | null = null;

  override render(): unknown {
    const { name, volume, max_volume: highest, trouble, answers } = this.room;
    const shown = this.wanted ?? volume;
    return html`<article class="card">
      <div class="title">
        <h3 dir="auto">${name}</h3>
        ${this.badge()}
      </div>
      <div class="level">
        <sl-range
          class="unlabelled"
          label=${t.house.volume(name)}
          min="0"
          max=${highest}
          tooltip="none"
          .value=${shown}
          @sl-input=${this.level}
        ></sl-range>
        <output>${t.units.percent(shown)}</output>
      </div>
      ${trouble ? html`<p class="problem">${t.house.trouble(trouble)}</p>` : nothing}
      ${answers || trouble ? nothing : html`<p class="soft small">${t.house.unanswered}</p>`}
      <div class="end">
        <span class="soft small">${highest < 100 ? t.house.highest(highest) : ''}</span>
        <sl-button @click=${this.test}
          ><ui-icon slot="prefix" name="speaker"></ui-icon
          >${named(t.house.testTone, t.house.testToneLabel(name))}</sl-button
        >
      </div>
    </article>`;
  }

  private badge(): unknown {
    const { in_announcement: isPlaying, health } = this.room;
    if (isUnheard(this.room)) return html`<span class="badge bad">${t.house.unheard}</span>`;
    if (isPlaying) return html`<span class="badge good">${t.house.playing}</span>`;
    return html`<span class="badge">${health === 'silent' ? t.house.silent : t.house.quiet}</span>`;
  }

  private level(event: Event): void {
    this.wanted = (event.target as SlRange).value;
    this.next = this.wanted;
    clearTimeout(this.release);
    this.release = window.setTimeout(() => {
      this.wanted = null;
    }, HELD);
    void this.send();
  }

  /** One request at a time, and always the newest wish. */
  private async send(): Promise<void> {
    if (this.isSending) return;
    this.isSending = true;
    while (this.next !== null) {
      const volume = this.next;
      this.next = null;
      await attempt(() => request('put', '/api/rooms/{id}/volume', { path: { id: this.room.id }, body: { volume } }));
    }
    this.isSending = false;
  }

  private test(): void {
    void attempt(() => request('post', '/api/rooms/{id}/test', { path: { id: this.room.id } }));
  }
}
