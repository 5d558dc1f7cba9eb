// The message of the draft: text or the value of a variable, image, times, OK button.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import type SlSwitch from '@shoelace-style/shoelace/dist/components/switch/switch.js';
import type SlTextarea from '@shoelace-style/shoelace/dist/components/textarea/textarea.js';
import { css, html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import type { Binding } from '../api/objects';
import { store } from '../store/live';
import { t } from '../texts/page';
import { DraftPart } from './draft-part';
import './media-drop';
import './media-image';

const keyOf = (one: { device: number; variable: number }): string => `${one.device} ${one.variable}`;

@customElement('draft-message')
export class DraftMessage extends DraftPart {
  static override styles = [
    ...DraftPart.styles,
    css`
      media-image {
        height: 6rem;
        margin-top: 0.5rem;
        border-radius: 12px;
        background: var(--sunk);
        overflow: hidden;
      }
    `,
  ];

  override render(): unknown {
    const { video } = this.draft;
    const e = t.editor;
    const text = (event: Event): void => this.changeVideo({ text: (event.target as SlTextarea).value });
    return html`<section class="card" aria-labelledby="title">
      <h2 id="title">${e.sections.message}</h2>
      <sl-textarea
        data-place="video.text"
        class=${this.errors['video.text'] ? 'invalid' : ''}
        label=${e.fields.text}
        rows="2"
        resize="auto"
        help-text=${this.errors['video.text'] ?? (video.variable ? e.help.textUnused : '')}
        .value=${video.text}
        placeholder=${e.placeholders.text}
        @sl-input=${text}
      ></sl-textarea>
      ${this.renderVariable()}${this.renderImage()}
      <media-drop
        wanted="image"
        @uploaded=${(event: CustomEvent<string>) => this.changeVideo({ image: event.detail })}
      ></media-drop>
      <sl-switch
        ?checked=${video.ok_button}
        @sl-change=${(event: Event) => this.changeVideo({ ok_button: (event.target as SlSwitch).checked })}
        >${e.fields.okLong}</sl-switch
      >
    </section>`;
  }

  private renderVariable(): unknown {
    const { variable } = this.draft.video;
    const known: Binding[] = store.variables.map(({ device, variable: id, name }) => ({ device, variable: id, name }));
    if (variable && !known.some((one) => keyOf(one) === keyOf(variable)))
      known.push({ ...variable, name: t.editor.strangeVariable(variable.name) });
    if (known.length === 0) return nothing;
    const chosen = (event: Event): void => {
      const key = (event.target as HTMLSelectElement).value;
      const one = known.find((candidate) => keyOf(candidate) === key);
      this.changeVideo({ variable: one && variable && keyOf(one) === keyOf(variable) ? variable : (one ?? null) });
    };
    return html`<div class="field">
      <label for="variable">${t.editor.fields.variable}</label>
      <select id="variable" data-place="video.variable" @change=${chosen}>
        <option value="" ?selected=${!variable}>${t.editor.noVariable}</option>
        ${known.map(
          (one) =>
            html`<option value=${keyOf(one)} ?selected=${variable !== null && keyOf(one) === keyOf(variable)}>
              ${one.name}
            </option>`,
        )}</select
      >${this.wrong('video.variable')}
    </div>`;
  }

  private renderImage(): unknown {
    const { image } = this.draft.video;
    const files = (store.media ?? []).filter((one) => one.kind === 'image');
    const images = files.map((one) => one.name);
    const chosenFile = files.find((one) => one.name === image);
    const isFromWeb = image !== '' && !images.includes(image);
    const chosen = (event: Event): void => this.changeVideo({ image: (event.target as HTMLSelectElement).value });
    const written = (event: Event): void => this.changeVideo({ image: (event.target as SlInput).value.trim() });
    const error = this.errors['video.image'];
    return html`<div class="pair">
      <div class="field">
        <label for="image">${t.editor.fields.image}</label>
        <select id="image" @change=${chosen}>
          <option value="" ?selected=${!image}>${t.editor.noImage}</option>
          ${images.map((name) => html`<option value=${name} ?selected=${name === image}>${name}</option>`)}
          ${isFromWeb ? html`<option value=${image} selected>${image}</option>` : nothing}
        </select>
        ${chosenFile ? html`<media-image small name=${image} version=${chosenFile.modified}></media-image>` : nothing}
      </div>
      <sl-input
        data-place="video.image"
        class=${error ? 'invalid' : ''}
        type="url"
        label=${t.editor.fields.imageAddress}
        placeholder="https://…"
        autocomplete="off"
        .value=${isFromWeb ? image : ''}
        help-text=${error ?? ''}
        @sl-input=${written}
      ></sl-input>
    </div>`;
  }
}
