// Every component that the frame shows. The first view comes with it; the others when they are first opened.

import '../parts/link-state';
import '../parts/now-bar';
import '../parts/sign-in';
import '../parts/ui-icon';
import '../parts/ui-toasts';
import './announcements-view';

const later = {
  'announcement-editor': () => import('./announcement-editor'),
  'history-view': () => import('./history-view'),
  'house-view': () => import('./house-view'),
  'log-view': () => import('./log-view'),
  'media-view': () => import('./media-view'),
};

const AGAIN = 1000; // after as many milliseconds, when there was no connection to fetch it over

/** Whether it can be shown. If not, it is fetched; `ask` is called when it is worth asking again. */
export function isThere(view: keyof typeof later, ask: () => void): boolean {
  if (customElements.get(view)) return true;
  later[view]().then(ask, () => setTimeout(ask, AGAIN));
  return false;
}
