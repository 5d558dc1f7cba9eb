// Makes an announcement a favourite, which stands first in the list.

import { LitElement, css, html } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { exchange, Problem } from '../api/request';
import type { Announcement } from '../api/objects';
import { bodyOf } from '../model/draft';
import { isFavourite, withFavourite } from '../model/order';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { attempt } from './ui-toasts';

const PATH = '/api/announcements/{id}';
const TRIES = 3; // others may be changing it

@customElement('favourite-star')
export class FavouriteStar extends LitElement {
  static override styles = [
    shared,
    css`
      button[aria-pressed='true'] {
        color: var(--accent);
      }
    `,
  ];

  @property({ attribute: false }) announcement!: Announcement;

  override render(): unknown {
    const isOne = isFavourite(this.announcement);
    const name = t.list.favourite(this.announcement.name);
    return html`<button
      class="icon-button"
      aria-pressed=${isOne}
      aria-label=${name}
      title=${name}
      @click=${this.toggle}
    >
      <ui-icon name=${isOne ? 'starred' : 'star'}></ui-icon>
    </button>`;
  }

  private toggle(): void {
    const { id } = this.announcement;
    const wanted = !isFavourite(this.announcement);
    void attempt(() => store(id, wanted, TRIES));
  }
}

async function store(id: number, isWanted: boolean, tries: number): Promise<void> {
  const { value, etag } = await exchange('get', PATH, { path: { id } });
  const body = withFavourite(bodyOf(value), isWanted);
  try {
    await exchange('put', PATH, { path: { id }, body, ifMatch: etag });
  } catch (problem) {
    if (!(problem instanceof Problem) || problem.status !== 412 || tries <= 1) throw problem;
    await store(id, isWanted, tries - 1);
  }
}
