// Announce now: what, where, and it is heard. Where it was the last time is where it begins.

import type SlTextarea from '@shoelace-style/shoelace/dist/components/textarea/textarea.js';
import { LitElement, html, nothing } from 'lit';
import { customElement, query, state } from 'lit/decorators.js';
import { fetched } from '../api/later';
import { Problem } from '../api/request';
import { excerpt } from '../model/excerpt';
import { unheardIn } from '../model/faults';
import { missingIn, send, type Saying, type Way } from '../model/saying';
import { keepTargets, keptTargets, targetsFrom, toggled, type Targets } from '../model/targets';
import { Following, Reading, store } from '../store/live';
import { sayStyles } from '../styles/say';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { excerptSearch } from './excerpt-search';
import './sound-choice';
import type { Recorded } from './sound-recorder';
import { attempt, toast } from './ui-toasts';
import type { IconName } from './ui-icon';
import './voice-choice';

const ICONS: Record<Way, IconName> = { text: 'chat', record: 'microphone', sound: 'note' };

@customElement('say-box')
export class SayBox extends LitElement {
  static override styles = [shared, sayStyles];

  @state() private way: Way = 'text';
  @state() private text = '';
  @state() private sound = '';
  @state() private recorded: Recorded = null;
  @state() private targets: Targets = { rooms: [], screens: [], voice: '' };
  @state() private words: Record<string, string> = {}; // by label of the places
  @state() private problem = '';
  @state() private isSending = false;
  @query('sl-textarea') private readonly field!: SlTextarea;

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => void attempt(() => store.loadVoices()));
  }

  override connectedCallback(): void {
    super.connectedCallback();
    this.targets = targetsFrom(keptTargets(), [...store.rooms.keys()], [...store.screens.keys()]);
  }

  override render(): unknown {
    return html`<section class="card" aria-labelledby="title" @keydown=${this.key}>
      <div class="top">
        <h2 id="title">${t.say.title}</h2>
        <div class="ways" role="group" aria-label=${t.say.how}>
          ${(['text', 'record', 'sound'] as const).map((way) => this.renderWay(way))}
        </div>
      </div>
      ${this.renderSound()}
      <sl-textarea
        class=${this.way === 'text' ? 'unlabelled' : ''}
        label=${this.way === 'text' ? t.say.text : t.say.message}
        placeholder=${this.way === 'text' ? t.say.placeholder : ''}
        rows="1"
        resize="auto"
        maxlength="2000"
        .value=${this.text}
        @sl-input=${(event: Event) => {
          this.text = (event.target as SlTextarea).value;
          this.problem = '';
        }}
      ></sl-textarea>
      <div class="places">${this.renderRooms()}${this.renderScreens()}</div>
      ${this.renderDoubt()}
      <p class="problem" role="alert">${this.problem}</p>
      <div class="end">
        ${this.renderVoices()}<span class="keys soft small">${t.say.keys}</span>
        <sl-button variant="primary" size="large" ?loading=${this.isSending} @click=${() => void this.send()}
          ><ui-icon slot="prefix" name="megaphone"></ui-icon>${t.say.send}</sl-button
        >
      </div>
    </section>`;
  }

  private renderWay(way: Way): unknown {
    if (way === 'record' && !store.mayEdit) return nothing; // a recording is brought into the media folder
    return html`<button aria-pressed=${this.way === way} @click=${() => this.choose(way)}>
      <ui-icon name=${ICONS[way]}></ui-icon>${t.say.ways[way]}
    </button>`;
  }

  private choose(way: Way): void {
    this.way = way;
    this.problem = '';
    if (way === 'record') void fetched(() => import('./sound-recorder'));
  }

  private renderSound(): unknown {
    if (this.way === 'text') return nothing;
    if (this.way === 'sound')
      return html`<sound-choice
        .value=${this.sound}
        @sound=${(event: CustomEvent<string>) => {
          this.sound = event.detail;
          this.problem = '';
        }}
      ></sound-choice>`;
    return html`<sound-recorder
      @recorded=${(event: CustomEvent<Recorded>) => {
        this.recorded = event.detail;
        this.problem = '';
      }}
    ></sound-recorder>`;
  }

  private renderRooms(): unknown {
    const all = [...store.rooms.values()];
    return this.renderPlaces(t.say.rooms, 'speaker', all, this.targets.rooms, (rooms) => ({ ...this.targets, rooms }));
  }

  private renderScreens(): unknown {
    const all = [...store.screens.values()];
    return this.renderPlaces(t.say.screens, 'display', all, this.targets.screens, (screens) => ({
      ...this.targets,
      screens,
    }));
  }

  private renderPlaces(
    label: string,
    icon: IconName,
    places: { id: number; name: string }[],
    chosen: number[],
    withChosen: (ids: number[]) => Targets,
  ): unknown {
    const take = (ids: number[]): void => {
      this.targets = withChosen(ids);
      this.problem = '';
    };
    const chip = (name: string, isOn: boolean, onClick: () => void): unknown =>
      html`<button class="chip" aria-pressed=${isOn} @click=${onClick}>
        <ui-icon name=${isOn ? 'check' : icon}></ui-icon><span dir="auto">${name}</span>
      </button>`;
    const isAll = chosen.length === places.length;
    if (places.length === 0) return nothing;
    const ids = new Set(chosen);
    const words = this.words[label] ?? '';
    const shown = excerpt(places, words, ({ id }) => !isAll && ids.has(id));
    return html`${excerptSearch({ label, all: places, shown }, words, (now) => {
        this.words = { ...this.words, [label]: now };
      })}
      <div role="group" aria-label=${label}>
        ${places.length > 2 ? chip(t.say.all, isAll, () => take(isAll ? [] : places.map(({ id }) => id))) : nothing}
        ${shown.map(({ id, name }) => chip(name, ids.has(id), () => take(toggled(chosen, id))))}
      </div>`;
  }

  private renderDoubt(): unknown {
    const doubt = unheardIn(this.targets.rooms, store.rooms);
    return html`<p class="doubt" role="status">${doubt && html`<ui-icon name="exclamation"></ui-icon>`}${doubt}</p>`;
  }

  private renderVoices(): unknown {
    if (this.way !== 'text') return nothing;
    return html`<voice-choice
      .value=${this.targets.voice}
      @voice=${(event: CustomEvent<string>) => {
        this.targets = { ...this.targets, voice: event.detail };
      }}
    ></voice-choice>`;
  }

  private key(event: KeyboardEvent): void {
    if (event.key !== 'Enter' || !(event.ctrlKey || event.metaKey)) return;
    event.preventDefault();
    void this.send();
  }

  private async send(): Promise<void> {
    if (this.isSending) return;
    const saying: Saying = { ...this.said(), targets: this.targets };
    this.problem = missingIn(saying);
    if (this.problem) {
      if (this.way === 'text' && !this.text.trim()) this.field.focus();
      return;
    }
    this.isSending = true;
    try {
      const trouble = await send(saying);
      if (trouble) toast({ text: t.say.unheard(trouble), tone: 'bad', stays: 10000 });
      keepTargets(this.targets);
      this.begin();
    } catch (problem) {
      this.problem = problem instanceof Problem ? problem.text : String(problem);
    }
    this.isSending = false;
  }

  private said(): Omit<Saying, 'targets'> {
    const { way, text, sound, recorded } = this;
    return { way, text, sound, recorded };
  }

  /** What was sent goes, ready for the next; where it went stays. */
  private begin(): void {
    this.text = '';
    if (this.way === 'record') this.way = 'text';
    this.recorded = null;
  }
}
