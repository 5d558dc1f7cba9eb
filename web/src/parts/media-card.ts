// A sound or an image: what it is, who uses it, and the way to be rid of it.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { Problem, request, type MediaUser } from '../api/request';
import type { Loudness, MediaFile } from '../api/objects';
import { bytes, listing, loudnessText, seconds } from '../model/format';
import { editAddress } from '../model/route';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import type SlSwitch from '@shoelace-style/shoelace/dist/components/switch/switch.js';
import { ask } from './ask';
import './listen-button';
import './media-image';
import { named } from './named';
import './sound-wave';
import { attempt, toast } from './ui-toasts';

@customElement('media-card')
export class MediaCard extends LitElement {
  static override styles = [
    shared,
    css`
      article {
        display: grid;
        gap: 0.7rem;
        padding: 1.1rem 1.25rem;
        height: 100%;
        grid-template-rows: auto auto 1fr auto;
      }
      h3,
      .says,
      .users {
        overflow-wrap: anywhere;
      }
      media-image {
        height: 9rem;
        border-radius: 12px;
        background: var(--sunk);
        overflow: hidden;
      }
      .edit {
        margin-left: auto;
      }
      .says,
      .loudness {
        margin-top: 0.35rem;
      }
      .users {
        align-self: start;
      }
      .end {
        align-self: end;
        display: flex;
        align-items: center;
        justify-content: space-between;
        gap: 0.6rem;
      }
    `,
  ];

  @property({ attribute: false }) file!: MediaFile;

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    const { name, kind, modified, speech, loudness } = this.file;
    const users = store.usersOf(this.file).map((one) => one.name);
    return html`<article class="card">
      ${
        kind === 'sound'
          ? html`<sound-wave .file=${this.file}></sound-wave>`
          : html`<media-image small name=${name} version=${modified}></media-image>`
      }
      <div>
        <h3>${name}</h3>
        <p class="soft small">${this.facts()}</p>
        ${speech ? html`<p class="says" dir="auto">${t.speech.says(speech.text)}</p>` : nothing}
        ${loudness ? this.renderLoudness(loudness) : nothing}
        ${this.file.trouble ? html`<p class="problem">${t.media.trouble(this.file.trouble)}</p>` : nothing}
      </div>
      <p class="users small" dir="auto">${users.length ? t.media.usedBy(listing(users)) : t.media.unused}</p>
      <div class="end">
        ${kind === 'sound' ? html`<listen-button file=${name}></listen-button>` : html`<span></span>`}
        ${speech ? this.renderEdit() : nothing}
        <button class="icon-button" aria-label=${t.media.remove(name)} title=${t.delete} @click=${this.erase}>
          <ui-icon name="trash"></ui-icon>
        </button>
      </div>
    </article>`;
  }

  private renderLoudness(loudness: Loudness): unknown {
    const label = t.media.asItIsLabel(this.file.name);
    return html`<p class="small loudness">${loudnessText(loudness)}</p>
      <sl-switch size="small" .checked=${loudness.as_it_is} @sl-change=${this.setLoudness}
        >${named(t.media.asItIs, label)}</sl-switch
      >`;
  }

  private setLoudness(event: Event): void {
    const { name } = this.file;
    const body = { as_it_is: (event.target as SlSwitch).checked };
    void attempt(async () => {
      await request('put', '/api/media/{name}/loudness', { path: { name }, body });
    }).finally(() => void attempt(() => store.loadMedia()));
  }

  private renderEdit(): unknown {
    const label = t.speech.editLabel(this.file.name);
    const tell = (): unknown => this.dispatchEvent(new CustomEvent('speech'));
    return html`<button class="icon-button edit" aria-label=${label} title=${label} @click=${tell}>
      <ui-icon name="pencil"></ui-icon>
    </button>`;
  }

  private facts(): string {
    const { duration_ms: length, width, height } = this.file;
    const extent = length !== undefined ? seconds(length) : width && height ? `${width} × ${height}` : '';
    return [extent, bytes(this.file.bytes)].filter((fact) => fact !== '').join(' · ');
  }

  private async erase(): Promise<void> {
    const users = store.usersOf(this.file);
    if (users.length > 0) {
      await this.tellUsers(users);
      return;
    }
    const { name } = this.file;
    const answer = await ask(t.media.removeTitle(name), html`<p>${t.media.removeText}</p>`, [
      { key: 'delete', text: t.delete, variant: 'danger' },
    ]);
    if (answer !== 'delete') return;
    try {
      await request('delete', '/api/media/{name}', { path: { name } });
      toast({ text: t.media.removed(name) });
    } catch (problem) {
      // Somebody else has begun to use it meanwhile.
      if (problem instanceof Problem && problem.users.length > 0) await this.tellUsers(problem.users);
      else toast({ text: problem instanceof Problem ? problem.text : String(problem), tone: 'bad' });
    }
    await attempt(() => store.loadMedia());
  }

  private async tellUsers(users: MediaUser[]): Promise<void> {
    await ask(
      t.media.inUseTitle(this.file.name),
      html`<p>${t.media.inUseText}</p>
        <ul>
          ${users.map(
            ({ id, name }) =>
              html`<li>
                <a href=${editAddress(id)} dir="auto" @click=${(event: Event) => this.close(event)}>${name}</a>
              </li>`,
          )}
        </ul>`,
      [],
    );
  }

  private close(event: Event): void {
    void (event.target as Element).closest('sl-dialog')?.hide();
  }
}
