// Several write, announcements play, and the program is killed, ended, stopped at random moments: what it has
// acknowledged is there at the next start. ROUNDS=700 for a longer run.
import assert from 'node:assert/strict';
import { readdirSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { clip, rate } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { randomFrom, seed } from './random.mjs';
import { Writer } from './writer.mjs';

const rounds = Number(process.env.ROUNDS ?? 30);
const writers = [1, 2, 3];

// Two rooms that announcements are played in, and one for each writer.
const rooms = [{}, {}, ...writers.map(() => ({ output: 'silent' }))];
const variables = `variables:
${writers.map((one) => `  - {device: 9, variable: ${one}, name: Variable ${one}, value: new}\n`).join('')}`;

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// How the program is brought to its end; gives the status or signal that it must end with, null for either.
const ends = {
  killed: (house) => {
    house.process.kill('SIGKILL');
    return 'SIGKILL';
  },
  ended: (house) => {
    house.process.kill('SIGTERM');
    return 0;
  },
  'killed while it ends': async (house, random) => {
    house.process.kill('SIGTERM');
    await pause(random.below(100));
    house.process.kill('SIGKILL');
    return null;
  },
  'killed while it is stopped': async (house, random) => {
    house.process.kill('SIGSTOP');
    await pause(random.below(300));
    house.process.kill('SIGKILL');
    return 'SIGKILL';
  },
  'killed after it was stopped and went on': async (house, random) => {
    house.process.kill('SIGSTOP');
    await pause(random.below(1000));
    house.process.kill('SIGCONT');
    await pause(random.below(300));
    house.process.kill('SIGKILL');
    return 'SIGKILL';
  },
};

// What waited is kept over the end, and would now be played.
async function quieten(house) {
  for (const { entry } of (await house.get('/api/queue')).queue) await house.ask('DELETE', `/api/queue/${entry}`);
  await house.ask('POST', '/api/stop');
  while ((await house.get('/api/status')).playing !== null) await pause(50);
}

async function check(house, all) {
  await quieten(house);
  const list = (await house.get('/api/announcements')).announcements;
  const found = new Map(list.map((one) => [one.id, one]));
  assert.equal(found.size, list.length, 'an id twice');
  const rows = async (path, key, id, value) =>
    new Map((await house.get(path))[key].map((one) => [one[id], one[value]]));
  const settings = {
    variables: await rows('/api/variables', 'variables', 'variable', 'value'),
    volumes: await rows('/api/rooms', 'rooms', 'id', 'volume'),
  };
  let known = 0;
  for (const writer of all) known += await writer.check(found, settings);
  assert.equal(found.size, known, 'announcements of nobody');
  assert.deepEqual(
    [1, 2].map((id) => settings.volumes.get(id)),
    [40, 40],
    "a room was left at an announcement's volume",
  );
  const files = readdirSync(join(house.folder, 'media'));
  const isSound = (name) => name === 'clip.wav' || /^sound-\d\.wav$/.test(name);
  assert.deepEqual(
    files.filter((name) => !isSound(name)),
    [],
    'left behind by uploads and tests',
  );
}

// The writers work until the program is gone. What they throw in the meantime counts, what its end brings does not.
async function round(house, all, random) {
  let isEnding = false;
  const works = all.map((writer) =>
    writer.work().catch((error) => {
      if (!isEnding || error.code === 'ERR_ASSERTION') throw error;
    }),
  );
  const together = Promise.all(works);
  together.catch(() => {});
  // Soon, in the first writes; or later, when rooms are set up or a sound plays.
  await Promise.race([pause(random.below(2) === 0 ? random.below(700) : 700 + random.below(2000)), together]);
  isEnding = true;
  const how = random.one(Object.keys(ends));
  const due = await ends[how](house, random);
  const [status, signal] = await house.program.end();
  await together;
  assert.doesNotMatch(house.output, /mistake of this program/);
  if (due !== null) assert.equal(signal ?? status, due, how);
}

test(`brought to its end ${rounds} times, in any way and at any moment, the house has all that it acknowledged`, async (t) => {
  allow(30000 * Math.max(rounds, 10), t.name);
  const random = randomFrom(seed);
  const house = new House(rooms, '', variables);
  house.sound('clip', clip(rate / 4));
  const all = writers.map((number) => new Writer(house, number, random.branch()));
  let restored = 0;
  try {
    for (let number = 1; number <= rounds; ++number) {
      try {
        await house.start();
        await check(house, all);
        if (/left in the middle of an announcement/.test(house.output)) ++restored;
        await round(house, all, random);
      } catch (error) {
        error.message = `SEED=${seed}, round ${number}: ${error.message}\n${house.output.slice(-4000)}`;
        throw error;
      }
    }
    await house.start();
    await check(house, all);
    assert.equal(await house.stop(), 0);
    assert.ok(restored > 0 || rounds < 20, 'no kill hit an announcement that had set up a room');
  } finally {
    await house.remove();
  }
});
