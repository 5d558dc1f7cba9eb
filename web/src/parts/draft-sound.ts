// The sound of the draft: chosen, heard, brought along.

import type SlSwitch from '@shoelace-style/shoelace/dist/components/switch/switch.js';
import { html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import { seconds } from '../model/format';
import { soundName } from '../model/media';
import { store } from '../store/live';
import { t } from '../texts/page';
import { DraftPart } from './draft-part';
import './listen-button';
import './media-drop';

@customElement('draft-sound')
export class DraftSound extends DraftPart {
  override render(): unknown {
    const { file } = this.draft.audio;
    const sounds = (store.media ?? []).filter((one) => one.kind === 'sound');
    const isKnown = !file || sounds.some((one) => soundName(one) === file);
    const e = t.editor;
    return html`<section class="card" aria-labelledby="title">
      <h2 id="title">${e.sections.sound}</h2>
      <div class="joined">
        <div class="field">
          <label for="sound">${e.fields.sound}</label>
          <select id="sound" data-place="audio.file" aria-describedby="wrong" @change=${this.chosen}>
            <option value="" ?selected=${!file}>${t.list.noSound}</option>
            ${isKnown ? nothing : html`<option value=${file} selected>${store.media ? e.missing(file) : file}</option>`}
            ${sounds.map(
              (one) =>
                html`<option value=${soundName(one)} ?selected=${soundName(one) === file}>
                  ${soundName(one)}, ${one.trouble ? t.media.unplayable : seconds(one.duration_ms ?? 0)}
                </option>`,
            )}
          </select>
        </div>
        <listen-button file=${file ? `${file}.wav` : ''}></listen-button>
      </div>
      ${this.wrong('audio.file')}
      <media-drop
        wanted="sound"
        @uploaded=${(event: CustomEvent<string>) => this.changeAudio({ file: event.detail.replace(/\.wav$/, '') })}
      ></media-drop>
      <sl-switch
        ?checked=${this.draft.urgent}
        help-text=${e.help.urgent}
        @sl-change=${(event: Event) => this.change({ urgent: (event.target as SlSwitch).checked })}
        >${e.fields.urgent}</sl-switch
      >
    </section>`;
  }

  private chosen(event: Event): void {
    this.changeAudio({ file: (event.target as HTMLSelectElement).value });
  }
}
