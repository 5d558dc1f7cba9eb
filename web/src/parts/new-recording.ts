// A sound of one's own, recorded here, named and kept.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, css, html } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { dayAndMinute, soundFileName } from '../model/media';
import { fileOf } from '../model/wav';
import { store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { put } from './bringing';
import './sound-recorder';
import type { Recorded } from './sound-recorder';
import { attempt, toast } from './ui-toasts';

@customElement('new-recording')
export class NewRecording extends LitElement {
  static override styles = [
    shared,
    css`
      section {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 1rem;
        padding: 1.25rem;
      }
      .end {
        display: flex;
        flex-wrap: wrap;
        align-items: end;
        gap: 0.75rem;
      }
      sl-input {
        flex: 1 1 14rem;
      }
    `,
  ];

  @state() private recorded: Recorded = null;
  @state() private name = t.record.nameOf(dayAndMinute(new Date()));
  @state() private isSending = false;

  override render(): unknown {
    return html`<section class="card" aria-label=${t.record.title}>
      <h2>${t.record.title}</h2>
      <sound-recorder
        @recorded=${(event: CustomEvent<Recorded>) => {
          this.recorded = event.detail;
        }}
      ></sound-recorder>
      <div class="end">
        <sl-input
          label=${t.record.name}
          maxlength="90"
          .value=${this.name}
          @sl-input=${(event: Event) => {
            this.name = (event.target as SlInput).value;
          }}
        ></sl-input>
        <sl-button @click=${this.close}>${t.cancel}</sl-button>
        <sl-button
          variant="primary"
          ?disabled=${!this.recorded || !this.name.trim()}
          ?loading=${this.isSending}
          @click=${() => void this.keep()}
          >${t.record.keep}</sl-button
        >
      </div>
    </section>`;
  }

  private async keep(): Promise<void> {
    const { recorded } = this;
    if (!recorded) return;
    this.isSending = true;
    let name = '';
    const isWell = await attempt(async () => {
      name = await put(soundFileName(this.name), fileOf(recorded.sound, recorded.part), () => undefined);
    });
    this.isSending = false;
    if (!isWell || !name) return;
    toast({ text: t.record.kept(name), tone: 'good' });
    await attempt(() => store.loadMedia());
    this.close();
  }

  private close(): void {
    this.dispatchEvent(new CustomEvent('done'));
  }
}
