// A place where a room could be heard: what it is, its line for the house file, and a tone to try it out.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { Output } from '../api/objects';
import { request } from '../api/request';
import { store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { copy } from './copying';
import { named } from './named';
import { attempt, toast } from './ui-toasts';

@customElement('output-card')
export class OutputCard extends LitElement {
  static override styles = [
    shared,
    css`
      article {
        display: grid;
        gap: 0.75rem;
        padding: 1.1rem 1.25rem;
        height: 100%;
        grid-template-rows: auto auto 1fr auto;
      }
      .title {
        display: flex;
        align-items: start;
        justify-content: space-between;
        gap: 0.75rem;
      }
      h3 {
        overflow-wrap: anywhere;
      }
      code {
        align-self: start;
        padding: 0.6rem 0.8rem;
        border-radius: 10px;
        background: var(--sunk);
        font-size: 0.85rem;
        overflow-wrap: anywhere;
        user-select: all;
      }
      .end {
        display: flex;
        flex-wrap: wrap;
        gap: 0.6rem;
      }
      .end sl-button {
        flex: 1 1 auto;
      }
    `,
  ];

  @property({ attribute: false }) output!: Output;
  @state() private isTesting = false;

  override render(): unknown {
    const { name, kind, line, rooms, default: isDefault } = this.output;
    const heard = rooms.map((id) => store.roomName(id)).join(', ');
    return html`<article class="card">
      <div class="title">
        <h3 dir="auto">${name}</h3>
        <span class="badge">${t.outputs.kinds[kind]}</span>
      </div>
      <p class="soft small">
        ${heard ? t.outputs.heard(heard) : t.outputs.free}${isDefault ? html` ${t.outputs.usual}` : nothing}
      </p>
      <code dir="ltr">${line}</code>
      <div class="end">
        <sl-button @click=${this.copy}
          ><ui-icon slot="prefix" name="copy"></ui-icon>${named(t.outputs.copy, t.outputs.copyLabel(name))}</sl-button
        >
        <sl-button ?loading=${this.isTesting} @click=${this.test}
          ><ui-icon slot="prefix" name="speaker"></ui-icon
          >${named(t.house.testTone, t.outputs.testLabel(name))}</sl-button
        >
      </div>
    </article>`;
  }

  private async copy(): Promise<void> {
    const isCopied = await copy(this.output.line).catch(() => false);
    toast(isCopied ? { text: t.outputs.copied, tone: 'good' } : { text: t.outputs.notCopied, tone: 'bad' });
  }

  private async test(): Promise<void> {
    const { name, output } = this.output;
    this.isTesting = true;
    await attempt(async () => {
      const { trouble } = await request('post', '/api/outputs/test', { body: { output } });
      if (trouble) toast({ text: t.outputs.unheard(name, trouble), tone: 'bad', stays: 10000 });
      else toast({ text: t.outputs.played(name), tone: 'good' });
    });
    this.isTesting = false;
  }
}
