// The database is damaged in any way: nothing altered is ever taken for true, and what can be read is taken over.
// ROUNDS=300 for a longer run.
import assert from 'node:assert/strict';
import { cpSync, existsSync, readFileSync, readdirSync, rmSync, truncateSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { allow } from '../system/harness/waits.mjs';
import { randomFrom, seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 30);
const page = 4096;

const change = (file, act) => {
  const bytes = readFileSync(file);
  act(bytes);
  writeFileSync(file, bytes);
};

const damages = {
  'a bit is flipped': (file, random) =>
    change(file, (bytes) => {
      bytes[random.below(bytes.length)] ^= 1 << random.below(8);
    }),
  'some bytes are others': (file, random) =>
    change(file, (bytes) => {
      const begin = random.below(bytes.length);
      for (let at = begin; at < Math.min(bytes.length, begin + 64); ++at) bytes[at] = random.below(256);
    }),
  'a sector is empty': (file, random) =>
    change(file, (bytes) => {
      const begin = random.below(Math.ceil(bytes.length / 512)) * 512;
      bytes.fill(0, begin, Math.min(bytes.length, begin + 512));
    }),
  'a page is another one': (file, random) =>
    change(file, (bytes) => {
      const count = Math.floor(bytes.length / page);
      bytes.copy(bytes, random.below(count) * page, random.below(count) * page, page);
    }),
  'it is cut short': (file, random) => truncateSync(file, random.below(readFileSync(file).length)),
  'it is gone': (file) => rmSync(file),
};

// Each announcement as a text, by id.
async function announcementsIn(house) {
  const { announcements } = await house.get('/api/announcements');
  return new Map(announcements.map((one) => [one.id, JSON.stringify({ ...one, tag: undefined })]));
}

// Fills a house; keeps what each announcement has been at any time, for a damaged log may end early.
async function fill(house) {
  const ever = new Map();
  const note = async () => {
    for (const [id, text] of await announcementsIn(house)) ever.set(id, (ever.get(id) ?? new Set()).add(text));
  };
  await house.start();
  for (let number = 1; number <= 40; ++number) {
    await house.add({ name: `Name ${number}`, video: { text: `${number} `.repeat(300) }, tags: ['a', 'b'] });
    if (number % 10 === 0) await note();
  }
  assert.equal(await house.stop(), 0);
  cpSync(join(house.folder, 'data'), join(house.folder, 'ended'), { recursive: true });
  await house.start();
  for (const id of [3, 17, 40])
    assert.equal((await house.ask('PUT', `/api/announcements/${id}`, { name: `Other ${id}` })).status, 200);
  assert.equal((await house.ask('PUT', '/api/rooms/1/volume', { volume: 55 })).status, 200);
  await note();
  await house.stop('SIGKILL');
  cpSync(join(house.folder, 'data'), join(house.folder, 'killed'), { recursive: true });
  return ever;
}

async function holdsNothingAltered(house, ever) {
  const found = await announcementsIn(house);
  for (const [id, text] of found) assert.ok(ever.get(id)?.has(text), `announcement ${id} is altered: ${text}`);
  for (const volume of await house.volumes()) assert.ok(volume >= 0 && volume <= 100, `volume ${volume}`);
  return found.size;
}

// Starts it; with --recover when it is refused, and then once more without.
async function startAnyhow(house, ever) {
  const first = await house.start().then(
    () => true,
    () => false,
  );
  if (first) return { isRefused: false, count: await holdsNothingAltered(house, ever) };
  const [status, signal] = await house.program.end();
  assert.deepEqual([status, signal], [3, null], house.output);
  assert.match(house.output, /--recover/);
  await house.start({ words: ['--recover'] });
  const count = await holdsNothingAltered(house, ever);
  assert.equal(await house.stop(), 0);
  // Only behind its end has all that it printed been read.
  if (count < ever.size) assert.match(house.output, /Lost: |Nothing could be read|no database any more/);
  await house.start();
  assert.equal(await holdsNothingAltered(house, ever), count);
  return { isRefused: true, count };
}

test(`damaged ${rounds} times in any way, nothing altered is taken for true and the rest is taken over`, async (t) => {
  allow(60000 + 30000 * rounds, t.name);
  const random = randomFrom(seed);
  const house = new House([{ output: 'silent' }]);
  const data = join(house.folder, 'data');
  let refused = 0;
  let partly = 0;
  try {
    const ever = await fill(house);
    for (let number = 1; number <= rounds; ++number) {
      const base = random.one(['ended', 'killed']);
      rmSync(data, { recursive: true });
      cpSync(join(house.folder, base), data, { recursive: true });
      const files = readdirSync(data).filter((name) => /^controller\.db(-wal)?$/.test(name));
      const file = random.one(files);
      const damage = random.one(Object.keys(damages));
      damages[damage](join(data, file), random.branch());
      try {
        const { isRefused, count } = await startAnyhow(house, ever);
        refused += isRefused ? 1 : 0;
        partly += isRefused && count > 0 ? 1 : 0;
        assert.equal(await house.stop(), 0);
        if (isRefused && existsSync(join(data, file)))
          assert.ok(readdirSync(data).some((name) => name.includes('.damaged-')) || damage === 'it is gone');
      } catch (error) {
        error.message = `SEED=${seed}, round ${number}, ${base}, in ${file} ${damage}: ${error.message}\n${house.output}`;
        throw error;
      }
    }
    if (rounds >= 30) assert.ok(refused > 0 && partly > 0, `${refused} refused, ${partly} recovered in part`);
  } finally {
    await house.remove();
  }
});
