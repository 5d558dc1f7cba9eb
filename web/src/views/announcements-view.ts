// The list of announcements: found, played, opened.

import '@lit-labs/virtualizer';
import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import type { Announcement } from '../api/objects';
import { newAddress } from '../model/route';
import { matching } from '../model/search';
import '../parts/announcement-row';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

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

  @state() private words = '';
  @state() private open = new Set<number>();

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    const all = [...store.announcements.values()]
      .filter((one) => !store.leaving.has(one.id))
      .sort((one, other) => one.id - other.id);
    const shown = matching(all, this.words, placesOf);
    return html`<div class="head">
        <h1>${t.list.title}</h1>
        ${
          all.length
            ? html`<sl-input
                class="unlabelled"
                type="search"
                label=${t.list.search}
                placeholder=${t.list.search}
                clearable
                .value=${this.words}
                @sl-input=${(event: Event) => {
                  this.words = (event.target as SlInput).value;
                }}
                ><ui-icon slot="prefix" name="search"></ui-icon
              ></sl-input>`
            : nothing
        }
        ${
          store.mayEdit && all.length
            ? html`<sl-button variant="primary" href=${newAddress()}
                ><ui-icon slot="prefix" name="plus"></ui-icon
                >${window.innerWidth < 500 ? t.list.addShort : t.list.add}</sl-button
              >`
            : nothing
        }
      </div>
      ${all.length === 0 ? this.renderEmpty() : this.renderList(shown, all.length)}`;
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
        <h2>${t.list.notFound(this.words)}</h2>
        <sl-button
          @click=${() => {
            this.words = '';
          }}
          >${t.list.clearSearch}</sl-button
        >
      </section>`;
    }
    const { status } = store;
    const row = (one: Announcement, index: number): unknown =>
      html`<announcement-row
        role="listitem"
        aria-setsize=${shown.length}
        aria-posinset=${index + 1}
        .announcement=${one}
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
        .items=${shown}
        .keyFunction=${(one: Announcement) => one.id}
        .renderItem=${row}
      ></lit-virtualizer>`;
  }

  private toggle(id: number): void {
    const open = new Set(this.open);
    if (!open.delete(id)) open.add(id);
    this.open = open;
  }
}

function placesOf(one: Announcement): string {
  return [
    ...one.rooms.map(({ id }) => store.roomName(id)),
    ...one.navigators.map(({ id }) => store.screenName(id)),
  ].join(' ');
}
