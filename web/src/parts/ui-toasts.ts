// Short news at the edge, some with a way back.

import { LitElement, css, html } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
import { Problem } from '../api/request';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

export interface Toast {
  text: string;
  tone?: 'good' | 'bad';
  onUndo?: () => void;
  stays?: number;
}

interface Shown extends Toast {
  number: number;
  timer: number;
}

const STAYS = 5000;
let host: UiToasts | null = null;

function show(place: UiToasts): void {
  host = place;
}

/** Gives the way to take it away early. */
export function toast(news: Toast): () => void {
  return host?.add(news) ?? (() => undefined);
}

/** Does the work; what the controller refuses is told. Gives whether it went well. */
export async function attempt(work: () => Promise<unknown>): Promise<boolean> {
  try {
    await work();
    return true;
  } catch (problem) {
    toast({ text: problem instanceof Problem ? problem.text : String(problem), tone: 'bad', stays: 10000 });
    return false;
  }
}

@customElement('ui-toasts')
export class UiToasts extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        position: fixed;
        z-index: 900;
        display: grid;
        gap: 0.5rem;
        justify-items: center;
        pointer-events: none;
      }
      div {
        pointer-events: auto;
        display: flex;
        align-items: center;
        gap: 0.75rem;
        max-width: 34rem;
        padding: 0.5rem 0.5rem 0.5rem 1.1rem;
        border-radius: 14px;
        background: var(--ink);
        color: var(--ground);
        box-shadow: 0 8px 30px rgb(0 0 0 / 30%);
        animation: rise 0.2s ease;
      }
      span {
        overflow-wrap: anywhere;
      }
      .bad {
        background: var(--bad);
      }
      button {
        min-height: 2.75rem;
        padding: 0 0.9rem;
        border: 0;
        border-radius: 10px;
        background: transparent;
        color: inherit;
        font: inherit;
        font-weight: 600;
        cursor: pointer;
      }
      button.undo {
        text-decoration: underline;
      }
      button:focus-visible {
        outline-color: currentcolor;
        outline-offset: -3px;
      }
      @keyframes rise {
        from {
          opacity: 0;
          transform: translateY(8px);
        }
      }
    `,
  ];

  @state() private shown: Shown[] = [];
  private count = 0;

  override connectedCallback(): void {
    super.connectedCallback();
    this.setAttribute('role', 'status');
    show(this);
  }

  add(news: Toast): () => void {
    this.count += 1;
    const number = this.count;
    const timer = window.setTimeout(() => this.drop(number), news.stays ?? STAYS);
    // What is said twice is said once, and stands anew for its whole time.
    const others = this.shown.filter((one) => one.text !== news.text || one.tone !== news.tone || one.onUndo);
    this.shown = [...others.slice(-2), { ...news, number, timer }];
    return () => this.drop(number);
  }

  private drop(number: number): void {
    this.shown = this.shown.filter((one) => one.number !== number);
  }

  private undo(one: Shown): void {
    clearTimeout(one.timer);
    this.drop(one.number);
    one.onUndo?.();
  }

  override render(): unknown {
    return repeat(
      this.shown,
      (one) => one.number,
      (one) =>
        html` <div class="toast ${one.tone ?? ''}">
          <span dir="auto">${one.text}</span>
          ${one.onUndo ? html`<button class="undo" @click=${() => this.undo(one)}>${t.undo}</button>` : ''}
          <button aria-label=${t.close} @click=${() => this.drop(one.number)}><ui-icon name="close"></ui-icon></button>
        </div>`,
    );
  }
}
