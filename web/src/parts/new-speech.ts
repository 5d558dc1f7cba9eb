// A spoken sound: what is said, by which voice, how fast, after which chime.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import type SlRange from '@shoelace-style/shoelace/dist/components/range/range.js';
import type SlTextarea from '@shoelace-style/shoelace/dist/components/textarea/textarea.js';
import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { MediaFile, Recipe } from '../api/objects';
import { Problem, request } from '../api/request';
import { percent } from '../model/format';
import { soundFileName, soundName } from '../model/media';
import { listen } from '../model/sound';
import { Following, Reading, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import './sound-choice';
import { attempt, toast } from './ui-toasts';
import './voice-choice';

const blank: Recipe = { text: '', voice: '', speed: 100, chime: '' };

@customElement('new-speech')
export class NewSpeech extends LitElement {
  static override styles = [
    shared,
    css`
      section {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 1rem;
        padding: 1.25rem;
      }
      .pair {
        display: grid;
        grid-template-columns: repeat(auto-fit, minmax(min(100%, 15rem), 1fr));
        align-items: end;
        gap: 1rem;
      }
      .values {
        display: flex;
        flex-wrap: wrap;
        align-items: center;
        gap: 0.5rem;
      }
      .end {
        display: flex;
        flex-wrap: wrap;
        justify-content: flex-end;
        gap: 0.75rem;
      }
    `,
  ];

  /** The one that is edited; null: a new one. */
  @property({ attribute: false }) file: MediaFile | null = null;
  @state() private recipe: Recipe = blank;
  @state() private name = '';
  @state() private problem = '';
  @state() private isSending = false;

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => void attempt(() => store.loadVoices()));
  }

  override connectedCallback(): void {
    super.connectedCallback();
    this.recipe = { ...blank, ...this.file?.speech };
  }

  private change(changes: Partial<Recipe>): void {
    this.recipe = { ...this.recipe, ...changes };
    this.problem = '';
  }

  override render(): unknown {
    const title = this.file ? t.speech.edit(soundName(this.file)) : t.speech.title;
    const isEmpty = !this.recipe.text.trim() || !(this.file ?? this.name.trim());
    return html`<section class="card" aria-label=${title}>
      <h2>${title}</h2>
      ${
        this.file
          ? nothing
          : html`<sl-input
              label=${t.speech.name}
              maxlength="90"
              .value=${this.name}
              @sl-input=${(event: Event) => {
                this.name = (event.target as SlInput).value;
                this.problem = '';
              }}
            ></sl-input>`
      }
      <sl-textarea
        label=${t.speech.text}
        rows="2"
        resize="auto"
        maxlength="2000"
        .value=${this.recipe.text}
        @sl-input=${(event: Event) => this.change({ text: (event.target as SlTextarea).value })}
      ></sl-textarea>
      ${this.renderValues()} ${this.renderVoice()}
      <sound-choice
        .value=${this.recipe.chime}
        .label=${t.speech.chime}
        .none=${t.speech.noChime}
        @sound=${(event: CustomEvent<string>) => this.change({ chime: event.detail })}
      ></sound-choice>
      <p class="problem" role="alert">${this.problem}</p>
      <div class="end">
        <sl-button @click=${this.close}>${t.cancel}</sl-button>
        <sl-button ?disabled=${isEmpty} ?loading=${this.isSending} @click=${() => void this.keep(true)}
          ><ui-icon slot="prefix" name="play"></ui-icon>${t.speech.listen}</sl-button
        >
        <sl-button
          variant="primary"
          ?disabled=${isEmpty}
          ?loading=${this.isSending}
          @click=${() => void this.keep(false)}
          >${t.save}</sl-button
        >
      </div>
    </section>`;
  }

  private renderValues(): unknown {
    if (store.variables.length === 0) return nothing;
    const add = (name: string): void => this.change({ text: `${this.recipe.text}{${name}}` });
    return html`<div class="values">
      <span class="soft small">${t.speech.values}</span>
      ${store.variables.map(
        ({ name }) => html`<sl-button size="small" @click=${() => add(name)}>${`{${name}}`}</sl-button>`,
      )}
    </div>`;
  }

  private renderVoice(): unknown {
    const { voice, speed } = this.recipe;
    const used = store.voices.find((one) => (voice ? one.name === voice : one.is_default));
    return html`<div class="pair">
      <voice-choice
        .value=${voice}
        @voice=${(event: CustomEvent<string>) => this.change({ voice: event.detail })}
      ></voice-choice>
      ${
        used && !used.has_speeds
          ? nothing
          : html`<sl-range
              label=${t.speech.speed(percent(speed))}
              min="50"
              max="200"
              step="10"
              .value=${speed}
              .tooltipFormatter=${percent}
              @sl-input=${(event: Event) => this.change({ speed: (event.target as SlRange).value })}
            ></sl-range>`
      }
    </div>`;
  }

  private async keep(isHeard: boolean): Promise<void> {
    this.isSending = true;
    try {
      const name = this.file?.name ?? soundFileName(this.name);
      this.file = await request('put', '/api/media/{name}/speech', { path: { name }, body: this.recipe });
      await store.loadMedia();
      if (isHeard) await listen(this.file.name, () => undefined);
      else this.end(this.file.name);
    } catch (problem) {
      this.problem = problem instanceof Problem ? problem.text : String(problem);
    }
    this.isSending = false;
  }

  private end(name: string): void {
    toast({ text: t.record.kept(name), tone: 'good' });
    this.close();
  }

  private close(): void {
    this.dispatchEvent(new CustomEvent('done'));
  }
}
