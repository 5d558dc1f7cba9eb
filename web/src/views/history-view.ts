// What was played, when, where, and how it ended.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
import { request } from '../api/request';
import type { HistoryEntry } from '../api/objects';
import { listing, moment, seconds } from '../model/format';
import {
  asCsv,
  asJson,
  download,
  filtered,
  isThere,
  outcomeOf,
  outcomeText,
  placesOf,
  reasonOf,
  type Filter,
} from '../model/history';
import { attempt } from '../parts/ui-toasts';
import { Following, store } from '../store/live';
import { historyStyles } from '../styles/history';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { named } from '../parts/named';

const PAGE = 200;

@customElement('history-view')
export class HistoryView extends LitElement {
  static override styles = [shared, historyStyles];

  @state() private entries: HistoryEntry[] | null = null;
  @state() private hasMore = false;
  @state() private filter: Filter = { words: '', outcome: '', place: '' };
  private seen = -1; // endings that the list has
  private isLoading = false;

  constructor() {
    super();
    new Following(this, () => void this.follow());
  }

  override connectedCallback(): void {
    super.connectedCallback();
    void this.follow();
  }

  private async follow(): Promise<void> {
    if (this.seen === store.endings || this.isLoading || !store.link.isConnected) return;
    this.isLoading = true;
    this.seen = store.endings;
    await attempt(async () => {
      const newest = await this.read();
      const known = new Set(newest.map((one) => one.id));
      this.hasMore = this.entries === null ? newest.length === PAGE : this.hasMore;
      this.entries = [...newest, ...(this.entries ?? []).filter((one) => !known.has(one.id))];
    });
    this.isLoading = false;
    await this.follow();
  }

  /** The newest, or those before the entry with this id. */
  private async read(before?: number): Promise<HistoryEntry[]> {
    const limit = String(PAGE);
    const query = before === undefined ? { limit } : { limit, before: String(before) };
    return (await request('get', '/api/history', { query })).history;
  }

  private async more(): Promise<void> {
    const entries = this.entries ?? [];
    await attempt(async () => {
      const older = await this.read(entries[entries.length - 1]?.id);
      this.entries = [...entries, ...older];
      this.hasMore = older.length === PAGE;
    });
  }

  override render(): unknown {
    const all = this.entries ?? [];
    const shown = filtered(all, this.filter, store);
    return html`<div class="head">
        <h1>${t.history.title}</h1>
        ${all.length ? this.renderExport(shown) : nothing}
      </div>
      ${this.entries || store.link.isConnected ? nothing : html`<p class="soft">${t.link.awaited}</p>`}
      ${all.length ? this.renderFilter() : nothing}
      ${
        this.entries && all.length === 0
          ? html`<section class="card empty">
              <ui-icon name="clock"></ui-icon>
              <h2>${t.history.none}</h2>
              <p>${t.history.noneText}</p>
            </section>`
          : nothing
      }
      ${all.length && shown.length === 0 ? html`<p class="card empty">${t.history.notFound}</p>` : nothing}
      ${shown.length ? this.renderTable(shown) : nothing}
      ${
        this.hasMore
          ? html`<div class="more"><sl-button @click=${this.more}>${t.history.more}</sl-button></div>`
          : nothing
      }`;
  }

  private renderExport(shown: HistoryEntry[]): unknown {
    return html`<sl-button @click=${() => download('history.csv', 'text/csv', asCsv(shown, store))}
        ><ui-icon slot="prefix" name="download"></ui-icon>${named(t.history.csv, t.history.csvLabel)}</sl-button
      >
      <sl-button @click=${() => download('history.json', 'application/json', asJson(shown))}
        ><ui-icon slot="prefix" name="download"></ui-icon>${named(t.history.json, t.history.jsonLabel)}</sl-button
      >`;
  }

  private renderFilter(): unknown {
    const set = (changes: Partial<Filter>): void => {
      this.filter = { ...this.filter, ...changes };
    };
    const valueOf = (event: Event): string => (event.target as HTMLSelectElement).value;
    return html`<div class="filter">
      <sl-input
        class="unlabelled"
        type="search"
        label=${t.history.search}
        placeholder=${t.history.search}
        clearable
        @sl-input=${(event: Event) => set({ words: (event.target as SlInput).value })}
        ><ui-icon slot="prefix" name="search"></ui-icon
      ></sl-input>
      <select aria-label=${t.history.outcome} @change=${(event: Event) => set({ outcome: valueOf(event) })}>
        <option value="">${t.history.all}</option>
        ${Object.entries(t.history.outcomes).map(([key, text]) => html`<option value=${key}>${text}</option>`)}
      </select>
      <select aria-label=${t.history.where} @change=${(event: Event) => set({ place: valueOf(event) })}>
        <option value="">${t.history.everywhere}</option>
        ${[...store.rooms.values()].map((one) => html`<option value="room ${one.id}">${one.name}</option>`)}
        ${[...store.screens.values()].map((one) => html`<option value="screen ${one.id}">${one.name}</option>`)}
      </select>
    </div>`;
  }

  private renderTable(shown: HistoryEntry[]): unknown {
    const c = t.history.columns;
    return html`<table class="card" aria-label=${t.history.title}>
      <thead>
        <tr>
          <th scope="col">${c.when}</th>
          <th scope="col">${c.what}</th>
          <th scope="col">${c.where}</th>
          <th scope="col">${c.length}</th>
          <th scope="col">${c.outcome}</th>
          <th scope="col"><span class="unseen">${t.history.again}</span></th>
        </tr>
      </thead>
      <tbody>
        ${repeat(
          shown,
          (one) => one.id,
          (one) => this.renderEntry(one),
        )}
      </tbody>
    </table>`;
  }

  private renderAgain({ announcement: id, name }: HistoryEntry): unknown {
    const play = (): void => {
      void attempt(() => request('post', '/api/announcements/{id}/play', { path: { id } }));
    };
    const label = t.history.againLabel(name);
    return html`<button class="icon-button" aria-label=${label} title=${t.history.again} @click=${play}>
      <ui-icon name="play"></ui-icon>
    </button>`;
  }

  private renderEntry(one: HistoryEntry): unknown {
    const outcome = outcomeOf(one);
    const reason = reasonOf(one);
    const tone = { failed: 'bad', interrupted: 'warning', played: 'good' }[outcome] ?? '';
    const took = one.ended ? seconds(Math.max(0, Date.parse(one.ended) - Date.parse(one.started))) : '';
    return html`<tr>
      <td class="when"><time datetime=${one.started}>${moment(one.started)}</time></td>
      <td class="what"><span dir="auto">${one.name}</span></td>
      <td class="where" dir="auto">${listing(placesOf(one, store))}</td>
      <td class="took">${took}</td>
      <td class="outcome">
        <span class="badge ${tone}">${outcomeText(outcome)}</span
        >${reason ? html`<p class="small reason" dir="auto">${reason}</p>` : nothing}
      </td>
      <td class="again">${isThere(one, store.announcements) ? this.renderAgain(one) : nothing}</td>
    </tr>`;
  }
}
