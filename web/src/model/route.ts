// The address names the view: what stands behind `#`.

export type Place = 'announcements' | 'house' | 'media' | 'history' | 'log';

export interface Route {
  place: Place;
  /** In the editor: the announcement's id, or null for a new one; undefined elsewhere. */
  editing?: number | null;
  /** The announcement that a new one begins as a copy of. */
  copyOf?: number;
}

export const PLACES: Place[] = ['announcements', 'house', 'media', 'history', 'log'];

export function routeOf(hash: string): Route {
  const editor = /^#\/announcements\/(new|\d+)(?:\?copy=(\d+))?$/.exec(hash);
  if (editor) {
    const route: Route = { place: 'announcements', editing: editor[1] === 'new' ? null : Number(editor[1]) };
    if (editor[1] === 'new' && editor[2]) route.copyOf = Number(editor[2]);
    return route;
  }
  return { place: PLACES.find((place) => hash === `#/${place}`) ?? 'announcements' };
}

export const placeAddress = (place: Place): string => `#/${place}`;
export const editAddress = (id: number): string => `#/announcements/${id}`;
export const newAddress = (copyOf?: number): string =>
  `#/announcements/new${copyOf === undefined ? '' : `?copy=${copyOf}`}`;
