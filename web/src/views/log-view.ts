// What happens, as it happens; and how the controller is.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
import { moment, timeOfDay } from '../model/format';
import type { LogLine } from '../store/LiveLog';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t, textFor } from '../texts/page';

@customElement('log-view')
export class LogView extends LitElement {
  static override styles = [
    shared,
    css`
      .head select {
        width: auto;
        min-width: 11rem;
      }
      @media (max-width: 699px) {
        .head h1 {
          flex-basis: 100%;
        }
        .head select {
          flex: 1;
        }
      }
      .log {
        max-height: 62vh;
        overflow-y: auto;
        padding: 0.5rem 0;
      }
      li {
        display: grid;
        grid-template-columns: 7rem 1fr;
        gap: 0.75rem;
        padding: 0.4rem 1.1rem;
      }
      time {
        color: var(--ink-soft);
        font-variant-numeric: tabular-nums;
      }
      li span {
        overflow-wrap: anywhere;
      }
      .good span {
        color: var(--good);
      }
      .warning span {
        color: var(--warning);
        font-weight: 500;
      }
      .error span {
        color: var(--bad);
        font-weight: 600;
      }
      .facts {
        display: grid;
        grid-template-columns: minmax(8rem, auto) 1fr;
        gap: 0.5rem 1.5rem;
        padding: 1.1rem;
      }
      dt {
        color: var(--ink-soft);
      }
      dd {
        overflow-wrap: anywhere;
      }
    `,
  ];

  @state() private topic = '';
  @state() private held: LogLine[] | null = null; // what is shown while paused

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    const lines = (this.held ?? store.log.lines)
      .filter((line) => !this.topic || line.topic === this.topic)
      .slice()
      .reverse();
    return html`<div class="head">
        <h1>${t.logView.title}</h1>
        <select
          aria-label=${t.logView.topic}
          @change=${(event: Event) => {
            this.topic = (event.target as HTMLSelectElement).value;
          }}
        >
          ${Object.entries(t.logView.topics).map(
            ([key, text]) => html`<option value=${key === 'all' ? '' : key}>${text}</option>`,
          )}
        </select>
        <sl-button
          @click=${() => {
            this.held = this.held ? null : store.log.lines;
          }}
          >${this.held ? t.logView.resume : t.logView.pause}</sl-button
        >
        <sl-button @click=${this.clear}>${t.logView.clear}</sl-button>
      </div>
      ${
        lines.length === 0
          ? html`<section class="card empty">
              <ui-icon name="journal"></ui-icon>
              <p>${t.logView.none}</p>
            </section>`
          : html`<div class="card log" tabindex="0" role="log" aria-label=${t.logView.lines}>
              <ol>
                ${repeat(lines, (line) => line.number, renderLine)}
              </ol>
            </div>`
      }
      ${this.renderFacts()}`;
  }

  private renderFacts(): unknown {
    const { status } = store;
    if (!status) return nothing;
    const f = t.logView.facts;
    const facts = [
      [f.house, status.house],
      [f.version, status.version],
      [f.since, moment(status.started)],
      [f.agent, status.agent ? t.logView.running : t.logView.notRunning],
      [f.disk, status.state_saved ? t.logView.saved : t.logView.notSaved(status.state_error ?? '')],
      [f.rights, store.mayEdit ? t.logView.admin : t.logView.play],
    ];
    return html`<section class="group">
      <h2>${t.logView.controller}</h2>
      <dl class="card facts">
        ${facts.map(
          ([name, value]) =>
            html`<dt>${name}</dt>
              <dd dir="auto">${value}</dd>`,
        )}
      </dl>
    </section>`;
  }

  private clear(): void {
    store.log.clear();
    if (this.held) this.held = [];
    this.requestUpdate();
  }
}

function renderLine(line: LogLine): unknown {
  return html`<li class=${line.tone}>
    <time>${timeOfDay(line.time)}</time><span dir="auto">${textFor(t.logView.tones, line.tone) ?? ''}${line.text}</span>
  </li>`;
}
