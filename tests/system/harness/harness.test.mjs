// The tests' own tools: what is waited for comes, or is missed with words; and nothing of who runs the tests shows.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { House } from './house.mjs';
import { Program } from './program.mjs';

const runTest = fileURLToPath(new URL('../../run-test', import.meta.url));

test('a wait for a program that ends is over at once, and tells its status and its last words', async () => {
  const program = new Program('sh', ['-c', 'echo last words; exit 3']);
  await assert.rejects(
    program.until('more words', () => false),
    { message: 'waited for more words, but the program has ended with status 3; it printed:\nlast words\n' },
  );
});

test('a house that does not start says why', async () => {
  const house = new House([{ output: 'nonsense' }]);
  try {
    await assert.rejects(house.start(), /waited for the address .* ended with status 2; it printed:[^]*nonsense/);
  } finally {
    await house.remove();
  }
});

test('a wait for an event or a reply ends with the program, and an event that had come before is still taken', async () => {
  const house = new House();
  try {
    await house.start();
    const [events, others] = [await house.watch(), await house.watch()];
    const variable = house.ask('PUT', '/api/variables/9/4', { value: 'warm' });
    await others.until('variable_changed');
    await variable;
    const never = assert.rejects(others.until('announcement_ended'), (error) => {
      assert.match(error.message, /socket was closed, waiting for announcement_ended on \/api\/events, where state/);
      assert.match(error.message, /the program has ended with SIGKILL; it printed:\nTest house/);
      return true;
    });
    await house.stop('SIGKILL');
    await never;
    assert.equal((await events.until('variable_changed')).value, 'warm');
    await assert.rejects(house.get('/api/status'), /GET \/api\/status.*ended with SIGKILL/);
  } finally {
    await house.remove();
  }
});

test('a test gets nothing of the environment that it is run in but what is meant for it', () => {
  const environment = (env) =>
    execFileSync(runTest, ['/nowhere', 'env'], { env: { PATH: process.env.PATH, ...env }, encoding: 'utf8' }).split(
      '\n',
    );
  const foreign = [
    'HOME',
    'LANG',
    'LC_ALL',
    'LC_TIME',
    'TZ',
    'TMPDIR',
    'DISPLAY',
    'WAYLAND_DISPLAY',
    'XDG_RUNTIME_DIR',
    'XDG_CONFIG_HOME',
    'XDG_STATE_HOME',
    'XDG_DATA_DIRS',
    'DBUS_SESSION_BUS_ADDRESS',
    'PULSE_SERVER',
    'PULSE_SINK',
    'PIPEWIRE_REMOTE',
    'GST_REGISTRY',
    'GST_PLUGIN_PATH',
    'GST_PLUGIN_SYSTEM_PATH',
    'GST_DEBUG',
    'http_proxy',
    'HTTPS_PROXY',
    'no_proxy',
    'NODE_OPTIONS',
    'NO_COLOR',
    'EDITOR',
    'ANNOUNCE_TOKEN',
    'NOTIFY_SOCKET',
    'JOURNAL_STREAM',
    'G_MESSAGES_DEBUG',
  ];
  const polluted = Object.fromEntries(foreign.map((name) => [name, 'foreign']));
  assert.deepEqual(environment(polluted), environment({}));
  const meant = { SEED: '1', ROUNDS: '2', LANES: '3', TSAN_OPTIONS: 'a=b' };
  assert.deepEqual(
    environment({ ...polluted, ...meant }).sort(),
    [...environment({}), 'ROUNDS=2', 'SEED=1', 'LANES=3', 'TSAN_OPTIONS=a=b'].sort(),
  );
});
