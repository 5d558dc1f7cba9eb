// Outputs of three kinds are taken away, given back, stopped and made to refuse at random moments of announcements, and the
// controller is killed: the rooms beside them play whole, all volumes are what they were, nothing is left open. ROUNDS=1000
// for a longer run: so often each kind is hit, and the controller killed. LANES houses at a time.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Program } from '../system/harness/program.mjs';
import { allow } from '../system/harness/waits.mjs';
import { seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 50);
const lanes = Math.min(rounds, Number(process.env.LANES ?? 6));
// Each announcement brings so many faults of a kind; in so many of them the controller is killed.
const each = 5;
// A network and disks of its own.
const inside = ['--net', '--mount', '--'];
const skip =
  spawnSync('unshare', [...inside, 'sh', '-c', 'ip link set lo up && mount -t tmpfs tmpfs /mnt']).status === 0
    ? false
    : 'namespaces are not allowed here';

const network = 'ip link set lo up && ip route add 239.0.0.0/8 dev lo && exec "$@"';
const attack = fileURLToPath(new URL('rooms.mjs', import.meta.url));

async function runLane(lane) {
  const ofAll = (count) => `${Math.ceil(count / lanes)}`;
  const words = [process.execPath, attack, `${lane}`, ofAll(rounds), ofAll(rounds / each)];
  const env = { ...process.env, SEED: `${seed}` };
  delete env.NODE_TEST_CONTEXT;
  const program = new Program('unshare', [...inside, 'sh', '-c', network, 'sh', ...words], { env });
  const [status] = await program.ended;
  assert.equal(status, 0, `SEED=${seed}, lane ${lane}: ${program.state()}`);
  return JSON.parse(/^counts: (.*)$/m.exec(program.printed)[1]);
}

test(`zones, pipes and disks are hit ${rounds} times each, and touch no other room`, { skip }, async (t) => {
  allow(60000 + 30000 * rounds, t.name);
  const ends = await Promise.allSettled(Array.from({ length: lanes }, (_, index) => runLane(index + 1)));
  const failed = ends.find(({ status }) => status === 'rejected');
  if (failed) throw failed.reason;
  const sum = (what) => ends.reduce((all, { value }) => all + value[what], 0);
  t.diagnostic(
    `SEED=${seed}: ${sum('faults')} faults of each kind, ${sum('kills')} kills; the rooms beside them whole in ${sum('whole')}`,
  );
  assert.ok(sum('whole') > 0, `SEED=${seed}: the machine was too slow for every round`);
});
