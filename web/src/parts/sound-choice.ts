// One of the sounds of the media folder, to listen to before it is chosen.

import { LitElement, css, html } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { seconds } from '../model/format';
import { soundName } from '../model/media';
import { Following, Reading, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import './listen-button';
import { attempt } from './ui-toasts';

@customElement('sound-choice')
export class SoundChoice extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: flex;
        gap: 0.6rem;
        align-items: end;
      }
      label {
        display: grid;
        gap: 0.3rem;
        flex: 1;
        min-width: 0;
      }
    `,
  ];

  @property() value = ''; // as announcements name it
  @property() label = t.say.sound;
  @property() none = t.say.noSound;

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => void attempt(() => store.loadMedia()));
  }

  override render(): unknown {
    const sounds = (store.media ?? []).filter((one) => one.kind === 'sound' && !one.trouble);
    return html`<label
        >${this.label}
        <select @change=${this.choose}>
          <option value="" ?selected=${!this.value}>${this.none}</option>
          ${sounds.map(
            (one) =>
              html`<option value=${soundName(one)} ?selected=${soundName(one) === this.value}>
                ${soundName(one)}, ${seconds(one.duration_ms ?? 0)}
              </option>`,
          )}
        </select></label
      ><listen-button file=${this.value ? `${this.value}.wav` : ''}></listen-button>`;
  }

  private choose(event: Event): void {
    const detail = (event.target as HTMLSelectElement).value;
    this.dispatchEvent(new CustomEvent<string>('sound', { detail }));
  }
}
