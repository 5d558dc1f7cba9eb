// The disk fails once under the database, at any write or sync: the start is refused with the reason, or a change is
// answered 507; what was acknowledged is there at the next start. ROUNDS=200 for a longer run.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { allow } from '../system/harness/waits.mjs';

const rounds = Number(process.env.ROUNDS ?? 30);
const changes = 8;
const kinds = ['sync %d EIO', 'write %d EIO', 'write %d ENOSPC', 'write %d half'];

async function startIsRefused(house, env) {
  try {
    await house.start({ env });
    return false;
  } catch (error) {
    const [status, signal] = await house.program.end();
    assert.equal(signal, null, error.message);
    assert.ok([1, 3].includes(status), `status ${status}: ${house.output}`);
    assert.match(house.output, /controller\.db.*(cannot be|I\/O|full|damaged)/, house.output);
    return true;
  }
}

// Gives what was acknowledged, and what was answered 507.
async function change(house) {
  const kept = [];
  const unsure = [];
  for (let number = 1; number <= changes; ++number) {
    const name = `Name ${number}`;
    const { status, text } = await house.ask('POST', '/api/announcements', { name, video: { text: 'x'.repeat(3000) } });
    assert.ok([201, 507].includes(status), text);
    (status === 201 ? kept : unsure).push(name);
  }
  return { kept, unsure };
}

async function namesIn(house) {
  return (await house.get('/api/announcements')).announcements.map(({ name }) => name);
}

async function round(fault) {
  const house = new House([{ output: 'silent' }]);
  try {
    const env = { LD_PRELOAD: process.env.FAILING_DISK, DISK_FAILS: fault };
    const isRefused = await startIsRefused(house, env);
    if (isRefused) await house.start();
    const { kept, unsure } = await change(house);
    assert.ok(unsure.length <= 1 && !(isRefused && unsure.length > 0), `507 for ${unsure.join(', ')}`);
    // A failed one is written along with the next that succeeds.
    const all = await namesIn(house);
    assert.equal(all.length, changes);
    await house.stop('SIGKILL');
    await house.start();
    const found = await namesIn(house);
    for (const name of kept) assert.ok(found.includes(name), `${name} was acknowledged`);
    assert.ok(found.every((name) => kept.includes(name) || unsure.includes(name)));
    return isRefused ? 'refused' : unsure.length > 0 ? 'answered 507' : 'unnoticed';
  } catch (error) {
    error.message = `${fault}: ${error.message}\n${house.output}`;
    throw error;
  } finally {
    await house.remove();
  }
}

test(
  `the disk failing once in ${rounds} ways, all that was acknowledged is there`,
  { skip: process.env.SANITIZERS && 'the sanitizer must be loaded before the failing disk' },
  async (t) => {
    allow(60000 + 20000 * rounds, t.name);
    const ends = new Set();
    for (let number = 0; number < rounds; ++number) {
      const kind = kinds[number % kinds.length];
      // The first calls one by one, for they are the start's; then further and further on.
      const call = 1 + Math.floor(number / kinds.length) * (number < 16 ? 1 : 3);
      ends.add(await round(kind.replace('%d', `${call}`)));
    }
    if (rounds >= 30) assert.ok(ends.has('refused') && ends.has('answered 507'), `only ${[...ends].join(', ')}`);
  },
);
