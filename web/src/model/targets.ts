// Where one has announced last, and with which voice: what the next time begins with.

const KEY = 'announcement-said';

export interface Targets {
  rooms: number[];
  screens: number[];
  voice: string; // empty: the house's own
}

const nowhere: Targets = { rooms: [], screens: [], voice: '' };

/** Those that were kept, as far as the house still has them; in a house of one room that room. */
export function targetsFrom(text: string | null, rooms: number[], screens: number[]): Targets {
  const kept = parsed(text);
  if (!kept) return { ...nowhere, rooms: rooms.length === 1 ? rooms : [] };
  return {
    rooms: rooms.filter((id) => kept.rooms.includes(id)),
    screens: screens.filter((id) => kept.screens.includes(id)),
    voice: kept.voice,
  };
}

function parsed(text: string | null): Targets | null {
  try {
    const found = JSON.parse(text ?? '') as Partial<Record<keyof Targets, unknown>> | null;
    if (!found || !Array.isArray(found.rooms) || !Array.isArray(found.screens)) return null;
    return {
      rooms: found.rooms as number[],
      screens: found.screens as number[],
      voice: typeof found.voice === 'string' ? found.voice : '',
    };
  } catch {
    return null;
  }
}

/** In, when it is out; out, when it is in. */
export const toggled = (ids: number[], id: number): number[] =>
  ids.includes(id) ? ids.filter((one) => one !== id) : [...ids, id].sort((one, other) => one - other);

export function keptTargets(): string | null {
  try {
    return localStorage.getItem(KEY);
  } catch {
    return null;
  }
}

export function keepTargets(targets: Targets): void {
  try {
    localStorage.setItem(KEY, JSON.stringify(targets));
  } catch {
    // The next time begins with none, then.
  }
}
