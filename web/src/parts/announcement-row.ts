// One announcement in the list: play it with one touch; opened, it shows what it will do.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { request } from '../api/request';
import type { Announcement } from '../api/objects';
import { listing } from '../model/format';
import { tagsOf } from '../model/order';
import { editAddress, newAddress } from '../model/route';
import { deleteWithUndo } from './deleting';
import { store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { stopPlaying } from './stopping';
import { attempt } from './ui-toasts';
import './announcement-outlook';
import './favourite-star';
import { named } from './named';

@customElement('announcement-row')
export class AnnouncementRow extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: block;
      }
      article {
        padding: 0.9rem;
      }
      article.playing {
        border-color: var(--accent);
        box-shadow:
          0 0 0 1px var(--accent),
          var(--shadow);
      }
      .line {
        display: flex;
        align-items: center;
        gap: 1rem;
      }
      .play {
        width: 3.25rem;
        height: 3.25rem;
        flex: none;
        display: grid;
        place-items: center;
        padding: 0;
        border: 0;
        border-radius: 50%;
        background: var(--accent);
        color: var(--on-accent);
        font-size: 1.6rem;
        cursor: pointer;
      }
      .play:hover {
        background: var(--accent-strong);
      }
      .body {
        flex: 1;
        min-width: 0;
      }
      .title {
        display: flex;
        flex-wrap: wrap;
        align-items: center;
        gap: 0.1rem 0.6rem;
      }
      h2 {
        display: -webkit-box;
        -webkit-box-orient: vertical;
        -webkit-line-clamp: 2;
        overflow: hidden;
        overflow-wrap: anywhere;
      }
      .title .badge {
        flex: none;
      }
      .quote,
      .facts span {
        overflow: hidden;
        text-overflow: ellipsis;
        white-space: nowrap;
      }
      .quote {
        color: var(--ink-soft);
      }
      .facts {
        display: flex;
        flex-wrap: wrap;
        gap: 0.1rem 1.1rem;
        margin-top: 0.25rem;
      }
      .facts > span {
        display: inline-flex;
        align-items: center;
        gap: 0.4rem;
        max-width: 100%;
        min-width: 0;
      }
      .side {
        display: flex;
        flex: none;
        gap: 1rem;
      }
      .faults {
        display: grid;
        gap: 0.15rem;
        margin-top: 0.35rem;
        color: var(--warning);
        font-weight: 500;
      }
      .faults li {
        display: flex;
        align-items: start;
        gap: 0.4rem;
        overflow-wrap: anywhere;
      }
      .faults ui-icon {
        flex: none;
        margin-top: 0.2rem;
      }
      .more ui-icon {
        transition: transform 0.15s ease;
      }
      .more[aria-expanded='true'] ui-icon {
        transform: rotate(180deg);
      }
      .inside {
        margin-top: 1rem;
        padding-top: 1rem;
        border-top: 1px solid var(--line);
      }
      .actions {
        display: flex;
        flex-wrap: wrap;
        gap: 0.5rem;
        margin-top: 1rem;
      }
      @media (max-width: 699px) {
        .line {
          gap: 0.75rem;
        }
        .edit {
          display: none;
        }
        .side {
          flex-direction: column;
          gap: 0;
        }
      }
    `,
  ];

  @property({ attribute: false }) announcement!: Announcement;
  @property({ attribute: false }) faults: string[] = []; // what is wrong with it
  @property({ type: Boolean }) isOpen = false;
  @property({ type: Boolean }) isPlaying = false;
  @property({ type: Boolean }) isFailing = false; // what plays is
  @property({ type: Number }) turn = 0; // its place among those that wait, from 1; 0 when it does not

  override render(): unknown {
    const { name } = this.announcement;
    return html`<article class="card ${this.isPlaying ? 'playing' : ''}">
      <div class="line">
        ${this.isPlaying ? this.renderStop(name) : this.renderPlay(name)}
        <div class="body">
          <div class="title">
            <h2 dir="auto">${name}</h2>
            ${this.renderBadge()}${this.renderTags()}
          </div>
          <p class="quote" dir="auto">${this.message()}</p>
          ${this.renderFacts()}${this.renderFaults()}
        </div>
        ${this.renderSide()}
      </div>
      ${this.isOpen ? this.renderInside() : nothing}
    </article>`;
  }

  private renderSide(): unknown {
    const { id, name } = this.announcement;
    return html`<div class="side">
      ${
        store.mayEdit
          ? html`<favourite-star .announcement=${this.announcement}></favourite-star>
              <a
                class="icon-button edit"
                href=${editAddress(id)}
                aria-label=${t.list.edit(name)}
                title=${t.list.editShort}
                ><ui-icon name="pencil"></ui-icon
              ></a>`
          : nothing
      }
      <button
        class="icon-button more"
        aria-expanded=${this.isOpen}
        aria-label=${t.list.preview(name)}
        @click=${this.toggle}
      >
        <ui-icon name="chevronDown"></ui-icon>
      </button>
    </div>`;
  }

  private renderPlay(name: string): unknown {
    return html`<button class="play" aria-label=${t.list.play(name)} @click=${this.play}>
      <ui-icon name="play"></ui-icon>
    </button>`;
  }

  private renderStop(name: string): unknown {
    return html`<button class="play" aria-label=${t.now.stopLabel(name)} @click=${stopPlaying}>
      <ui-icon name="stop"></ui-icon>
    </button>`;
  }

  private renderBadge(): unknown {
    if (this.isPlaying && this.isFailing) return html`<span class="badge bad">${t.list.failing}</span>`;
    if (this.isPlaying) return html`<span class="badge good">${t.list.playing}</span>`;
    return this.turn > 0 ? html`<span class="badge warning">${t.list.waiting(this.turn)}</span>` : nothing;
  }

  private message(): string {
    const { text, variable, image } = this.announcement.video;
    if (variable) return t.list.follows(store.variableName(variable.device, variable.variable));
    return text || image || t.list.silent;
  }

  private renderFaults(): unknown {
    return this.faults.length === 0
      ? nothing
      : html`<ul class="faults small" role="list">
          ${this.faults.map(
            (one) => html`<li><ui-icon name="exclamation"></ui-icon><span dir="auto">${one}</span></li>`,
          )}
        </ul>`;
  }

  private renderTags(): unknown {
    return tagsOf(this.announcement).map((tag) => html`<span class="badge" dir="auto">${tag}</span>`);
  }

  private renderFacts(): unknown {
    const { audio, rooms, navigators } = this.announcement;
    return html`<p class="facts soft small">
      <span><ui-icon name="note"></ui-icon><span>${audio.file || t.list.noSound}</span></span>
      <span
        ><ui-icon name="speaker"></ui-icon
        ><span>${listing(rooms.map(({ id }) => store.roomName(id))) || t.list.noRooms}</span></span
      >
      <span
        ><ui-icon name="display"></ui-icon
        ><span>${listing(navigators.map(({ id }) => store.screenName(id))) || t.list.noScreens}</span></span
      >
    </p>`;
  }

  private renderInside(): unknown {
    const { id, name } = this.announcement;
    return html`<div class="inside">
      <announcement-outlook .announcement=${this.announcement}></announcement-outlook> ${
        store.mayEdit
          ? html`<div class="actions">
              <sl-button href=${editAddress(id)}
                ><ui-icon slot="prefix" name="pencil"></ui-icon>${named(t.list.editShort, t.list.edit(name))}</sl-button
              >
              <sl-button href=${newAddress(id)}
                ><ui-icon slot="prefix" name="copy"></ui-icon>${t.list.duplicateShort}</sl-button
              >
              <sl-button @click=${() => deleteWithUndo(this.announcement)}
                ><ui-icon slot="prefix" name="trash"></ui-icon>${t.delete}</sl-button
              >
            </div>`
          : nothing
      }
    </div>`;
  }

  private toggle(): void {
    this.dispatchEvent(new CustomEvent('toggle-row'));
  }

  private play(): void {
    const { id } = this.announcement;
    void attempt(() => request('post', '/api/announcements/{id}/play', { path: { id } }));
  }
}
