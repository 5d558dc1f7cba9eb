// Rooms with their volumes, screens with what they show, and values that messages can follow.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { repeat } from 'lit/directives/repeat.js';
import { excerpt } from '../model/excerpt';
import { excerptSearch } from '../parts/excerpt-search';
import '../parts/output-list';
import '../parts/room-card';
import '../parts/screen-card';
import '../parts/value-card';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';

@customElement('house-view')
export class HouseView extends LitElement {
  static override styles = [
    shared,
    css`
      .group:first-of-type {
        margin-top: 0;
      }
      .none {
        color: var(--ink-soft);
      }
    `,
  ];

  @state() private words: Record<string, string> = {}; // by title of the group

  constructor() {
    super();
    new Following(this);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    store.refreshSoon(); // no event tells that an output can be heard again
  }

  override render(): unknown {
    return html`<div class="head"><h1>${t.house.title}</h1></div>
      ${this.group(
        t.house.rooms,
        t.house.noRooms,
        [...store.rooms.values()],
        (one) => one.id,
        (room) => html`<room-card .room=${room}></room-card>`,
      )}
      ${this.group(
        t.house.screens,
        t.house.noScreens,
        [...store.screens.values()],
        (one) => one.id,
        (screen) => html`<screen-card .screen=${screen}></screen-card>`,
      )}
      ${this.group(
        t.house.values,
        t.house.noValues,
        store.variables,
        (one) => `${one.device} ${one.variable}`,
        (value) => html`<value-card .value=${value}></value-card>`,
      )}<output-list></output-list>`;
  }

  private group<One extends { name: string }>(
    title: string,
    none: string,
    all: One[],
    keyOf: (one: One) => unknown,
    card: (one: One) => unknown,
  ): unknown {
    const words = this.words[title] ?? '';
    const shown = excerpt(all, words);
    return html`<section class="group" aria-label=${title}>
      <h2>${title}</h2>
      ${all.length === 0 ? html`<p class="none">${none}</p>` : nothing}
      ${excerptSearch({ label: title, all, shown }, words, (now) => {
        this.words = { ...this.words, [title]: now };
      })}
      <div class="tiles">${repeat(shown, keyOf, card)}</div>
    </section>`;
  }
}
