// Every component that the frame shows. The first view comes with it; the others when they are first opened.

import { fetched } from '../api/later';
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

const coming = new Set<keyof typeof later>();

/** Whether it can be shown. If not, it is fetched; `ask` is called when it can. */
export function isThere(view: keyof typeof later, ask: () => void): boolean {
  if (customElements.get(view)) return true;
  if (!coming.has(view)) void fetched<unknown>(later[view]).then(ask);
  coming.add(view);
  return false;
}
