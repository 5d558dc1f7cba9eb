// Where the draft is heard and seen: rooms with their volumes, screens.

import type SlRange from '@shoelace-style/shoelace/dist/components/range/range.js';
import type SlSwitch from '@shoelace-style/shoelace/dist/components/switch/switch.js';
import { html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import type { RoomTarget } from '../api/objects';
import { volume } from '../model/format';
import { store } from '../store/live';
import { t } from '../texts/page';
import { DraftPart } from './draft-part';

interface Place {
  id: number;
  name: string;
}

@customElement('draft-places')
export class DraftPlaces extends DraftPart {
  override render(): unknown {
    return html`${this.renderRooms()}${this.renderScreens()}`;
  }

  private renderRooms(): unknown {
    const rooms = withStrange(
      [...store.rooms.values()],
      this.draft.rooms.map(({ id }) => id),
      t.editor.strangeRoom,
    );
    return html`<section class="card" aria-labelledby="rooms">
      <h2 id="rooms">${t.editor.sections.rooms}</h2>
      ${
        rooms.length === 0
          ? html`<p class="hint">${t.editor.noRooms}</p>`
          : html`<div>${rooms.map((room) => this.renderRoom(room))}</div>`
      }${this.wrong('rooms')}
    </section>`;
  }

  private renderRoom(room: Place): unknown {
    const target = this.draft.rooms.find(({ id }) => id === room.id);
    const others = this.draft.rooms.filter(({ id }) => id !== room.id);
    const toggle = (event: Event): void => {
      const isOn = (event.target as SlSwitch).checked;
      this.change({ rooms: isOn ? inOrder([...others, { id: room.id, volume: -1 }]) : others });
    };
    const level = (event: Event): void => {
      const value = (event.target as SlRange).value;
      this.change({
        rooms: this.draft.rooms.map((one) => (one.id === room.id ? { ...one, volume: value || -1 } : one)),
      });
    };
    return html`<div class="target">
      <sl-switch ?checked=${target !== undefined} @sl-change=${toggle}><span dir="auto">${room.name}</span></sl-switch>
      ${
        target
          ? html`<sl-range
              label=${t.editor.volumeIn(room.name, volume(target.volume))}
              min="0"
              max="100"
              .value=${Math.max(0, target.volume)}
              .tooltipFormatter=${volume}
              @sl-input=${level}
            ></sl-range>`
          : nothing
      }
    </div>`;
  }

  private renderScreens(): unknown {
    const screens = withStrange(
      [...store.screens.values()],
      this.draft.navigators.map(({ id }) => id),
      t.editor.strangeScreen,
    );
    return html`<section class="card" aria-labelledby="screens">
      <h2 id="screens">${t.editor.sections.screens}</h2>
      ${
        screens.length === 0
          ? html`<p class="hint">${t.editor.noScreens}</p>`
          : html`<div>${screens.map((screen) => this.renderScreen(screen))}</div>`
      }${this.wrong('navigators')}
    </section>`;
  }

  private renderScreen(screen: Place): unknown {
    const others = this.draft.navigators.filter(({ id }) => id !== screen.id);
    const toggle = (event: Event): void => {
      const isOn = (event.target as SlSwitch).checked;
      const room = store.screens.get(screen.id)?.room ?? 0;
      this.change({ navigators: isOn ? inOrder([...others, { id: screen.id, room, onscreen: true }]) : others });
    };
    return html`<sl-switch ?checked=${others.length < this.draft.navigators.length} @sl-change=${toggle}
      ><span dir="auto">${screen.name}</span></sl-switch
    >`;
  }
}

/** Also those that the announcement names and the house does not have any more. */
function withStrange(known: Place[], ids: number[], nameOf: (id: number) => string): Place[] {
  const strange = ids.filter((id) => !known.some((one) => one.id === id));
  return [...known, ...strange.map((id) => ({ id, name: nameOf(id) }))];
}

const inOrder = <T extends RoomTarget | Place | { id: number }>(targets: T[]): T[] =>
  [...targets].sort((one, other) => one.id - other.id);
