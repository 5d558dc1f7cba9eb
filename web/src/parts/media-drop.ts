// Takes files, dropped or chosen, into the media folder, and shows how far they are.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { Problem } from '../api/request';
import { ACCEPTED, refusalOf, type Wanted } from '../model/media';
import { store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { bring } from './bringing';
import { attempt } from './ui-toasts';

interface Under {
  name: string;
  share: number;
}

@customElement('media-drop')
export class MediaDrop extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: block;
      }
      .drop {
        display: flex;
        flex-wrap: wrap;
        align-items: center;
        justify-content: center;
        gap: 0.5rem 1rem;
        padding: 1rem;
        border: 2px dashed var(--line);
        border-radius: 14px;
        color: var(--ink-soft);
        text-align: center;
      }
      .drop.over {
        border-color: var(--accent);
        background: var(--accent-soft);
      }
      .drop > ui-icon {
        font-size: 1.5rem;
        color: var(--accent);
      }
      progress {
        width: 100%;
        height: 0.6rem;
        accent-color: var(--accent);
      }
      .under {
        display: grid;
        gap: 0.25rem;
        margin-top: 0.75rem;
      }
      .refused {
        display: flex;
        align-items: start;
        gap: 0.75rem;
        margin-top: 0.75rem;
      }
      .refused span {
        flex: 1;
        overflow-wrap: anywhere;
      }
      label {
        display: inline-flex;
      }
      input:focus-visible + sl-button {
        outline: 3px solid var(--accent);
        outline-offset: 2px;
        border-radius: 10px;
      }
    `,
  ];

  @property() wanted: Wanted = 'any';
  @state() private isOver = false;
  @state() private under: Under | null = null;
  @state() private refusals: { name: string; why: string }[] = [];

  override render(): unknown {
    return html`<div
        class="drop ${this.isOver ? 'over' : ''}"
        @dragenter=${this.hover}
        @dragover=${this.hover}
        @dragleave=${this.hover}
        @drop=${this.take}
      >
        <ui-icon name="upload"></ui-icon><span>${t.media.drop[this.wanted]}</span>
        <sl-button size="medium" @click=${this.choose}>${t.media.choose}</sl-button>
        <input
          type="file"
          hidden
          ?multiple=${this.wanted === 'any'}
          accept=${ACCEPTED[this.wanted]}
          @change=${this.chosen}
        />
      </div>
      ${
        this.under
          ? html`<div class="under small">
              <span role="status">${t.media.uploading(this.under.name)}</span>
              <progress aria-label=${t.media.uploading(this.under.name)} max="1" .value=${this.under.share}></progress>
            </div>`
          : nothing
      }
      <div role="alert">
        ${this.refusals.map(
          (one) =>
            html`<p class="problem refused">
              <span><strong dir="auto">${one.name}</strong> ${one.why}</span>
            </p>`,
        )}
      </div>`;
  }

  private choose(): void {
    this.renderRoot.querySelector('input')?.click();
  }

  private hover(event: DragEvent): void {
    event.preventDefault();
    this.isOver = event.type !== 'dragleave';
  }

  private take(event: DragEvent): void {
    event.preventDefault();
    this.isOver = false;
    void this.uploadAll([...(event.dataTransfer?.files ?? [])]);
  }

  private chosen(event: Event): void {
    const input = event.target as HTMLInputElement;
    const files = [...(input.files ?? [])];
    input.value = '';
    void this.uploadAll(files);
  }

  private async uploadAll(files: File[]): Promise<void> {
    this.refusals = [];
    let last = '';
    for (const file of files) last = (await this.uploadOne(file)) || last;
    this.under = null;
    await attempt(() => store.loadMedia());
    if (last) this.dispatchEvent(new CustomEvent('uploaded', { detail: last }));
  }

  /** Gives the name under which it is kept; '' when it was not taken. */
  private async uploadOne(file: File): Promise<string> {
    const refusal = refusalOf(file, this.wanted);
    if (refusal) return this.refuse(file.name, refusal);
    this.under = { name: file.name, share: 0 };
    try {
      return await bring(file, (share) => {
        this.under = { name: file.name, share };
      });
    } catch (problem) {
      return this.refuse(file.name, problem instanceof Problem ? t.media.refused(problem.text) : String(problem));
    }
  }

  private refuse(name: string, why: string): string {
    this.refusals = [...this.refusals, { name, why }];
    return '';
  }
}
