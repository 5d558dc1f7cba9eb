// Whether this page hears of the house, always in sight.

import { LitElement, css, html } from 'lit';
import { customElement } from 'lit/decorators.js';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

@customElement('link-state')
export class LinkState extends LitElement {
  static override styles = [
    shared,
    css`
      span {
        display: inline-flex;
        align-items: center;
        gap: 0.5rem;
        font-size: 0.85rem;
        color: var(--ink-soft);
        white-space: nowrap;
      }
      i {
        width: 0.6rem;
        height: 0.6rem;
        border-radius: 50%;
        background: var(--bad);
      }
      .on i {
        background: var(--good);
      }
      .off {
        color: var(--bad);
        font-weight: 600;
      }
    `,
  ];

  constructor() {
    super();
    new Following(this);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    this.setAttribute('role', 'status');
  }

  override render(): unknown {
    if (store.link.isConnected) return html`<span class="on"><i></i>${t.link.connected}</span>`;
    return store.isReady || store.link.problem
      ? html`<span class="off"><i></i>${t.link.lost}</span>`
      : html`<span><i></i>${t.link.connecting}</span>`;
  }
}
