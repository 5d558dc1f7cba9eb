// The voices of the house, one of which speaks; nothing where there is no choice.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

@customElement('voice-choice')
export class VoiceChoice extends LitElement {
  static override styles = [
    shared,
    css`
      label {
        display: flex;
        align-items: center;
        gap: 0.6rem;
      }
      select {
        flex: 1;
        min-width: 0;
      }
    `,
  ];

  @property() value = ''; // empty: the house's own

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    if (store.voices.length < 2) return nothing;
    const used = store.voices.find((one) => one.name === this.value) ?? store.voices.find((one) => one.is_default);
    return html`<label
      >${t.say.voice}
      <select @change=${this.choose}>
        ${store.voices.map(
          ({ name, trouble }) =>
            html`<option value=${name} ?selected=${name === used?.name}>
              ${trouble ? t.say.silentVoice(name) : name}
            </option>`,
        )}
      </select></label
    >`;
  }

  private choose(event: Event): void {
    const detail = (event.target as HTMLSelectElement).value;
    this.dispatchEvent(new CustomEvent<string>('voice', { detail }));
  }
}
