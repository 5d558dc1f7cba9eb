// The messages of the two event streams: the type of each, and what it carries.

import type { PageMessage, WatcherMessage } from './types';

/** The data of each message, by its type; a sign of life has none. */
type DataOf<Message> = {
  [One in Message as One extends { type: infer Type extends string; data: unknown } ? Type : never]: One extends {
    data: infer Data;
  }
    ? Data
    : never;
};

/** What the house's stream (`/api/events`) tells. */
export type HouseEvents = DataOf<WatcherMessage>;

/** What one screen's stream (`/api/navigators/{id}/events`) tells. */
export type ScreenEvents = DataOf<PageMessage>;

/** A message of a stream, one of those that `Events` names. */
export type EventOf<Events> = {
  [Type in keyof Events]: { seq: number; time: string; type: Type; data: Events[Type] };
}[keyof Events];

export type HouseEvent = EventOf<HouseEvents>;

/** What is to be done with each type; one that is not there, or that a later controller has, is passed by. */
export type Handlers<Events, Context extends unknown[], Result = void> = {
  [Type in keyof Events]?: (data: Events[Type], ...context: Context) => Result;
};

export function handle<Events, Context extends unknown[], Result>(
  handlers: Handlers<Events, Context, Result>,
  event: EventOf<Events>,
  ...context: Context
): Result | undefined {
  return handlers[event.type]?.(event.data, ...context);
}
