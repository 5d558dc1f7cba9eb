// The list of announcements: found, played, opened.

import '@lit-labs/virtualizer';
import { flow } from '@lit-labs/virtualizer/layouts/flow.js';
import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import type { Announcement } from '../api/objects';
import { request } from '../api/request';
import { faultsOf } from '../model/faults';
import { listState, order, setOrder } from '../model/list';
import { allTags, FAVOURITE, isFavourite, lastUses, ORDERS, sorted, tagsOf, withTag, type Order } from '../model/order';
import { newAddress } from '../model/route';
import { matching } from '../model/search';
import '../parts/announcement-row';
import '../parts/say-box';
import { attempt } from '../parts/ui-toasts';
import { Following, Reading, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

const MOST_USES = '1000';
// Named here, for what is not named the virtualizer fetches, once: with no connection then, it never shows a row.
const LAYOUT = flow();

@customElement('announcements-view')
export class AnnouncementsView extends LitElement {
  static override styles = [
    shared,
    css`
      .head h1 {
        flex: 0 1 auto;
        margin-right: auto;
      }
      sl-input {
        flex: 1 1 14rem;
        max-width: 24rem;
      }
      .order {
        display: flex;
        flex-wrap: wrap;
        gap: 0.75rem;
        margin: -0.25rem 0 1rem;
      }
      .order select {
        flex: 0 1 14rem;
        min-width: 0;
      }
      .count {
        margin: -0.5rem 0 0.75rem;
      }
      lit-virtualizer {
        display: block;
      }
      announcement-row {
        width: 100%;
        padding-bottom: 0.75rem;
      }
      @media (max-width: 699px) {
        h1 {
          font-size: 1.4rem;
        }
        sl-input {
          order: 3;
          max-width: none;
          flex-basis: 100%;
        }
      }
    `,
  ];

  @state() private words = listState.words;
  @state() private tag = listState.tag;
  @state() private order = order();
  @state() private open = listState.open;
  @state() private uses = new Map<number, number>();
  private usesAt = -1; // endings that are counted in

  constructor() {
    super();
    new Following(this, () => void this.readUses());
    // Only for what is said of missing sounds: the list does without.
    new Reading(this, () => void store.loadMedia().catch(() => undefined));
  }

  override willUpdate(): void {
    Object.assign(listState, { words: this.words, tag: this.tag, open: this.open });
    void this.readUses();
  }

  /** When each was played last, where that decides. */
  private async readUses(): Promise<void> {
    if (this.order !== 'used' || this.usesAt === store.endings || !store.link.isConnected) return;
    this.usesAt = store.endings;
    await attempt(async () => {
      const { history } = await request('get', '/api/history', { query: { limit: MOST_USES } });
      this.uses = lastUses(history);
    });
  }

  override render(): unknown {
    const all = [...store.announcements.values()].filter((one) => !store.leaving.has(one.id));
    const shown = sorted(matching(withTag(all, this.tag), this.words, textOf), this.order, this.uses);
    return html`${store.rooms.size + store.screens.size > 0 ? html`<say-box></say-box>` : nothing}
      <div class="head">
        <h1>${t.list.title}</h1>
        ${all.length ? this.renderSearch() : nothing}
        ${
          store.mayEdit && all.length
            ? html`<sl-button variant="primary" href=${newAddress()}
                ><ui-icon slot="prefix" name="plus"></ui-icon
                >${window.innerWidth < 500 ? t.list.addShort : t.list.add}</sl-button
              >`
            : nothing
        }
      </div>
      ${all.length > 1 ? this.renderOrder(all) : nothing}
      ${all.length === 0 ? this.renderEmpty() : this.renderList(shown, all.length)}`;
  }

  private renderSearch(): unknown {
    const search = (event: Event): void => {
      this.words = (event.target as SlInput).value;
    };
    return html`<sl-input
      class="unlabelled"
      type="search"
      label=${t.list.search}
      placeholder=${t.list.search}
      clearable
      .value=${this.words}
      @sl-input=${search}
      ><ui-icon slot="prefix" name="search"></ui-icon
    ></sl-input>`;
  }

  private renderOrder(all: Announcement[]): unknown {
    const valueOf = (event: Event): string => (event.target as HTMLSelectElement).value;
    const sort = (event: Event): void => {
      this.order = valueOf(event) as Order;
      setOrder(this.order);
    };
    const choose = (event: Event): void => {
      this.tag = valueOf(event);
    };
    const tags = [...new Set([...(all.some(isFavourite) ? [FAVOURITE] : []), ...allTags(all), this.tag])].filter(
      Boolean,
    );
    const option = (key: string, text: string, chosen: string): unknown =>
      html`<option value=${key} ?selected=${key === chosen}>${text}</option>`;
    return html`<div class="order">
      <select aria-label=${t.list.order} @change=${sort}>
        ${ORDERS.map((one) => option(one, t.list.orders[one], this.order))}
      </select>
      ${
        tags.length === 0
          ? nothing
          : html`<select aria-label=${t.list.tag} @change=${choose}>
              ${option('', t.list.everything, this.tag)}
              ${tags.map((tag) => option(tag, tag === FAVOURITE ? t.list.favourites : tag, this.tag))}
            </select>`
      }
    </div>`;
  }

  private renderEmpty(): unknown {
    return html`<section class="card empty">
      <ui-icon name="bell"></ui-icon>
      <h2>${t.list.none}</h2>
      <p>${t.list.noneText}</p>
      ${
        store.mayEdit
          ? html`<sl-button variant="primary" size="large" href=${newAddress()}
              ><ui-icon slot="prefix" name="plus"></ui-icon>${t.list.first}</sl-button
            >`
          : nothing
      }
    </section>`;
  }

  private renderList(shown: Announcement[], all: number): unknown {
    if (shown.length === 0) {
      return html`<section class="card empty">
        <ui-icon name="search"></ui-icon>
        <h2>${t.list.notFound(this.words || this.tag)}</h2>
        <sl-button
          @click=${() => {
            this.words = '';
            this.tag = '';
          }}
          >${t.list.clearSearch}</sl-button
        >
      </section>`;
    }
    const { status } = store;
    // It asks once for rows of the former list when that becomes shorter.
    const row = (one: Announcement | undefined, index: number): unknown =>
      one &&
      html`<announcement-row
        role="listitem"
        aria-setsize=${shown.length}
        aria-posinset=${index + 1}
        .announcement=${one}
        .faults=${faultsOf(one, store)}
        .isOpen=${this.open.has(one.id)}
        .isPlaying=${status?.playing?.announcement === one.id && store.stopped !== one.id}
        .isFailing=${store.failures.length > 0}
        .turn=${(status?.waiting.indexOf(one.id) ?? -1) + 1}
        @toggle-row=${() => this.toggle(one.id)}
      ></announcement-row>`;
    return html`<p class="count soft small" role="status">${t.list.count(shown.length, all)}</p>
      <lit-virtualizer
        role="list"
        aria-label=${t.list.title}
        .layout=${LAYOUT}
        .items=${shown}
        .keyFunction=${(one?: Announcement) => one?.id ?? 0}
        .renderItem=${row}
      ></lit-virtualizer>`;
  }

  private toggle(id: number): void {
    const open = new Set(this.open);
    if (!open.delete(id)) open.add(id);
    this.open = open;
  }
}

function textOf(one: Announcement): string {
  return [
    ...tagsOf(one),
    ...one.rooms.map(({ id }) => store.roomName(id)),
    ...one.navigators.map(({ id }) => store.screenName(id)),
  ].join(' ');
}
