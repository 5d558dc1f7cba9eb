// The page's one store, fed by the event stream, and the way for components to follow it.

import type { ReactiveController, ReactiveControllerHost } from 'lit';
import { EventStream } from '../api/EventStream';
import type { HouseEvents } from '../api/events';
import { Problem } from '../api/request';
import { t } from '../texts/page';
import { Store } from './Store';

export const store = new Store();

export const stream = new EventStream<HouseEvents>('/api/events', {
  onEvent: (event) => store.apply(event),
  onLink: (link) => store.setLink(link),
  onRights: (rights) => {
    store.setRights(rights);
    return store.mayPlay ? null : new Problem(403, t.access.screenTitle);
  },
});

/** Renders its component anew after each change of the store. */
export class Following implements ReactiveController {
  private end = (): void => undefined;

  constructor(
    private readonly host: ReactiveControllerHost,
    private readonly onChange: () => void = () => undefined,
  ) {
    host.addController(this);
  }

  hostConnected(): void {
    this.end = store.subscribe(() => {
      this.onChange();
      this.host.requestUpdate();
    });
  }

  hostDisconnected(): void {
    this.end();
  }
}

/** Has its component read what no event brings: once there is a connection, and again after each that was lost. */
export class Reading implements ReactiveController {
  private end = (): void => undefined;
  private readAt = 0; // the state that was read after

  constructor(
    host: ReactiveControllerHost,
    private readonly read: () => void,
  ) {
    host.addController(this);
  }

  hostConnected(): void {
    this.readAt = 0;
    this.end = store.subscribe(() => this.look());
    this.look();
  }

  hostDisconnected(): void {
    this.end();
  }

  private look(): void {
    if (!store.link.isConnected || this.readAt === store.states) return;
    this.readAt = store.states;
    this.read();
  }
}
