// Outputs of three kinds are taken away, given back, stopped and made to refuse at random moments of announcements, and the
// controller is killed: the rooms beside them play whole, all volumes are what they were, nothing is left open. ROUNDS=1000
// for a longer run: so often each kind is hit.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Program } from '../system/harness/program.mjs';
import { allow } from '../system/harness/waits.mjs';
import { seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 50);
// A network and disks of its own.
const inside = ['--net', '--mount', '--'];
const skip =
  spawnSync('unshare', [...inside, 'sh', '-c', 'ip link set lo up && mount -t tmpfs tmpfs /mnt']).status === 0
    ? false
    : 'namespaces are not allowed here';

test(`zones, pipes and disks are hit ${rounds} times each, and touch no other room`, { skip }, async (t) => {
  allow(60000 + 30000 * rounds, t.name);
  const env = { ...process.env, ROUNDS: `${rounds}`, SEED: `${seed}` };
  delete env.NODE_TEST_CONTEXT;
  const network = 'ip link set lo up && ip route add 239.0.0.0/8 dev lo && exec "$@"';
  const words = [
    ...inside,
    'sh',
    '-c',
    network,
    'sh',
    process.execPath,
    fileURLToPath(new URL('rooms.mjs', import.meta.url)),
  ];
  const program = new Program('unshare', words, { env });
  const [status] = await program.ended;
  t.diagnostic(/^SEED=.*$/m.exec(program.printed)?.[0] ?? 'no round');
  assert.equal(status, 0, `SEED=${seed}: ${program.state()}`);
});
