// A value that messages can follow.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, css, html } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { request } from '../api/request';
import type { Variable } from '../api/objects';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { attempt, toast } from './ui-toasts';
import { named } from './named';

@customElement('value-card')
export class ValueCard extends LitElement {
  static override styles = [
    shared,
    css`
      form {
        display: flex;
        align-items: end;
        gap: 0.6rem;
        padding: 1.1rem 1.25rem;
      }
      sl-input {
        flex: 1;
        min-width: 0;
      }
    `,
  ];

  @property({ attribute: false }) value!: Variable;
  @state() private written: string | null = null; // what somebody writes just now

  override render(): unknown {
    return html`<form class="card" @submit=${this.set}>
      <sl-input
        label=${this.value.name}
        maxlength="1000"
        autocomplete="off"
        .value=${this.written ?? this.value.value}
        @sl-input=${(event: Event) => {
          this.written = (event.target as SlInput).value;
        }}
        @keydown=${(event: KeyboardEvent) => {
          if (event.key === 'Enter') this.set(event);
        }}
      ></sl-input>
      <sl-button @click=${this.set}>${named(t.house.set, t.house.setLabel(this.value.name))}</sl-button>
    </form>`;
  }

  private readonly set = (event: Event): void => {
    event.preventDefault();
    const { device, variable, name } = this.value;
    const value = this.written ?? this.value.value;
    void attempt(async () => {
      await request('put', '/api/variables/{device}/{variable}', { path: { device, variable }, body: { value } });
      toast({ text: t.house.isSet(name), tone: 'good' });
      this.written = null;
    });
  };
}
