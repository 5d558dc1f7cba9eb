// Makes and changes an announcement; beside it, what it will look like and what it will do.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, html, nothing, type PropertyValues } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { exchange, Problem, request } from '../api/request';
import type { AnnouncementBody } from '../api/objects';
import { blank, bodyOf, copyOf, errorOf, errorsIn, isSame, type Errors } from '../model/draft';
import { newAddress } from '../model/route';
import { askAboutConflict } from '../parts/conflict';
import '../parts/announcement-outlook';
import '../parts/draft-message';
import '../parts/draft-places';
import '../parts/draft-sound';
import '../parts/popup-preview';
import { attempt, toast } from '../parts/ui-toasts';
import { deleteWithUndo } from '../parts/deleting';
import { Following, Reading, store } from '../store/live';
import { editorStyles } from '../styles/editor';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

const PATH = '/api/announcements/{id}';
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
  private saved: AnnouncementBody = blank();
  private tag = ''; // of what was read, so that nobody else's change is overwritten unseen

  constructor() {
    super();
    new Following(this);
    new Reading(this, () => this.connected());
  }

  /** What could not be read or saved for want of a connection is not held against anybody any more. */
  private connected(): void {
    void attempt(() => store.loadMedia());
    if (this.problem?.status === 0) this.problem = null;
    if (this.hasUpdated && this.announcement !== null && !this.draft && !this.isGone) void this.read(this.announcement);
  }

  get isDirty(): boolean {
    return this.draft !== null && !isSame(this.draft, this.saved);
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
    this.tag = '';
    if (this.announcement === null) {
      const original = this.copyOf === null ? undefined : store.announcements.get(this.copyOf);
      this.draft = original ? copyOf(original) : blank();
      this.saved = original ? blank() : this.draft;
      return;
    }
    this.draft = null;
    if (store.link.isConnected) await this.read(this.announcement);
  }

  private async read(id: number): Promise<void> {
    try {
      const { value, etag } = await exchange('get', PATH, { path: { id } });
      this.saved = bodyOf(value);
      this.draft = this.saved;
      this.tag = etag;
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
    const name = (event: Event): void => this.change({ ...draft, name: (event.target as SlInput).value });
    return html`<form
      novalidate
      @submit=${(event: Event) => event.preventDefault()}
      @draft=${(event: CustomEvent<AnnouncementBody>) => this.change(event.detail)}
    >
      <div class="fields">
        <section class="card name">
          <sl-input
            data-place="name"
            class=${this.errors.name ? 'invalid' : ''}
            label=${t.editor.fields.name}
            .value=${draft.name}
            maxlength="200"
            autocomplete="off"
            placeholder=${t.editor.placeholders.name}
            help-text=${this.errors.name ?? t.editor.help.name}
            @sl-input=${name}
          ></sl-input>
        </section>
        <draft-sound .draft=${draft} .errors=${this.errors}></draft-sound>
        <draft-message .draft=${draft} .errors=${this.errors}></draft-message>
        <draft-places .draft=${draft} .errors=${this.errors}></draft-places>
      </div>
      <aside aria-label=${t.preview.title}>
        <section class="card">
          <h2>${t.preview.title}</h2>
          <popup-preview .announcement=${draft}></popup-preview>
        </section>
        <section class="card"><announcement-outlook .announcement=${draft}></announcement-outlook></section>
      </aside>
      <footer>
        <p class="problem" role="alert">${this.problem?.text}</p>
        <sl-button href=${LIST}>${t.cancel}</sl-button>
        <sl-button variant="primary" ?loading=${this.isSaving} @click=${this.submit}>${t.save}</sl-button>
      </footer>
    </form>`;
  }

  private change(draft: AnnouncementBody): void {
    this.draft = draft;
    // What is wrong goes away as it is mended; what is not finished yet is not blamed.
    const now = errorsIn(draft);
    this.errors = Object.fromEntries(Object.entries(this.errors).filter(([place]) => now[place]));
  }

  /** By the button alone: whoever presses Enter in a field has most often not written the rest yet. */
  private readonly submit = (): void => {
    if (!this.draft || this.isSaving) return;
    this.problem = null;
    this.errors = errorsIn(this.draft);
    if (Object.keys(this.errors).length > 0) void this.showFirstError();
    else void this.save(this.draft, this.tag);
  };

  private async save(draft: AnnouncementBody, tag: string): Promise<void> {
    this.isSaving = true;
    try {
      const id = this.announcement;
      if (id === null) await request('post', '/api/announcements', { body: draft });
      else await request('put', PATH, { path: { id }, body: draft, ifMatch: tag });
      this.saved = draft;
      toast({ text: t.editor.saved(draft.name), tone: 'good' });
      location.hash = LIST;
    } catch (problem) {
      await this.refused(asProblem(problem));
    }
    this.isSaving = false;
  }

  private async refused(problem: Problem): Promise<void> {
    if (problem.status === 412) {
      await this.resolveConflict();
      return;
    }
    const error = errorOf(problem.text);
    if (error) {
      this.errors = { ...this.errors, [error.place]: error.text };
      await this.showFirstError();
    } else {
      this.problem = problem;
    }
  }

  /** Somebody else has saved it meanwhile: this one looks, and decides. */
  private async resolveConflict(): Promise<void> {
    const mine = this.draft;
    const id = this.announcement;
    if (!mine || id === null) return;
    let theirs;
    try {
      theirs = await exchange('get', PATH, { path: { id } });
    } catch (problem) {
      this.problem = asProblem(problem);
      return;
    }
    const { value, etag } = theirs;
    const answer = await askAboutConflict(mine, bodyOf(value));
    if (answer === 'overwrite') await this.save(mine, etag);
    if (answer !== 'reload') return;
    this.saved = bodyOf(value);
    this.draft = this.saved;
    this.tag = etag;
    this.errors = {};
  }

  private async showFirstError(): Promise<void> {
    await this.updateComplete;
    for (const part of [
      this,
      ...this.renderRoot.querySelectorAll<LitElement>('draft-sound, draft-message, draft-places'),
    ]) {
      await part.updateComplete;
      const places = [...(part.renderRoot as ParentNode).querySelectorAll<HTMLElement>('[data-place]')];
      const first = places.find((one) => this.errors[one.dataset.place ?? '']);
      if (!first) continue;
      first.focus();
      first.scrollIntoView({ block: 'center' });
      return;
    }
  }

  private erase(): void {
    const announcement = store.announcements.get(this.announcement ?? 0);
    if (!announcement) return;
    if (this.draft) this.saved = this.draft; // there is nothing left to lose
    location.hash = LIST;
    deleteWithUndo(announcement);
  }
}

const asProblem = (problem: unknown): Problem =>
  problem instanceof Problem ? problem : new Problem(500, String(problem));
