// Makes and changes an announcement; beside it, what it will look like and what it will do.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, html, nothing, type PropertyValues } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { Problem, request } from '../api/request';
import type { AnnouncementBody } from '../api/objects';
import { copyOf, errorOf, errorsIn, isSame, type Errors } from '../model/draft';
import { lackOf } from '../model/faults';
import { tagsIn } from '../model/order';
import { onlyIn } from '../model/places';
import { newAddress } from '../model/route';
import { Stored } from '../parts/Stored';
import '../parts/announcement-outlook';
import '../parts/draft-message';
import '../parts/draft-places';
import '../parts/draft-sound';
import '../parts/draft-timing';
import '../parts/popup-preview';
import { attempt, toast } from '../parts/ui-toasts';
import { deleteWithUndo } from '../parts/deleting';
import { Following, Reading, store } from '../store/live';
import { editorStyles } from '../styles/editor';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

const LIST = '#/announcements';

@customElement('announcement-editor')
export class AnnouncementEditor extends LitElement {
  static override styles = [shared, editorStyles];

  @property({ attribute: false }) announcement: number | null = null; // its id; null for a new one
  @property({ attribute: false }) copyOf: number | null = null;
  @state() private draft: AnnouncementBody | null = null;
  @state() private errors: Errors = {};
  @state() private problem: Problem | null = null;
  @state() private isSaving = false;
  @state() private isGone = false;
  private stored = new Stored(null);

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => this.connected());
  }

  /** What could not be read or saved for want of a connection is not held against anybody any more. */
  private connected(): void {
    void attempt(() => store.loadMedia());
    if (this.problem?.status === 0) this.problem = null;
    if (this.hasUpdated && this.announcement !== null && !this.draft && !this.isGone) void this.read();
  }

  get isDirty(): boolean {
    return this.draft !== null && !isSame(this.draft, this.stored.body);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    window.addEventListener('beforeunload', this.beforeUnload);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    window.removeEventListener('beforeunload', this.beforeUnload);
  }

  private readonly beforeUnload = (event: Event): void => {
    if (this.isDirty) event.preventDefault();
  };

  override willUpdate(changed: PropertyValues): void {
    if (changed.has('announcement') || changed.has('copyOf')) void this.begin();
  }

  private async begin(): Promise<void> {
    this.errors = {};
    this.problem = null;
    this.isGone = false;
    this.stored = new Stored(this.announcement);
    if (this.announcement === null) {
      const original = this.copyOf === null ? undefined : store.announcements.get(this.copyOf);
      this.draft = original ? copyOf(original) : this.stored.body;
      return;
    }
    this.draft = null;
    if (store.link.isConnected) await this.read();
  }

  private async read(): Promise<void> {
    try {
      this.draft = await this.stored.read();
      this.problem = null;
    } catch (problem) {
      if (problem instanceof Problem && problem.status === 404) this.isGone = true;
      else this.problem = asProblem(problem);
    }
  }

  override render(): unknown {
    const isNew = this.announcement === null;
    return html`<div class="head">
        <a class="icon-button" href=${LIST} aria-label=${t.editor.back} title=${t.editor.back}
          ><ui-icon name="back"></ui-icon
        ></a>
        <h1>${isNew ? t.editor.newTitle : t.editor.title}</h1>
        ${
          isNew || !this.draft
            ? nothing
            : html`<sl-button href=${newAddress(this.announcement ?? 0)}
                  ><ui-icon slot="prefix" name="copy"></ui-icon>${t.list.duplicateShort}</sl-button
                >
                <sl-button @click=${this.erase}><ui-icon slot="prefix" name="trash"></ui-icon>${t.delete}</sl-button>`
        }
      </div>
      ${
        this.isGone
          ? html`<section class="card empty">
              <ui-icon name="bell"></ui-icon>
              <h2>${t.editor.gone}</h2>
              <sl-button href=${LIST}>${t.editor.back}</sl-button>
            </section>`
          : nothing
      }
      ${this.draft ? this.renderForm(this.draft) : html`<p class="problem" role="alert">${this.problem?.text}</p>`}
      ${this.draft || store.link.isConnected ? nothing : html`<p class="soft">${t.link.awaited}</p>`}`;
  }

  private renderForm(draft: AnnouncementBody): unknown {
    return html`<form
      novalidate
      @submit=${(event: Event) => event.preventDefault()}
      @draft=${(event: CustomEvent<AnnouncementBody>) => this.change(event.detail)}
      @try-room=${this.tryIn}
    >
      <div class="fields">
        ${this.renderName(draft)}
        <draft-message .draft=${draft} .errors=${this.errors}></draft-message>
        <draft-sound .draft=${draft} .errors=${this.errors}></draft-sound>
        <draft-places .draft=${draft} .errors=${this.errors}></draft-places>
        <draft-timing .draft=${draft} .errors=${this.errors}></draft-timing>
      </div>
      <aside aria-label=${t.preview.title}>
        <section class="card">
          <h2>${t.preview.title}</h2>
          <popup-preview .announcement=${draft}></popup-preview>
        </section>
        <section class="card"><announcement-outlook .announcement=${draft}></announcement-outlook></section>
      </aside>
      ${this.renderFooter(draft)}
    </form>`;
  }

  private renderName(draft: AnnouncementBody): unknown {
    const name = (event: Event): void => this.change({ ...draft, name: (event.target as SlInput).value });
    const tags = (event: Event): void => this.change({ ...draft, tags: tagsIn((event.target as SlInput).value) });
    const e = t.editor;
    return html`<section class="card name">
      <sl-input
        data-place="name"
        class=${this.errors.name ? 'invalid' : ''}
        label=${e.fields.name}
        .value=${draft.name}
        maxlength="200"
        autocomplete="off"
        placeholder=${e.placeholders.name}
        help-text=${this.errors.name ?? e.help.name}
        @sl-input=${name}
      ></sl-input>
      <sl-input
        data-place="tags"
        class=${this.errors.tags ? 'invalid' : ''}
        label=${e.fields.tags}
        value=${(draft.tags ?? []).join(', ')}
        autocomplete="off"
        placeholder=${e.placeholders.tags}
        help-text=${this.errors.tags ?? e.help.tags}
        @sl-change=${tags}
      ></sl-input>
    </section>`;
  }

  private renderFooter(draft: AnnouncementBody): unknown {
    const lack = lackOf(draft);
    return html`<footer>
      <p class="problem" role="alert">${this.problem?.text}</p>
      <p class="lack soft small" role="status">
        ${lack ? html`<ui-icon name="exclamation"></ui-icon><span>${lack}</span>` : nothing}
      </p>
      <sl-button class="cancel" href=${LIST}>${t.cancel}</sl-button>
      <sl-button ?loading=${this.isSaving} @click=${this.submitAndPlay}
        ><ui-icon slot="prefix" name="play"></ui-icon>${t.editor.saveAndPlay}</sl-button
      >
      <sl-button variant="primary" ?loading=${this.isSaving} @click=${this.submit}>${t.save}</sl-button>
    </footer>`;
  }

  private change(draft: AnnouncementBody): void {
    this.draft = draft;
    // What is wrong goes away as it is mended; what is not finished yet is not blamed.
    const now = errorsIn(draft);
    this.errors = Object.fromEntries(Object.entries(this.errors).filter(([place]) => now[place]));
  }

  /** By the buttons alone: whoever presses Enter in a field has most often not written the rest yet. */
  private readonly submit = async (): Promise<void> => {
    if (await this.save()) location.hash = LIST;
  };

  private readonly submitAndPlay = async (): Promise<void> => {
    if (!(await this.save())) return;
    const id = this.stored.id ?? 0;
    void attempt(() => request('post', '/api/announcements/{id}/play', { path: { id } }));
    location.hash = LIST;
  };

  /** Gives whether it is saved; what is wrong, and what others have made of it, is dealt with here. */
  async save(): Promise<boolean> {
    if (!this.draft || this.isSaving || !(await this.isRight())) return false;
    this.isSaving = true;
    try {
      const { isStored, draft } = await this.stored.store(this.draft);
      this.draft = draft;
      this.errors = {};
      return isStored;
    } catch (problem) {
      await this.refused(asProblem(problem));
      return false;
    } finally {
      this.isSaving = false;
    }
  }

  private async isRight(): Promise<boolean> {
    this.problem = null;
    this.errors = this.draft ? errorsIn(this.draft) : {};
    if (Object.keys(this.errors).length === 0) return true;
    await this.showFirstError();
    return false;
  }

  private async refused(problem: Problem): Promise<void> {
    const error = errorOf(problem.text);
    if (error) {
      this.errors = { ...this.errors, [error.place]: error.text };
      await this.showFirstError();
    } else {
      this.problem = problem;
    }
  }

  /** Plays what stands here, in one room, and stores nothing. */
  private readonly tryIn = async (event: CustomEvent<number>): Promise<void> => {
    const { draft } = this;
    if (!draft) return;
    const body = onlyIn({ ...draft, name: draft.name.trim() || t.editor.newTitle }, event.detail);
    const lack = lackOf(body);
    if (lack) toast({ text: lack, tone: 'bad' });
    else await attempt(() => request('post', '/api/try', { body }));
  };

  private async showFirstError(): Promise<void> {
    await this.updateComplete;
    for (const part of [
      this,
      ...this.renderRoot.querySelectorAll<LitElement>('draft-sound, draft-message, draft-places, draft-timing'),
    ]) {
      await part.updateComplete;
      const places = [...(part.renderRoot as ParentNode).querySelectorAll<HTMLElement>('[data-place]')];
      const first = places.find((one) => this.errors[one.dataset.place ?? '']);
      if (!first) continue;
      const folded = first.closest('details');
      if (folded) folded.open = true;
      first.focus();
      first.scrollIntoView({ block: 'center' });
      return;
    }
  }

  private erase(): void {
    const announcement = store.announcements.get(this.announcement ?? 0);
    if (!announcement) return;
    if (this.draft) this.stored.body = this.draft; // there is nothing left to lose
    location.hash = LIST;
    deleteWithUndo(announcement);
  }
}

const asProblem = (problem: unknown): Problem =>
  problem instanceof Problem ? problem : new Problem(500, String(problem));
