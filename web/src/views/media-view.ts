// The sounds and images of the house, and who uses them.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
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

  @state() private isRecording = false;

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => void attempt(() => store.loadMedia()));
  }

  override render(): unknown {
    const files = store.media ?? [];
    return html`<div class="head">
        <h1>${t.media.title}</h1>
        <sl-button ?disabled=${this.isRecording} @click=${this.record}
          ><ui-icon slot="prefix" name="microphone"></ui-icon>${t.record.open}</sl-button
        >
      </div>
      ${this.isRecording ? html`<new-recording class="making" @done=${this.endRecording}></new-recording>` : nothing}
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

  private record(): void {
    this.isRecording = true;
    void import('../parts/new-recording');
  }

  private endRecording(): void {
    this.isRecording = false;
  }

  private group(title: string, files: MediaFile[]): unknown {
    if (files.length === 0) return nothing;
    return html`<section class="group" aria-label=${title}>
      <h2>${title}</h2>
      <div class="tiles">
        ${repeat(
          files,
          (one) => one.name,
          (file) => html`<media-card .file=${file}></media-card>`,
        )}
      </div>
    </section>`;
  }
}
