// How somebody looks at the list of announcements: it is the same when one comes back to it.

import { ORDERS, type Order } from './order';

const KEY = 'announcement-order';

/** Kept as long as the page is open. */
export const listState = { words: '', tag: '', open: new Set<number>() };

export function order(): Order {
  try {
    return ORDERS.find((one) => one === localStorage.getItem(KEY)) ?? 'newest';
  } catch {
    return 'newest';
  }
}

/** Kept by this browser. */
export function setOrder(wanted: Order): void {
  try {
    localStorage.setItem(KEY, wanted);
  } catch {
    // Until the list is opened anew, then.
  }
}
