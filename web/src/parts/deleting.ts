// Deleting with a way back: the announcement is hidden at once and deleted when the way back is gone.

import { addressOf, deleteInPassing, request } from '../api/request';
import type { Announcement } from '../api/objects';
import { t } from '../texts/page';
import { store } from '../store/live';
import { attempt, toast } from './ui-toasts';

const SECOND_THOUGHTS = 8000;
const waiting = new Map<number, number>(); // timers by id

const PATH = '/api/announcements/{id}';

export function deleteWithUndo({ id, name }: Announcement): void {
  hide(id, true);
  waiting.set(
    id,
    window.setTimeout(() => void finish(id), SECOND_THOUGHTS),
  );
  toast({ text: t.list.deleted(name), stays: SECOND_THOUGHTS - 200, onUndo: () => undo(id) });
}

function undo(id: number): void {
  clearTimeout(waiting.get(id));
  waiting.delete(id);
  hide(id, false);
}

async function finish(id: number): Promise<void> {
  waiting.delete(id);
  if (!(await attempt(() => request('delete', PATH, { path: { id } })))) hide(id, false);
}

function hide(id: number, isHidden: boolean): void {
  if (isHidden) store.leaving.add(id);
  else store.leaving.delete(id);
  store.changed();
}

// The page is left: what was deleted is deleted.
window.addEventListener('pagehide', () => {
  for (const [id, timer] of waiting) {
    clearTimeout(timer);
    deleteInPassing(addressOf(PATH, { id }));
  }
  waiting.clear();
});
