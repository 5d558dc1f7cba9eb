// A screen: whether it is there, what it shows now, and a popup to try it out.

import { LitElement, css, html } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { request } from '../api/request';
import type { Screen } from '../api/objects';
import { store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { attempt } from './ui-toasts';
import { named } from './named';

@customElement('screen-card')
export class ScreenCard extends LitElement {
  static override styles = [
    shared,
    css`
      article {
        display: grid;
        gap: 0.75rem;
        padding: 1.1rem 1.25rem;
        height: 100%;
        align-content: start;
      }
      .title {
        display: flex;
        align-items: start;
        justify-content: space-between;
        gap: 0.75rem;
      }
      .shows {
        padding: 0.7rem 0.9rem;
        border-radius: 12px;
        background: var(--sunk);
        overflow-wrap: anywhere;
        color: var(--ink-soft);
      }
      .shows.on {
        background: var(--accent-soft);
        color: var(--ink);
        font-weight: 500;
      }
      .end {
        display: flex;
        flex-wrap: wrap;
        justify-content: flex-end;
        gap: 0.6rem;
      }
      .end sl-button {
        flex: 1 1 auto;
      }
    `,
  ];

  @property({ attribute: false }) screen!: Screen;

  override render(): unknown {
    const { id, name, room, pages, popup } = this.screen;
    const shows = popup ? (popup.message ? t.house.shows(popup.message) : t.house.showsImage) : t.house.showsNothing;
    return html`<article class="card">
      <div class="title">
        <div>
          <h3 dir="auto">${name}</h3>
          <p class="soft small" dir="auto">${room ? t.house.in(store.roomName(room)) : ''}</p>
        </div>
        <span class="badge ${pages > 0 ? 'good' : 'warning'}"
          >${pages > 0 ? t.house.connected(pages) : t.house.notConnected}</span
        >
      </div>
      <p class="shows ${popup ? 'on' : ''}" dir="auto">${shows}</p>
      <div class="end">
        <sl-button href="/navigator/${id}" target="_blank"
          ><ui-icon slot="prefix" name="open"></ui-icon>${named(t.house.open, t.house.openLabel(name))}</sl-button
        >
        <sl-button @click=${this.test}
          ><ui-icon slot="prefix" name="display"></ui-icon
          >${named(t.house.testPopup, t.house.testPopupLabel(name))}</sl-button
        >
      </div>
    </article>`;
  }

  private test(): void {
    void attempt(() => request('post', '/api/navigators/{id}/test', { path: { id: this.screen.id } }));
  }
}
