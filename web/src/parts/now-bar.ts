// What is playing and waiting now, and the way to end it.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { request } from '../api/request';
import { fewOf } from '../model/faults';
import { listing, seconds, soundOf } from '../model/format';
import { progressOf, type Progress } from '../model/progress';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { number } from '../texts/language';
import { t } from '../texts/page';
import './queue-list';
import { stopPlaying } from './stopping';
import { attempt, toast } from './ui-toasts';

const TICK = 250;

@customElement('now-bar')
export class NowBar extends LitElement {
  static override styles = [
    shared,
    css`
      section {
        border-radius: 18px;
        overflow: hidden;
        background: var(--accent);
        color: var(--on-accent);
        box-shadow: 0 8px 30px rgb(0 0 0 / 25%);
      }
      .line {
        display: flex;
        align-items: center;
        gap: 0.6rem;
        padding: 0.7rem 0.7rem 0.7rem 1.1rem;
      }
      queue-list {
        display: block;
        padding: 0.35rem 0.5rem 0 1rem;
        border-bottom: 1px solid color-mix(in srgb, currentcolor 40%, transparent);
      }
      .left {
        flex: none;
        align-self: start;
        font-size: 0.875rem;
        font-variant-numeric: tabular-nums;
      }
      progress {
        display: block;
        width: 100%;
        height: 5px;
        border: 0;
        appearance: none;
        background: color-mix(in srgb, currentcolor 25%, transparent);
      }
      progress::-webkit-progress-bar {
        background: transparent;
      }
      progress::-webkit-progress-value {
        background: currentcolor;
      }
      progress::-moz-progress-bar {
        background: currentcolor;
      }
      button.queue {
        display: inline-flex;
        align-items: center;
        gap: 0.4rem;
        white-space: nowrap;
      }
      button.queue[aria-expanded='true'] ui-icon {
        transform: rotate(180deg);
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
        display: -webkit-box;
        -webkit-box-orient: vertical;
        -webkit-line-clamp: 8;
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
        .many {
          flex-wrap: wrap;
        }
        .many .text {
          flex-basis: calc(100% - 3rem);
        }
        .many .queue {
          margin-right: auto;
        }
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

  @state() private isOpen = false;
  private told = store.failed;
  private ticking = 0;

  constructor() {
    super();
    new Following(this, () => this.tellFailure());
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    clearInterval(this.ticking);
  }

  override updated(): void {
    clearInterval(this.ticking);
    if (this.progress()) this.ticking = window.setInterval(() => this.requestUpdate(), TICK);
  }

  /** The bar goes with what plays; what went wrong stays for a while, for those who look up late. */
  private tellFailure(): void {
    if (store.failed === null || store.failed === this.told) return;
    this.told = store.failed;
    toast({
      text: t.now.failed(store.failed.name, fewOf(store.failed.failures).join('. ')),
      tone: 'bad',
      stays: 10000,
    });
  }

  override render(): unknown {
    const playing = store.status?.playing;
    if (!playing) return nothing;
    const progress = this.progress();
    const isFailing = store.failures.length > 0;
    const isStopped = store.stopped === playing.announcement;
    const name = store.announcementName(playing.announcement);
    return html`<section aria-label=${t.now.label} class=${isFailing ? 'failing' : ''}>
      ${this.isOpen && this.waiting > 0 ? html`<queue-list></queue-list>` : nothing}
      <div class="line ${this.waiting > 0 ? 'many' : ''}">
        ${
          isFailing || isStopped
            ? html`<ui-icon name=${isFailing ? 'exclamation' : 'stop'}></ui-icon>`
            : html`<span class="wave" aria-hidden="true"><i></i><i></i><i></i></span>`
        }
        <div class="text" role="status">
          <strong dir="auto">${name}</strong>
          <span class="details" dir="auto">${isStopped ? t.now.stopped : this.details()}</span>
        </div>
        ${progress ? this.renderLeft(progress) : nothing} ${this.waiting > 0 ? this.renderQueue() : nothing}
        ${this.hasPopup ? this.renderDismiss() : nothing} ${isStopped ? nothing : this.renderStop(name)}
      </div>
      ${progress ? html`<progress aria-hidden="true" max="1" .value=${progress.share}></progress>` : nothing}
    </section>`;
  }

  private renderLeft({ left }: Progress): unknown {
    return html`<span class="left">${t.now.left(seconds(1000 * Math.ceil(left / 1000)))}</span>`;
  }

  private renderQueue(): unknown {
    return html`<button
      class="queue"
      aria-expanded=${this.isOpen}
      @click=${() => {
        this.isOpen = !this.isOpen;
      }}
    >
      ${t.queue.open(number(this.waiting))}<ui-icon name="up"></ui-icon>
    </button>`;
  }

  /** Null when its end is not known, or past: the agent takes its own time. */
  private progress(): Progress | null {
    const playing = store.status?.playing;
    if (!playing?.ends || playing.stopped) return null;
    const progress = progressOf(playing.since, playing.ends, store.now());
    return progress.left > 0 ? progress : null;
  }

  /** What can be taken back. */
  private get waiting(): number {
    return store.status?.queue.length ?? 0;
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
    const parts: string[] = [...fewOf(store.failures)];
    const rooms = [...store.rooms.values()].filter((room) => room.in_announcement).map((room) => room.name);
    const screens = [...store.screens.values()].filter((one) => one.popup).map((one) => one.name);
    if (status?.sound) parts.push(t.now.sound(soundOf(status.sound.file), listing(rooms)));
    if (screens.length) parts.push(t.now.screens(listing(screens)));
    if (status?.waiting.length && !this.isOpen)
      parts.push(t.now.waiting(listing(status.waiting.map((id) => store.announcementName(id)))));
    return parts.join('  ·  ') || t.now.playing;
  }

  private dismiss(): void {
    void attempt(() => request('post', '/api/dismiss'));
  }
}
