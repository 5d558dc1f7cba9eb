// The sounds and images of the house, and who uses them.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { keyed } from 'lit/directives/keyed.js';
import { repeat } from 'lit/directives/repeat.js';
import { fetched } from '../api/later';
import type { MediaFile } from '../api/objects';
import '../parts/media-card';
import '../parts/media-drop';
import { attempt } from '../parts/ui-toasts';
import { Following, Reading, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

@customElement('media-view')
export class MediaView extends LitElement {
  static override styles = [
    shared,
    css`
      .group {
        margin-top: 1.75rem;
      }
      .making {
        display: block;
        margin-bottom: 1.25rem;
      }
      .empty,
      .awaited {
        margin-top: 1.5rem;
      }
    `,
  ];

  @state() private making: 'recording' | 'speech' | null = null;
  @state() private edited: MediaFile | null = null; // the spoken sound that is being changed

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => void attempt(() => store.loadMedia()));
  }

  override render(): unknown {
    const files = store.media ?? [];
    return html`<div class="head">
        <h1>${t.media.title}</h1>
        <sl-button ?disabled=${this.making === 'speech'} @click=${() => this.speak(null)}
          ><ui-icon slot="prefix" name="chat"></ui-icon>${t.speech.open}</sl-button
        >
        <sl-button ?disabled=${this.making === 'recording'} @click=${this.record}
          ><ui-icon slot="prefix" name="microphone"></ui-icon>${t.record.open}</sl-button
        >
      </div>
      ${this.renderMaking()}
      <media-drop wanted="any"></media-drop>
      ${store.media || store.link.isConnected ? nothing : html`<p class="awaited soft">${t.link.awaited}</p>`}
      ${
        store.media && files.length === 0
          ? html`<section class="card empty">
              <ui-icon name="note"></ui-icon>
              <h2>${t.media.none}</h2>
              <p>${t.media.noneText}</p>
            </section>`
          : nothing
      }
      ${this.group(
        t.media.sounds,
        files.filter((one) => one.kind === 'sound'),
      )}${this.group(
        t.media.images,
        files.filter((one) => one.kind === 'image'),
      )}`;
  }

  private renderMaking(): unknown {
    if (this.making === 'recording') return html`<new-recording class="making" @done=${this.end}></new-recording>`;
    if (this.making !== 'speech') return nothing;
    return keyed(
      this.edited?.name,
      html`<new-speech class="making" .file=${this.edited} @done=${this.end}></new-speech>`,
    );
  }

  private record(): void {
    this.making = 'recording';
    void fetched(() => import('../parts/new-recording'));
  }

  private speak(file: MediaFile | null): void {
    this.edited = file;
    this.making = 'speech';
    void fetched(() => import('../parts/new-speech'));
    window.scrollTo(0, 0);
  }

  private end(): void {
    this.making = null;
  }

  private group(title: string, files: MediaFile[]): unknown {
    if (files.length === 0) return nothing;
    return html`<section class="group" aria-label=${title}>
      <h2>${title}</h2>
      <div class="tiles">
        ${repeat(
          files,
          (one) => one.name,
          (file) => html`<media-card .file=${file} @speech=${() => this.speak(file)}></media-card>`,
        )}
      </div>
    </section>`;
  }
}
