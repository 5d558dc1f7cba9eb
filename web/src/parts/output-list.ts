// Where rooms could be heard: looked for when the view opens, and again when one wants that.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
import type { Output } from '../api/objects';
import { request } from '../api/request';
import { Following } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import './output-card';
import { attempt } from './ui-toasts';

@customElement('output-list')
export class OutputList extends LitElement {
  static override styles = [
    shared,
    css`
      .head {
        margin-bottom: 0.5rem;
      }
      .head h2 {
        flex: 1 1 auto;
      }
      .intro {
        margin-bottom: 0.9rem;
        max-width: 44rem;
        color: var(--ink-soft);
      }
    `,
  ];

  @state() private outputs: Output[] | null = null;
  @state() private isLooking = false;

  constructor() {
    super();
    new Following(this);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    void this.look();
  }

  override render(): unknown {
    return html`<section class="group" aria-label=${t.outputs.title} aria-busy=${this.isLooking}>
      <div class="head">
        <h2>${t.outputs.title}</h2>
        <sl-button ?loading=${this.isLooking} @click=${this.look}>${t.outputs.look}</sl-button>
      </div>
      <p class="intro">${this.outputs?.length === 0 ? t.outputs.none : t.outputs.intro}</p>
      <div class="tiles">
        ${
          this.outputs
            ? repeat(
                this.outputs,
                (one) => one.output,
                (one) => html`<output-card .output=${one}></output-card>`,
              )
            : nothing
        }
      </div>
    </section>`;
  }

  private async look(): Promise<void> {
    if (this.isLooking) return;
    this.isLooking = true;
    await attempt(async () => {
      ({ outputs: this.outputs } = await request('get', '/api/outputs'));
    });
    this.isLooking = false;
  }
}
