// Under a service manager: readiness, signs of life, the end.
import assert from 'node:assert/strict';
import { chmodSync, chownSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';
import { Program } from '../harness/program.mjs';
import { clip, rate } from '../harness/sounds.mjs';

// The service manager's end. Node has no datagram sockets of this kind; every Debian has this perl.
const listener = `
use Socket; $| = 1;
socket(my $end, AF_UNIX, SOCK_DGRAM, 0) or die; bind($end, pack_sockaddr_un($ARGV[0])) or die;
print "bound\\n";
while (defined recv($end, my $text, 4096, 0)) { $text =~ s/\\n/|/g; print "$text\\n"; }`;

async function manager(address) {
  const program = new Program('perl', ['-e', listener, address]);
  let taken = 0;
  // The lines that came since the last one that was waited for.
  const lines = () => program.output.split('\n').slice(taken, -1);
  // The first of them that begins with `text`.
  const until = (text) =>
    program.until(text, () => {
      const found = lines().findIndex((line) => line.startsWith(text));
      if (found < 0) return undefined;
      const line = lines()[found];
      taken += found + 1;
      return line;
    });
  await until('bound');
  return {
    until,
    lines,
    forget: () => {
      taken += lines().length;
    },
    end: async () => {
      program.process.kill();
      await program.end();
    },
  };
}

async function underManager(watchdog, body) {
  const house = new House();
  house.sound('clip', clip(rate / 4));
  const address = join(house.folder, 'notify');
  const end = await manager(address);
  try {
    await house.start({ env: { NOTIFY_SOCKET: address, WATCHDOG_USEC: `${watchdog}` } });
    await body(house, end);
  } finally {
    await house.remove();
    await end.end();
  }
}

test('the service manager hears when the house is served, what it plays, and that it ends', () =>
  underManager(20000000, async (house, manager_) => {
    assert.equal(await manager_.until('READY=1'), `READY=1|STATUS=Test house at ${house.base}/`);
    assert.equal((await house.ask('GET', '/healthz')).status, 200);
    const id = await house.add({ audio: { file: 'clip' }, rooms: [{ id: 1, volume: 50 }] });
    await house.playToItsEnd(id);
    assert.match(await manager_.until('STATUS='), new RegExp(`; playing announcement ${id}$`));
    assert.equal(await manager_.until('STATUS='), `STATUS=Test house at ${house.base}/`);
    assert.equal(await house.stop(), 0);
    assert.equal(await manager_.until('STOPPING=1'), 'STOPPING=1|STATUS=Ending');
  }));

test('signs of life come as long as the driver thread works, and no longer', () =>
  underManager(400000, async (house, manager_) => {
    for (let count = 0; count < 3; ++count) await manager_.until('WATCHDOG=1');
    house.process.kill('SIGSTOP');
    // What was under way has arrived; from then on there must be nothing.
    await new Promise((resolve) => setTimeout(resolve, 500));
    manager_.forget();
    await new Promise((resolve) => setTimeout(resolve, 1000));
    assert.deepEqual(manager_.lines(), []);
    house.process.kill('SIGCONT');
    await manager_.until('WATCHDOG=1');
    assert.equal(await house.stop(), 0);
  }));

test('ended in mid-play, the rooms are restored and the state is saved before the program goes', () =>
  underManager(20000000, async (house) => {
    house.sound('long', clip(5 * rate));
    const id = await house.add({ audio: { file: 'long' }, rooms: [{ id: 1, volume: 90 }] });
    const events = await house.watch();
    await house.play(id);
    await events.until('sound_started');
    assert.deepEqual(await house.volumes(), [90, 40]);
    assert.equal(await house.stop('SIGINT'), 0);
    await house.start();
    assert.deepEqual(await house.volumes(), [40, 40]);
    assert.doesNotMatch(house.output, /left in the middle/);
    assert.equal((await house.get('/api/history')).history[0].outcome, 'interrupted');
  }));

test(
  "a token that root adds leaves the house file to the service's owner and group",
  { skip: process.getuid() !== 0 && 'only root can give files away' },
  async () => {
    const house = new House();
    try {
      chownSync(house.file, 65534, 65534);
      chmodSync(house.file, 0o640);
      const { status, output } = await house.run(['token', 'add', 'phone', '--right', 'play', '--house', house.file]);
      assert.equal(status, 0, output);
      const { uid, gid, mode } = statSync(house.file);
      assert.deepEqual({ uid, gid, mode: mode & 0o777 }, { uid: 65534, gid: 65534, mode: 0o640 });
      assert.match((await house.run(['token', 'list', '--house', house.file])).output, /^phone: play$/m);
    } finally {
      await house.remove();
    }
  },
);
