// Recordings that are sent once: they go from the media folder when they have been heard, also after a reload.

import { Problem, request } from '../api/request';

const KEY = 'announcement-passing';

function kept(): string[] {
  try {
    const names: unknown = JSON.parse(localStorage.getItem(KEY) ?? '[]');
    return Array.isArray(names) ? names.filter((one): one is string => typeof one === 'string') : [];
  } catch {
    return [];
  }
}

function keep(names: string[]): void {
  try {
    localStorage.setItem(KEY, JSON.stringify(names));
  } catch {
    // It stays in the media folder, then, where people see it and can delete it.
  }
}

export const notePassing = (name: string): void => keep([...kept(), name]);

/** Deletes those that were heard; to be called while nothing plays or waits. */
export async function forgetPassing(): Promise<void> {
  for (const name of kept()) {
    try {
      await request('delete', '/api/media/{name}', { path: { name } });
    } catch (problem) {
      if (!(problem instanceof Problem) || problem.status !== 404) continue;
    }
    keep(kept().filter((one) => one !== name));
  }
}
