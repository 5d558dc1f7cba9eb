// Where the draft is heard and seen: rooms with their volumes beside the screens.

import type SlRange from '@shoelace-style/shoelace/dist/components/range/range.js';
import type SlSwitch from '@shoelace-style/shoelace/dist/components/switch/switch.js';
import { css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import type { RoomTarget } from '../api/objects';
import { excerpt } from '../model/excerpt';
import { isUnheard } from '../model/faults';
import { volume } from '../model/format';
import { changed, isKeeping, toggled } from '../model/places';
import { store } from '../store/live';
import { t } from '../texts/page';
import { DraftPart } from './draft-part';
import { excerptSearch } from './excerpt-search';
import { named } from './named';

const USUAL = 40; // where a room of the announcement is not in the house

interface Place {
  id: number;
  name: string;
}

@customElement('draft-places')
export class DraftPlaces extends DraftPart {
  static override styles = [
    ...DraftPart.styles,
    css`
      .sides {
        display: grid;
        grid-template-columns: repeat(auto-fit, minmax(min(100%, 11rem), 1fr));
        align-items: start;
        gap: 1.25rem;
      }
      h3 {
        margin-bottom: 0.4rem;
      }
      .own {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 0.4rem;
        margin-left: 0.4rem;
        padding: 0 0 0.4rem 0.9rem;
        border-left: 2px solid var(--line);
      }
      sl-button {
        justify-self: start;
        max-width: 100%;
      }
      sl-button::part(base) {
        height: auto;
        min-height: var(--sl-input-height-small);
        white-space: normal;
        padding-block: 0.25rem;
        line-height: 1.3;
      }
    `,
  ];

  @state() private words: Record<string, string> = {}; // by title of the places

  override render(): unknown {
    return html`<section class="card" aria-labelledby="where">
      <h2 id="where">${t.editor.sections.where}</h2>
      <div class="sides">${this.renderRooms()}${this.renderScreens()}</div>
    </section>`;
  }

  private renderRooms(): unknown {
    const rooms = withStrange(
      [...store.rooms.values()],
      this.draft.rooms.map(({ id }) => id),
      t.editor.strangeRoom,
    );
    return html`<div role="group" aria-labelledby="rooms">
      <h3 id="rooms">${t.editor.sections.rooms}</h3>
      ${rooms.length === 0 ? html`<p class="hint">${t.editor.noRooms}</p>` : nothing}
      ${this.renderPlaces(t.editor.sections.rooms, rooms, this.draft.rooms, (room) => this.renderRoom(room))}
      ${this.wrong('rooms')}
    </div>`;
  }

  private renderPlaces(
    label: string,
    all: Place[],
    chosen: { id: number }[],
    render: (place: Place) => unknown,
  ): unknown {
    const ids = new Set(chosen.map(({ id }) => id));
    const words = this.words[label] ?? '';
    const shown = excerpt(all, words, ({ id }) => ids.has(id));
    return html`${excerptSearch({ label, all, shown }, words, (now) => {
      this.words = { ...this.words, [label]: now };
    })}${shown.map(render)}`;
  }

  private renderRoom(room: Place): unknown {
    const target = this.draft.rooms.find(({ id }) => id === room.id);
    const toggle = (event: Event): void => {
      const isOn = (event.target as SlSwitch).checked;
      this.change({ rooms: toggled(this.draft.rooms, { id: room.id, volume: -1 }, isOn) });
    };
    return html`<div class="target">
      <sl-switch ?checked=${target !== undefined} @sl-change=${toggle}><span dir="auto">${room.name}</span></sl-switch>
      ${target ? html`<div class="own">${this.renderInside(room, target)}</div>` : nothing}
    </div>`;
  }

  private renderInside(room: Place, target: RoomTarget): unknown {
    return [this.renderDoubt(room), this.renderVolume(room, target), this.renderTry(room)];
  }

  private renderDoubt({ id }: Place): unknown {
    const room = store.rooms.get(id);
    return room?.trouble && isUnheard(room)
      ? html`<p class="doubt small">${t.house.trouble(room.trouble)}</p>`
      : nothing;
  }

  private renderVolume(room: Place, { volume: level }: RoomTarget): unknown {
    const set = (value: number): void => this.change({ rooms: changed(this.draft.rooms, room.id, value) });
    const own = store.rooms.get(room.id)?.volume ?? USUAL;
    const keep = (event: Event): void => set((event.target as SlSwitch).checked ? -1 : Math.max(1, own));
    return html`<sl-switch size="small" ?checked=${isKeeping(level)} @sl-change=${keep}
        >${named(t.editor.keepVolume, t.editor.keepVolumeLabel(room.name))}</sl-switch
      >
      ${
        isKeeping(level)
          ? nothing
          : html`<sl-range
              label=${t.editor.volumeIn(room.name, volume(level))}
              min="1"
              max="100"
              .value=${level}
              .tooltipFormatter=${volume}
              @sl-input=${(event: Event) => set((event.target as SlRange).value)}
            ></sl-range>`
      }`;
  }

  private renderTry(room: Place): unknown {
    const ask = (): void => {
      this.dispatchEvent(new CustomEvent('try-room', { detail: room.id, bubbles: true, composed: true }));
    };
    return html`<sl-button size="small" @click=${ask}
      ><ui-icon slot="prefix" name="play"></ui-icon>${named(t.editor.tryIn, t.editor.tryInLabel(room.name))}</sl-button
    >`;
  }

  private renderScreens(): unknown {
    const screens = withStrange(
      [...store.screens.values()],
      this.draft.navigators.map(({ id }) => id),
      t.editor.strangeScreen,
    );
    return html`<div role="group" aria-labelledby="screens">
      <h3 id="screens">${t.editor.sections.screens}</h3>
      ${screens.length === 0 ? html`<p class="hint">${t.editor.noScreens}</p>` : nothing}
      ${this.renderPlaces(t.editor.sections.screens, screens, this.draft.navigators, (one) => this.renderScreen(one))}
      ${this.wrong('navigators')}
    </div>`;
  }

  private renderScreen(screen: Place): unknown {
    const isChosen = this.draft.navigators.some(({ id }) => id === screen.id);
    const toggle = (event: Event): void => {
      const isOn = (event.target as SlSwitch).checked;
      const room = store.screens.get(screen.id)?.room ?? 0;
      this.change({ navigators: toggled(this.draft.navigators, { id: screen.id, room, onscreen: true }, isOn) });
    };
    return html`<div class="target">
      <sl-switch ?checked=${isChosen} @sl-change=${toggle}><span dir="auto">${screen.name}</span></sl-switch>
    </div>`;
  }
}

/** Also those that the announcement names and the house does not have any more. */
function withStrange(known: Place[], ids: number[], nameOf: (id: number) => string): Place[] {
  const knownIds = new Set(known.map(({ id }) => id));
  const strange = ids.filter((id) => !knownIds.has(id));
  return [...known, ...strange.map((id) => ({ id, name: nameOf(id) }))];
}
