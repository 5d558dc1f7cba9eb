// The picture of a rehearsal. Drawn as SVG, whose places are attributes: no inline style is needed.

import { LitElement, css, html, nothing, svg } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import type { Moment, Rehearsal } from '../api/objects';
import { seconds } from '../model/format';
import { marksOf, pictureOf, type Bar, type BarKind, type Picture, type Row } from '../model/timeline';
import { sentenceOf } from '../model/sentences';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

const KINDS: BarKind[] = ['setup', 'delay', 'sound', 'popup', 'restore'];
// Of a hundred: what is there is seen, and a narrow bar has no room for words.
const NARROWEST = 0.6;
const LEGIBLE = 7;

@customElement('announcement-timeline')
export class AnnouncementTimeline extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: block;
      }
      .row {
        display: grid;
        grid-template-columns: minmax(5rem, 9.5rem) 1fr;
        align-items: center;
        gap: 0.75rem;
        margin-bottom: 0.4rem;
      }
      .name {
        display: flex;
        align-items: center;
        gap: 0.45rem;
        font-size: 0.875rem;
        min-width: 0;
      }
      .name span {
        overflow: hidden;
        text-overflow: ellipsis;
        white-space: nowrap;
      }
      .name ui-icon {
        color: var(--ink-soft);
        flex: none;
      }
      svg {
        display: block;
        width: 100%;
        overflow: visible;
      }
      .lane {
        height: 30px;
        border-radius: 8px;
        background: var(--sunk);
        overflow: hidden;
      }
      .lane svg {
        overflow: hidden;
      }
      .axis {
        height: 20px;
      }
      text {
        fill: var(--on-bar);
        font: 500 12px var(--sl-font-sans);
      }
      .axis text {
        fill: var(--ink-soft);
        font-weight: 400;
      }
      .axis line {
        stroke: var(--line);
      }
      .setup {
        fill: var(--bar-setup);
        background: var(--bar-setup);
      }
      .delay {
        fill: var(--bar-delay);
        background: var(--bar-delay);
      }
      .sound {
        fill: var(--bar-sound);
        background: var(--bar-sound);
      }
      .popup {
        fill: var(--bar-popup);
        background: var(--bar-popup);
      }
      .restore {
        fill: var(--bar-restore);
        background: var(--bar-restore);
      }
      .missing {
        margin-bottom: 0.8rem;
      }
      .missing li {
        display: flex;
        align-items: start;
        gap: 0.6rem;
        margin-bottom: 0.4rem;
        padding: 0.5rem 0.75rem;
        border-radius: 10px;
        background: var(--warning-soft);
        color: var(--warning);
        font-size: 0.9rem;
        overflow-wrap: anywhere;
      }
      .missing ui-icon {
        flex: none;
        margin-top: 0.2rem;
      }
      .missing span {
        min-width: 0;
      }
      .legend {
        display: flex;
        flex-wrap: wrap;
        gap: 0.25rem 1rem;
        margin-top: 0.5rem;
        font-size: 0.8rem;
        color: var(--ink-soft);
      }
      .legend li {
        display: inline-flex;
        align-items: center;
        gap: 0.4rem;
      }
      .legend i {
        width: 0.8rem;
        height: 0.8rem;
        border-radius: 4px;
      }
      details {
        margin-top: 0.75rem;
        font-size: 0.9rem;
      }
      summary {
        min-height: 2.75rem;
        display: inline-flex;
        align-items: center;
        cursor: pointer;
        color: var(--accent);
        font-weight: 500;
      }
      summary::before {
        content: '▸';
        margin-right: 0.5rem;
      }
      details[open] summary::before {
        content: '▾';
      }
      .steps li {
        display: grid;
        grid-template-columns: 4.5rem 1fr;
        padding: 0.2rem 0;
      }
      .steps span {
        overflow-wrap: anywhere;
      }
      time {
        color: var(--ink-soft);
        font-variant-numeric: tabular-nums;
      }
      @media (max-width: 500px) {
        .row {
          grid-template-columns: 1fr;
          gap: 0.15rem;
        }
        .row.marks {
          margin-top: 0.2rem;
        }
        .row.marks > span {
          display: none;
        }
      }
    `,
  ];

  @property({ attribute: false }) rehearsal: Rehearsal | null = null;

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    if (!this.rehearsal) return nothing;
    const picture = pictureOf(this.rehearsal, (id) => store.screens.get(id)?.room ?? 0);
    const missing = this.rehearsal.timeline.filter(({ what }) => what.endsWith('_missing'));
    const warnings = html`<ul class="missing" role="list">
      ${missing.map(
        (one) => html`<li><ui-icon name="exclamation"></ui-icon><span dir="auto">${sentenceOf(one, store)}</span></li>`,
      )}
    </ul>`;
    if (picture.rows.length === 0) return missing.length ? warnings : html`<p class="soft">${t.timeline.nothing}</p>`;
    const length = this.rehearsal.complete ? t.timeline.takes(seconds(this.rehearsal.length_ms)) : t.timeline.endless;
    return html`${missing.length ? warnings : nothing}
      <div role="img" aria-label=${t.timeline.label(length)}>
        ${picture.rows.map((row) => this.renderRow(row, picture))}${this.renderAxis(picture)}
      </div>
      <ul class="legend">
        ${this.kindsIn(picture).map((kind) => html`<li><i class=${kind}></i>${t.timeline.kinds[kind]}</li>`)}
      </ul>
      <details>
        <summary>${t.timeline.steps}, ${length}</summary>
        <ol class="steps">
          ${this.rehearsal.timeline.map(this.renderStep)}
        </ol>
      </details>`;
  }

  private kindsIn(picture: Picture): BarKind[] {
    return KINDS.filter((kind) => picture.rows.some((row) => row.bars.some((bar) => bar.kind === kind)));
  }

  private renderRow(row: Row, { length }: Picture): unknown {
    const name = row.kind === 'room' ? store.roomName(row.id) : store.screenName(row.id);
    return html`<div class="row">
      <span class="name"
        ><ui-icon name=${row.kind === 'room' ? 'speaker' : 'display'}></ui-icon><span dir="auto">${name}</span></span
      >
      <svg class="lane">${row.bars.map((bar) => this.renderBar(bar, row, length))}</svg>
    </div>`;
  }

  private renderBar(bar: Bar, row: Row, length: number): unknown {
    const width = Math.max(NARROWEST, (100 * (bar.end - bar.start)) / length);
    const at = Math.min((100 * bar.start) / length, 100 - width);
    const text = bar.kind === 'sound' && row.volume !== null ? t.timeline.soundAt(bar.text, row.volume) : bar.text;
    return svg`<svg data-kind=${bar.kind} x="${at}%" width="${width}%" height="30"><title>${t.timeline.bar(
      t.timeline.kinds[bar.kind],
      seconds(bar.start),
      seconds(bar.end),
    )}</title>
      <rect class=${bar.kind} width="100%" height="30"></rect>${
        width < LEGIBLE ? nothing : svg`<text x="8" y="19.5">${text}</text>`
      }</svg>`;
  }

  private renderAxis({ length }: Picture): unknown {
    return html`<div class="row marks">
      <span></span
      ><svg class="axis">
        ${marksOf(length).map(
          (at) => svg`
      <line x1="${(100 * at) / length}%" x2="${(100 * at) / length}%" y1="0" y2="5"></line>
      <text x="${(100 * at) / length}%" y="18" text-anchor=${anchorOf(at, length)}>${seconds(at)}</text>`,
        )}
      </svg>
    </div>`;
  }

  private readonly renderStep = (one: Moment): unknown =>
    html`<li><time>${seconds(one.at_ms)}</time><span dir="auto">${sentenceOf(one, store)}</span></li>`;
}

function anchorOf(at: number, length: number): string {
  if (at === 0) return 'start';
  return at > 0.94 * length ? 'end' : 'middle';
}
