// What waits, the next one first: each can come earlier or later, or be taken back.

import { LitElement, css, html } from 'lit';
import { customElement } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
import { request } from '../api/request';
import type { Queued } from '../api/objects';
import { timeOfDay } from '../model/format';
import { placeAfter } from '../model/queue';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { attempt, toast } from './ui-toasts';
import type { IconName } from './ui-icon';

@customElement('queue-list')
export class QueueList extends LitElement {
  static override styles = [
    shared,
    css`
      ol {
        max-height: min(18rem, 45vh);
        overflow-y: auto;
      }
      li {
        display: flex;
        align-items: center;
        gap: 0.25rem;
        min-height: 3rem;
        padding-left: 0.25rem;
        border-top: 1px solid color-mix(in srgb, currentcolor 25%, transparent);
      }
      li:first-child {
        border-top: 0;
      }
      .number {
        flex: none;
        min-width: 1.6rem;
        font-variant-numeric: tabular-nums;
      }
      .name {
        flex: 1;
        min-width: 0;
        overflow: hidden;
        text-overflow: ellipsis;
        white-space: nowrap;
        font-weight: 600;
      }
      .icon-button,
      .icon-button:hover {
        color: inherit;
      }
      .icon-button:hover {
        background: color-mix(in srgb, currentcolor 18%, transparent);
      }
      .icon-button[aria-disabled='true'] {
        opacity: 0.4;
        cursor: default;
      }
      :focus-visible {
        outline-color: currentcolor;
        outline-offset: -3px;
      }
    `,
  ];

  constructor() {
    super();
    new Following(this);
  }

  private get queue(): Queued[] {
    return store.status?.queue ?? [];
  }

  override render(): unknown {
    return html`<ol aria-label=${t.queue.label}>
      ${repeat(
        this.queue,
        (one) => one.entry,
        (one, index) => this.renderOne(one, index),
      )}
    </ol>`;
  }

  private renderOne(one: Queued, index: number): unknown {
    const name = one.name || t.names.announcement(one.announcement);
    return html`<li>
      <span class="number">${index + 1}.</span>
      <span class="name" dir="auto" title=${t.queue.since(timeOfDay(one.asked_at))}>${name}</span>
      ${this.renderStep(one, -1, 'up', t.queue.earlier(name))}${this.renderStep(one, 1, 'down', t.queue.later(name))}
      <button
        class="icon-button"
        aria-label=${t.queue.remove(name)}
        title=${t.queue.remove(name)}
        @click=${() => void this.takeBack(one, name)}
      >
        <ui-icon name="close"></ui-icon>
      </button>
    </li>`;
  }

  /** Not disabled where there is no such step: the focus would be lost by the step before. */
  private renderStep(one: Queued, step: -1 | 1, icon: IconName, label: string): unknown {
    const before = placeAfter(this.queue, one.entry, step);
    const move = (): void => {
      if (before === undefined) return;
      void attempt(() => request('post', '/api/queue/{entry}/move', { path: { entry: one.entry }, body: { before } }));
    };
    return html`<button
      class="icon-button"
      aria-label=${label}
      title=${label}
      aria-disabled=${before === undefined}
      @click=${move}
    >
      <ui-icon name=${icon}></ui-icon>
    </button>`;
  }

  private async takeBack({ entry }: Queued, name: string): Promise<void> {
    const isWell = await attempt(() => request('delete', '/api/queue/{entry}', { path: { entry } }));
    if (isWell) toast({ text: t.queue.removed(name) });
  }
}
