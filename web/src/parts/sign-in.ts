// Asks for the token that the house wants, or says what the one at hand is for.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import type SlSwitch from '@shoelace-style/shoelace/dist/components/switch/switch.js';
import { LitElement, css, html } from 'lit';
import { customElement, query } from 'lit/decorators.js';
import { setToken, token } from '../api/access';
import { Following, store, stream } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

@customElement('sign-in')
export class SignIn extends LitElement {
  static override styles = [
    shared,
    css`
      .card {
        display: grid;
        gap: 1.25rem;
        max-width: 32rem;
        margin: 6vh auto 0;
        padding: 2rem;
      }
      form {
        display: grid;
        gap: 1.25rem;
      }
      code {
        display: block;
        padding: 0.75rem 1rem;
        border-radius: 10px;
        background: var(--sunk);
        font-size: 0.8rem;
        overflow-wrap: anywhere;
      }
    `,
  ];

  @query('sl-input') private readonly input!: SlInput;
  @query('sl-switch') private readonly keep!: SlSwitch;

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    const screens = store.rights.map((right) => /^navigator:(\d+)$/.exec(right)?.[1]).filter((id) => id !== undefined);
    if (store.link.problem?.status === 403 && screens.length && !store.mayPlay)
      return this.screenOnly(screens.map(Number));
    return html`<section class="card">
      <h1>${t.access.title}</h1>
      <p class="soft">${t.access.intro}</p>
      <code>${t.access.command}</code>
      <form @submit=${this.submit}>
        <sl-input
          name="token"
          type="password"
          label=${t.access.field}
          password-toggle
          autocomplete="current-password"
          autocapitalize="off"
          spellcheck="false"
          required
        ></sl-input>
        <sl-switch checked>${t.access.keep}</sl-switch>
        <p class="problem" role="alert">${this.problem()}</p>
        <sl-button type="submit" variant="primary" size="large" @click=${this.submit}>${t.access.submit}</sl-button>
      </form>
    </section>`;
  }

  private screenOnly(ids: number[]): unknown {
    return html`<section class="card">
      <h1>${t.access.screenTitle}</h1>
      <p class="soft">${t.access.screenText}</p>
      ${ids.map(
        (id) => html`<sl-button variant="primary" href="/navigator/${id}">${t.access.openScreen(id)}</sl-button>`,
      )}
      <sl-button @click=${signOut}>${t.access.signOut}</sl-button>
    </section>`;
  }

  private problem(): string {
    const { problem } = store.link;
    const status = problem?.status;
    if (status === 403) return problem?.text ?? '';
    if (status === 429) return t.access.often;
    return status === 401 && token() ? t.access.wrong : '';
  }

  private submit(event: Event): void {
    event.preventDefault();
    if (!this.input.value.trim()) {
      this.input.focus();
      return;
    }
    setToken(this.input.value, this.keep.checked);
    void stream.reconnect();
  }
}

export function signOut(): void {
  setToken('', false);
  location.reload();
}
