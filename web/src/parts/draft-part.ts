// A part of the editor: shows some fields of the draft, and tells of changes by a new draft.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, css, html, nothing } from 'lit';
import { property } from 'lit/decorators.js';
import type { AnnouncementBody } from '../api/objects';
import { LONGEST, type Errors } from '../model/draft';
import { Following } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

export abstract class DraftPart extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 1.25rem;
      }
      section {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 1.1rem;
        padding: 1.25rem;
      }
      .pair {
        display: grid;
        grid-template-columns: repeat(auto-fit, minmax(min(100%, 11rem), 1fr));
        align-items: start; /* a complaint below one field moves no other */
        gap: 1.1rem;
      }
      .joined {
        display: flex;
        gap: 0.6rem;
        align-items: end;
      }
      .joined > :first-child {
        flex: 1;
        min-width: 0;
      }
      .field {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 0.3rem;
      }
      .field label {
        display: block;
      }
      .wrong {
        color: var(--bad);
        font-size: 0.875rem;
        font-weight: 500;
      }
      sl-input.invalid::part(base),
      sl-textarea.invalid::part(base) {
        border-color: var(--bad);
      }
      sl-input.invalid::part(form-control-help-text) {
        color: var(--bad);
        font-weight: 500;
      }
      sl-input::part(form-control-label),
      sl-textarea::part(form-control-label) {
        font-weight: 500;
        margin-bottom: 0.3rem;
      }
      .hint {
        color: var(--ink-soft);
        font-size: 0.875rem;
      }
      .target {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 0.25rem;
        padding: 0.6rem 0;
        border-top: 1px solid var(--line);
      }
      .target:first-of-type {
        border-top: 0;
        padding-top: 0;
      }
      sl-switch {
        display: block;
        min-height: 2.75rem;
      }
      sl-switch::part(base) {
        min-height: 2.75rem;
        width: 100%;
      }
    `,
  ];

  @property({ attribute: false }) draft!: AnnouncementBody;
  @property({ attribute: false }) errors: Errors = {};

  constructor() {
    super();
    new Following(this);
  }

  protected change(changes: Partial<AnnouncementBody>): void {
    this.dispatchEvent(
      new CustomEvent('draft', { detail: { ...this.draft, ...changes }, bubbles: true, composed: true }),
    );
  }

  protected changeAudio(changes: Partial<AnnouncementBody['audio']>): void {
    this.change({ audio: { ...this.draft.audio, ...changes } });
  }

  protected changeVideo(changes: Partial<AnnouncementBody['video']>): void {
    this.change({ video: { ...this.draft.video, ...changes } });
  }

  /** Seconds for people, milliseconds for the controller. Left empty it is automatic, which is 0. */
  protected seconds(
    place: string,
    label: string,
    automatic: string,
    milliseconds: number,
    onChange: (milliseconds: number) => void,
  ): unknown {
    const error = this.errors[place];
    const taken = (event: Event): void => {
      const text = (event.target as SlInput).value;
      onChange(text === '' ? 0 : Math.round(Number(text) * 1000));
    };
    return html`<sl-input
      data-place=${place}
      class=${error ? 'invalid' : ''}
      type="number"
      inputmode="decimal"
      min="0"
      max=${LONGEST}
      step="any"
      no-spin-buttons
      label=${label}
      help-text=${error ?? ''}
      placeholder=${automatic}
      value=${milliseconds === 0 ? '' : String(milliseconds / 1000)}
      @sl-input=${taken}
      ><span slot="suffix" class="soft">${t.units.secondsName}&nbsp;&nbsp;</span></sl-input
    >`;
  }

  /** What is wrong at a place that has no field of the kit. */
  protected wrong(place: string): unknown {
    const error = this.errors[place];
    return error ? html`<p class="wrong" id="wrong" data-place=${place} tabindex="-1">${error}</p>` : nothing;
  }
}
