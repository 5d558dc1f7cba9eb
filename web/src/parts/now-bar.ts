// What is playing and waiting now, and the way to end it.

import { LitElement, css, html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import { request } from '../api/request';
import { listing, soundOf } from '../model/format';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { stopPlaying } from './stopping';
import { attempt, toast } from './ui-toasts';

@customElement('now-bar')
export class NowBar extends LitElement {
  static override styles = [
    shared,
    css`
      section {
        display: flex;
        align-items: center;
        gap: 0.6rem;
        padding: 0.7rem 0.7rem 0.7rem 1.1rem;
        border-radius: 18px;
        background: var(--accent);
        color: var(--on-accent);
        box-shadow: 0 8px 30px rgb(0 0 0 / 25%);
      }
      .text {
        flex: 1;
        min-width: 0;
      }
      strong,
      .details {
        display: block;
        overflow: hidden;
        text-overflow: ellipsis;
        white-space: nowrap;
      }
      .details {
        font-size: 0.875rem;
      }
      .failing {
        background: var(--bad);
      }
      .failing .details {
        white-space: normal;
        overflow-wrap: anywhere;
      }
      .wave {
        display: flex;
        align-items: center;
        gap: 3px;
        height: 1.4rem;
        flex: none;
      }
      .wave i {
        width: 4px;
        height: 40%;
        border-radius: 2px;
        background: currentcolor;
        animation: swing 1s ease-in-out infinite alternate;
      }
      .wave i:nth-child(2) {
        animation-delay: -0.35s;
      }
      .wave i:nth-child(3) {
        animation-delay: -0.7s;
      }
      @keyframes swing {
        to {
          height: 100%;
        }
      }
      button {
        flex: none;
        min-height: 2.75rem;
        padding: 0 1.1rem;
        border: 2px solid currentcolor;
        border-radius: 12px;
        background: transparent;
        color: inherit;
        font: inherit;
        font-weight: 600;
        cursor: pointer;
      }
      button.stop {
        display: inline-flex;
        align-items: center;
        gap: 0.4rem;
        background: var(--on-accent);
        color: var(--accent);
      }
      .failing button.stop {
        color: var(--bad);
      }
      @media (max-width: 499px) {
        button.stop {
          width: 3rem;
          justify-content: center;
          padding: 0;
          font-size: 1.3rem;
        }
        button.stop span {
          display: none;
        }
      }
      button:focus-visible {
        outline-color: currentcolor;
      }
    `,
  ];

  private told = store.failed;

  constructor() {
    super();
    new Following(this, () => this.tellFailure());
  }

  /** The bar goes with what plays; what went wrong stays for a while, for those who look up late. */
  private tellFailure(): void {
    if (store.failed === null || store.failed === this.told) return;
    this.told = store.failed;
    toast({ text: t.now.failed(store.failed.name, store.failed.failures.join('. ')), tone: 'bad', stays: 10000 });
  }

  override render(): unknown {
    const playing = store.status?.playing;
    if (!playing) return nothing;
    const isFailing = store.failures.length > 0;
    const isStopped = store.stopped === playing.announcement;
    const name = store.announcementName(playing.announcement);
    return html`<section aria-label=${t.now.label} class=${isFailing ? 'failing' : ''}>
      ${
        isFailing || isStopped
          ? html`<ui-icon name=${isFailing ? 'exclamation' : 'stop'}></ui-icon>`
          : html`<span class="wave" aria-hidden="true"><i></i><i></i><i></i></span>`
      }
      <div class="text" role="status">
        <strong dir="auto">${name}</strong>
        <span class="details" dir="auto">${isStopped ? t.now.stopped : this.details()}</span>
      </div>
      ${this.hasPopup ? this.renderDismiss() : nothing} ${isStopped ? nothing : this.renderStop(name)}
    </section>`;
  }

  private renderDismiss(): unknown {
    return html`<button aria-label=${t.now.dismissLabel} @click=${this.dismiss}>${t.now.dismiss}</button>`;
  }

  private renderStop(name: string): unknown {
    return html`<button class="stop" aria-label=${t.now.stopLabel(name)} @click=${stopPlaying}>
      <ui-icon name="stop"></ui-icon><span>${t.now.stop}</span>
    </button>`;
  }

  private get hasPopup(): boolean {
    return [...store.screens.values()].some((one) => one.popup);
  }

  private details(): string {
    const status = store.status;
    const parts: string[] = [...store.failures];
    const rooms = [...store.rooms.values()].filter((room) => room.in_announcement).map((room) => room.name);
    const screens = [...store.screens.values()].filter((one) => one.popup).map((one) => one.name);
    if (status?.sound) parts.push(t.now.sound(soundOf(status.sound.file), listing(rooms)));
    if (screens.length) parts.push(t.now.screens(listing(screens)));
    if (status?.waiting.length)
      parts.push(t.now.waiting(listing(status.waiting.map((id) => store.announcementName(id)))));
    return parts.join('  ·  ') || t.now.playing;
  }

  private dismiss(): void {
    void attempt(() => request('post', '/api/dismiss'));
  }
}
