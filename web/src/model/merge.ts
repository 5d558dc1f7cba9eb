// Two people have changed the same announcement: what both of them wanted, where that goes together.

import type { AnnouncementBody } from '../api/objects';

/** A field, or one room or screen: where it stands, and what is there, as text. */
type Leaves = Map<string, string>;

interface Target {
  id: number;
}

const targets = (kind: string, list: Target[]): [string, string][] =>
  list.map((one) => [`${kind} ${one.id}`, JSON.stringify(one)]);

function leavesOf({ audio, video, rooms, navigators, tags, urgent, name }: AnnouncementBody): Leaves {
  const fields: [string, unknown][] = [
    ['name', name],
    ['tags', tags ?? []],
    ['urgent', urgent ?? false],
    ...Object.entries(audio).map(([key, value]): [string, unknown] => [`audio ${key}`, value]),
    ...Object.entries(video).map(([key, value]): [string, unknown] => [`video ${key}`, value]),
  ];
  return new Map([
    ...fields.map(([place, value]): [string, string] => [place, JSON.stringify(value)]),
    ...targets('room', rooms),
    ...targets('screen', navigators),
  ]);
}

/** What both have made of `base`; null where they have changed the same to something different. */
export function merged(
  base: AnnouncementBody,
  mine: AnnouncementBody,
  theirs: AnnouncementBody,
): AnnouncementBody | null {
  const [was, own, other] = [leavesOf(base), leavesOf(mine), leavesOf(theirs)];
  const taken: Leaves = new Map();
  for (const place of new Set([...was.keys(), ...own.keys(), ...other.keys()])) {
    const [before, one, two] = [was.get(place), own.get(place), other.get(place)];
    if (one !== before && two !== before && one !== two) return null;
    const value = one === before ? two : one;
    if (value !== undefined) taken.set(place, value);
  }
  return bodyOf(taken);
}

function bodyOf(leaves: Leaves): AnnouncementBody {
  const under = (kind: string): [string, unknown][] =>
    [...leaves]
      .filter(([place]) => place.startsWith(`${kind} `))
      .map(([place, text]) => [place.slice(kind.length + 1), JSON.parse(text) as unknown]);
  const list = <T extends Target>(kind: string): T[] =>
    under(kind)
      .map(([, value]) => value as T)
      .sort((one, two) => one.id - two.id);
  return {
    name: JSON.parse(leaves.get('name') ?? '""') as string,
    audio: Object.fromEntries(under('audio')) as AnnouncementBody['audio'],
    video: Object.fromEntries(under('video')) as AnnouncementBody['video'],
    rooms: list('room'),
    navigators: list('screen'),
    tags: JSON.parse(leaves.get('tags') ?? '[]') as string[],
    urgent: JSON.parse(leaves.get('urgent') ?? 'false') as boolean,
  };
}
