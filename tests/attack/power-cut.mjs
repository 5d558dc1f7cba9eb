// A disk from which the power was cut: what a recording of writes leaves on it.
import { readFileSync } from 'node:fs';

// What a disk writes as one.
const sector = 512;

// The entries of a recording; `end` is where in it each ends, `file` the file, whatever its name is by then.
export function readRecording(name) {
  const bytes = readFileSync(name);
  const entries = [];
  const names = new Map();
  const fileOf = (path) => {
    if (!names.has(path)) {
      names.set(path, { number: entries.length });
      entries.push({ kind: 'make', path, file: names.get(path), end: at });
    }
    return names.get(path);
  };
  let at = 0;
  while (at < bytes.length) {
    const newline = bytes.indexOf(10, at);
    const [kind, path, one, two] = bytes.toString('latin1', at, newline).split(' ');
    const begin = newline + 1;
    const size = kind === 'write' ? Number(two) : 0;
    const entry = { kind, path, end: begin + size };
    if (kind === 'write') Object.assign(entry, { offset: Number(one), bytes: bytes.subarray(begin, begin + size) });
    if (kind === 'cut') entry.size = Number(one);
    if (kind === 'rename') entry.to = one;
    if (path !== '.') entry.file = fileOf(path);
    entries.push(entry);
    if (kind === 'rename') names.set(one, entry.file);
    if (kind === 'rename' || kind === 'unlink') names.delete(path);
    at = begin + size;
  }
  return entries;
}

const isOfFolder = ({ kind }) => ['make', 'rename', 'unlink'].includes(kind);

// The files under the names that the folder has: all that was done before its last sync, and a part of the rest, in
// order.
function namesLeft(entries, random) {
  const changes = entries.map((entry, index) => ({ entry, index })).filter(({ entry }) => isOfFolder(entry));
  const synced = entries.findLastIndex(({ kind, path }) => kind === 'sync' && path === '.');
  const certain = changes.filter(({ index }) => index < synced).length;
  const names = new Map();
  for (const { entry } of changes.slice(0, certain + random.below(changes.length - certain + 1))) {
    if (entry.kind === 'make') names.set(entry.path, entry.file);
    if (entry.kind === 'rename') names.set(entry.to, entry.file);
    if (entry.kind !== 'make') names.delete(entry.path);
  }
  return names;
}

function shuffled(list, random) {
  const rest = [...list];
  const all = [];
  while (rest.length > 0) all.push(...rest.splice(random.below(rest.length), 1));
  return all;
}

function* sectorsOf(entry) {
  if (entry.kind === 'cut') {
    yield entry;
    return;
  }
  for (let from = 0; from < entry.bytes.length;) {
    const to = Math.min(entry.bytes.length, from + sector - ((entry.offset + from) % sector));
    yield { kind: 'write', offset: entry.offset + from, bytes: entry.bytes.subarray(from, to) };
    from = to;
  }
}

// What becomes of writes that no sync has followed.
const fates = {
  lost: () => [],
  'written in part': (pending, random) => pending.slice(0, random.below(pending.length + 1)),
  'torn in their order': (pending, random) =>
    pending.flatMap((entry) => [...sectorsOf(entry)]).filter(() => random.below(4) > 0),
  'torn in any order': (pending, random) =>
    shuffled(
      pending.flatMap((entry) => [...sectorsOf(entry)]).filter(() => random.below(2) > 0),
      random,
    ),
};
export const fateNames = Object.keys(fates);

function contentOf(writes) {
  const size = Math.max(0, ...writes.map((one) => (one.kind === 'cut' ? one.size : one.offset + one.bytes.length)));
  const content = Buffer.alloc(size);
  let length = 0;
  for (const one of writes) {
    if (one.kind === 'cut') {
      if (one.size < length) content.fill(0, one.size, length);
      length = one.size;
    } else {
      one.bytes.copy(content, one.offset);
      length = Math.max(length, one.offset + one.bytes.length);
    }
  }
  return content.subarray(0, length);
}

// Name and content of each file when the power is cut behind these entries.
export function cutBehind(entries, fate, random) {
  const files = new Map();
  for (const [name, file] of namesLeft(entries, random)) {
    const own = entries.filter((entry) => entry.file === file && ['write', 'cut', 'sync'].includes(entry.kind));
    const synced = own.findLastIndex(({ kind }) => kind === 'sync');
    const isWrite = ({ kind }) => kind !== 'sync';
    const pending = own.slice(synced + 1).filter(isWrite);
    files.set(name, contentOf([...own.slice(0, synced + 1).filter(isWrite), ...fates[fate](pending, random)]));
  }
  return files;
}
