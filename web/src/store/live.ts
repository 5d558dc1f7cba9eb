// The page's one store, fed by the event stream, and the way for components to follow it.

import type { ReactiveController, ReactiveControllerHost } from 'lit';
import { EventStream } from '../api/EventStream';
import type { HouseEvents } from '../api/events';
import { Store } from './Store';

export const store = new Store();

export const stream = new EventStream<HouseEvents>('/api/events', {
  onEvent: (event) => store.apply(event),
  onLink: (link) => store.setLink(link),
  onRights: (rights) => {
    store.setRights(rights);
    return store.mayPlay;
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
