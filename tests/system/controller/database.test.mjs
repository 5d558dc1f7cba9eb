// A database that cannot be used refuses the start, with a status of its own, until somebody has acted.
import assert from 'node:assert/strict';
import { chmodSync, copyFileSync, existsSync, readdirSync, renameSync, rmSync, statSync, truncateSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';

// A house that was killed with one announcement in it: database and write-ahead log stand side by side.
async function killed(body) {
  const house = new House([{}]);
  const file = (companion = '') => join(house.folder, 'data', `controller.db${companion}`);
  try {
    await house.start();
    await house.add({ name: 'Kept' });
    await house.stop('SIGKILL');
    await body(house, file);
  } finally {
    await house.remove();
  }
}

async function names(house) {
  return (await house.get('/api/announcements')).announcements.map((one) => one.name);
}

const harms = {
  missing: [(file) => rmSync(file()), /is damaged \(it is missing, and its write-ahead log is there\)/],
  empty: [(file) => truncateSync(file(), 0), /is damaged \(it is empty\)/],
  'missing with all that stood beside it': [
    (file) => ['', '-wal', '-shm'].forEach((companion) => rmSync(file(companion), { force: true })),
    /is damaged \(it is missing, and controller\.db\.made says that there was one\)/,
  ],
};
for (const [harm, [act, reason]] of Object.entries(harms))
  test(`a database that is ${harm} is no fresh start: status 3, and --recover goes on`, () =>
    killed(async (house, file) => {
      act(file);
      const isLogThere = existsSync(file('-wal'));
      const { status, output } = await house.run([house.file]);
      assert.equal(status, 3, output);
      assert.match(output, reason);
      assert.match(output, /--recover/);
      assert.equal(existsSync(file('-wal')), isLogThere);
      await house.start({ words: ['--recover'] });
      assert.equal((await house.ask('POST', '/api/announcements', { name: 'New' })).status, 201);
      assert.equal(await house.stop(), 0);
      await house.start();
      assert.ok((await names(house)).includes('New'));
    }));

test('put back, it is used again', () =>
  killed(async (house, file) => {
    copyFileSync(file(), file('.away'));
    rmSync(file());
    assert.equal((await house.run([house.file])).status, 3);
    renameSync(file('.away'), file());
    await house.start();
    assert.deepEqual(await names(house), ['Kept']);
  }));

test('a database that cannot be written refuses the start with what to do', () =>
  killed(async (house, file) => {
    for (const companion of ['', '-wal', '-shm']) chmodSync(file(companion), 0o400);
    const { status, output } = await house.run([house.file], { isBound: true });
    assert.equal(status, 3, output);
    assert.match(output, /controller\.db cannot be written\. It, and what stands beside it, must belong to the user/);
  }));

test('what the program keeps is for nobody else to read, whatever the umask', async () => {
  const house = new House([{}]);
  const before = process.umask(0);
  try {
    await house.start();
    await house.add({ name: 'Kept' });
    const mode = (name) => (statSync(join(house.folder, name)).mode & 0o7777).toString(8);
    assert.equal(mode('data'), '700');
    for (const name of readdirSync(join(house.folder, 'data'))) assert.equal(mode(join('data', name)), '600', name);
    const { status } = await house.run(['init', join(house.folder, 'new')]);
    assert.equal(status, 0);
    assert.equal(mode('new/house.yaml'), '600');
  } finally {
    process.umask(before);
    await house.remove();
  }
});

test('the test of a room that a kill interrupts leaves no announcement behind', async () => {
  const house = new House([{}]);
  try {
    await house.start();
    for (let round = 0; round < 8; ++round) {
      const begun = house
        .ask('POST', round % 2 === 0 ? '/api/rooms/1/test' : '/api/navigators/11/test')
        .catch(() => {});
      // Somewhere in its three writes: told, on the disk, played.
      if (round > 0) await new Promise((resolve) => setTimeout(resolve, round * 3));
      await house.stop('SIGKILL');
      await begun;
      await house.start();
      assert.deepEqual(await names(house), []);
    }
  } finally {
    await house.remove();
  }
});
