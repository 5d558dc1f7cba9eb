// What breaks around the controller: it says so, the rest of the house goes on, and nothing is left behind.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { chmodSync, closeSync, mkdirSync, mkdtempSync, openSync, rmSync, truncateSync, writeFileSync } from 'node:fs';
import { once } from 'node:events';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { House, within } from '../harness/house.mjs';
import { clip, heard, rate } from '../harness/sounds.mjs';

const short = clip(rate / 2);
const long = clip(2 * rate);
async function inHouse(rooms, body) {
  const house = new House(rooms);
  try {
    house.sound('short', short);
    house.sound('long', long);
    await house.start();
    await body(house);
  } finally {
    await house.remove();
  }
}

async function troubles(house) {
  return (await house.get('/api/rooms')).rooms.map((room) => room.trouble !== null);
}

test('without a sound card a room says that it cannot be heard before an announcement is lost there', () =>
  inHouse([{ output: 'auto' }, { output: 'silent' }], async (house) => {
    await house.program.until('that the room cannot be heard', (output) =>
      /^Room 1 cannot be heard: this machine has no sound device/m.test(output),
    );
    const { rooms } = await house.get('/api/rooms');
    assert.deepEqual(
      rooms.map(({ health, trouble, trouble_means: means }) => [health, trouble !== null, means?.code]),
      [
        ['silent', true, 'no_sound_device'],
        ['silent', false, undefined],
      ],
    );
    assert.doesNotMatch(house.output, /Room 2 cannot be heard/);
  }));

test('without a sound card an announcement is silent in real time, which is trouble and no success', () =>
  inHouse([{ output: 'auto' }], async (house) => {
    const start = process.hrtime.bigint();
    const seen = await house.playToItsEnd(
      await house.add({ audio: { file: 'short' }, rooms: [{ id: 1, volume: 50 }] }),
    );
    assert.ok(process.hrtime.bigint() - start >= 500000000n);
    assert.match(seen.find((event) => event.type === 'sound_ended').data.error, /Room 1: .*no sound device/);
    assert.deepEqual(
      seen.filter((event) => event.type === 'room_output_failed').map((event) => event.data.room),
      [1],
    );
    assert.deepEqual(await troubles(house), [true]);
    assert.match(house.output, /no sound device/);
    assert.deepEqual(await house.volumes(), [40]);
  }));

test('a sound of 20 s is heard whole, and nothing is said against it', () => {
  const longest = clip(20 * rate);
  return inHouse([{}], async (house) => {
    house.sound('longest', longest);
    const seen = await house.playToItsEnd(
      await house.add({ audio: { file: 'longest', delay_ms: 1 }, rooms: [{ id: 1, volume: 100 }] }),
    );
    assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
    assert.deepEqual(house.complaints, []);
    assert.equal(await house.stop(), 0);
    assert.ok(heard(house.recording(1), longest, 100).isWhole);
  });
});

test('an output that refuses leaves the other room whole, and is tried again', () =>
  inHouse([{ output: { gstreamer: 'filesink location=/dev/null/room' } }, {}], async (house) => {
    const id = await house.add({
      audio: { file: 'short' },
      rooms: [
        { id: 1, volume: 50 },
        { id: 2, volume: 100 },
      ],
    });
    for (let round = 1; round <= 2; ++round) {
      const seen = await house.playToItsEnd(id);
      assert.deepEqual(
        seen.filter((event) => event.type === 'room_output_failed').map((event) => event.data.room),
        [1],
      );
      assert.deepEqual(await troubles(house), [true, false]);
    }
    assert.equal(await house.stop(), 0);
    assert.ok(heard(house.recording(2, 1), short, 100).isWhole);
    assert.ok(heard(house.recording(2, 2), short, 100).isWhole);
  }));

// A server on a free port, closed when the test is over.
async function serve(t, take) {
  const server = createServer(take).listen(0, '127.0.0.1');
  t.after(() => server.close());
  await within('a free port', once(server, 'listening'));
  return server.address().port;
}

test('an output that vanishes in mid-play leaves the other room whole', async (t) => {
  const port = await serve(t, (socket) => {
    socket.on('error', () => {});
    socket.once('data', () => socket.resetAndDestroy());
  });
  const output = { gstreamer: `tcpclientsink host=127.0.0.1 port=${port} sync=true` };
  await inHouse([{ output }, {}], async (house) => {
    const seen = await house.playToItsEnd(
      await house.add({
        audio: { file: 'long' },
        rooms: [
          { id: 1, volume: 50 },
          { id: 2, volume: 100 },
        ],
      }),
    );
    assert.deepEqual(
      seen.filter((event) => event.type === 'room_output_failed').map((event) => event.data.room),
      [1],
    );
    assert.deepEqual(await house.volumes(), [40, 40]);
    assert.equal(await house.stop(), 0);
    assert.ok(heard(house.recording(2), long, 100).isWhole);
  });
});

test('outputs that hang while opening or in mid-play leave the other room whole and the house answering', async (t) => {
  const folder = mkdtempSync(join(tmpdir(), 'controller-pipes-'));
  const [opening, playing] = ['opening', 'playing'].map((name) => join(folder, name));
  execFileSync('mkfifo', [opening, playing]);
  // Held open, and never read.
  const reader = openSync(playing, 'r+');
  t.after(() => {
    closeSync(reader);
    rmSync(folder, { recursive: true });
  });
  const rooms = [opening, playing].map((pipe) => ({ output: { gstreamer: `filesink location=${pipe}` } }));
  await inHouse([...rooms, {}], async (house) => {
    const seen = await house.playToItsEnd(
      await house.add({ audio: { file: 'long' }, rooms: [1, 2, 3].map((id) => ({ id, volume: 100 })) }),
    );
    const failed = seen.filter((event) => event.type === 'room_output_failed').map((event) => event.data.room);
    assert.deepEqual([...new Set(failed)].sort(), [1, 2]);
    assert.deepEqual(await house.volumes(), [40, 40, 40]);
    assert.equal((await house.ask('GET', '/healthz')).status, 200);
    assert.equal(await house.stop(), 0);
    assert.ok(heard(house.recording(3), long, 100).isWhole);
  });
});

test('a file that is missing, cut short, or no sound is told, and the next announcement is heard', () =>
  inHouse([{}], async (house) => {
    writeFileSync(join(house.folder, 'media', 'text.wav'), 'These are words and no sound.\n');
    house.sound('cut', long);
    truncateSync(join(house.folder, 'media', 'cut.wav'), 50000);
    for (const file of ['missing', 'text', 'cut']) {
      const seen = await house.playToItsEnd(await house.add({ audio: { file }, rooms: [{ id: 1, volume: 90 }] }));
      assert.ok(seen.find((event) => event.type === 'sound_ended').data.error.length > 0, file);
      assert.deepEqual(await house.volumes(), [40]);
    }
    const seen = await house.playToItsEnd(
      await house.add({ audio: { file: 'short' }, rooms: [{ id: 1, volume: 90 }] }),
    );
    assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
    const outcomes = (await house.get('/api/history')).history.map((entry) => entry.outcome.split(':')[0]);
    assert.deepEqual(outcomes, ['ended', 'failed', 'failed', 'failed']);
  }));

const harms = {
  removed: (file) => rmSync(file),
  'cut short': (file) => truncateSync(file, 44),
  'overwritten with words': (file) => writeFileSync(file, 'words'),
};
for (const [harm, act] of Object.entries(harms))
  test(`a file that is ${harm} while it plays ends the announcement in order`, () =>
    inHouse([{}], async (house) => {
      const id = await house.add({ audio: { file: 'long' }, rooms: [{ id: 1, volume: 90 }] });
      const events = await house.watch();
      await house.play(id);
      await events.until('sound_started');
      act(join(house.folder, 'media', 'long.wav'));
      await events.until('announcement_ended');
      assert.deepEqual(await house.volumes(), [40]);
      const seen = await house.playToItsEnd(
        await house.add({ audio: { file: 'short' }, rooms: [{ id: 1, volume: 90 }] }),
      );
      assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
    }));

test('navigators that are gone, slow, or flood the house keep the popup from nobody else', () =>
  inHouse(undefined, async (house) => {
    const page = (id) => house.watch(`/api/navigators/${id}/events`);
    const [gone, slow, flooding, good] = [await page(11), await page(11), await page(11), await page(12)];
    gone.socket.terminate();
    slow.socket.pause();
    for (let count = 0; count < 20000; ++count) flooding.socket.send('x'.repeat(100), () => {});
    const id = await house.add({
      navigators: [
        { id: 11, room: 1 },
        { id: 12, room: 1 },
      ],
      video: { text: 'Hello', timeout_ms: 1000 },
    });
    for (let round = 0; round < 3; ++round) {
      await house.playToItsEnd(id);
      assert.equal((await good.until('popup_shown')).popup.message, 'Hello');
      await good.until('popup_hidden');
    }
    await flooding.untilClosed();
    const again = await page(11);
    assert.equal((await again.until('state')).navigator.id, 11);
  }));

test('a full disk is told with 507, the change stands in memory, and on the disk as soon as there is room', () =>
  inHouse(undefined, async (house) => {
    const limit = (bytes) => execFileSync('prlimit', ['--pid', `${house.process.pid}`, `--fsize=${bytes}:unlimited`]);
    const events = await house.watch();
    await house.add({ name: 'Before' });
    limit(0);
    const refused = await house.ask('POST', '/api/announcements', { name: 'In memory' });
    assert.equal(refused.status, 507, refused.text);
    const names = async () => (await house.get('/api/announcements')).announcements.map((one) => one.name);
    assert.deepEqual(await names(), ['Before', 'In memory']);
    const status = await house.get('/api/status');
    assert.equal(status.state_saved, false);
    assert.ok(status.state_error.length > 0);
    await events.until('state_not_saved');
    limit('unlimited');
    await events.until('state_saved');
    assert.equal(await house.stop('SIGKILL'), 'SIGKILL');
    await house.start();
    assert.deepEqual(await names(), ['Before', 'In memory']);
  }));

test('a data folder that cannot be written stops the start with what to do', async () => {
  const house = new House();
  try {
    mkdirSync(join(house.folder, 'data'), { mode: 0o555 });
    const { status, output } = await house.run([house.file], { isBound: true });
    assert.equal(status, 1);
    assert.match(output, /data folder .*data cannot be written: Permission denied; its owner must be the user/);
  } finally {
    await house.remove();
  }
});

test('a damaged database stops the start, and --recover goes on with what can be read', async () => {
  const house = new House();
  try {
    await house.start();
    await house.add({ name: 'Kept' });
    assert.equal(await house.stop(), 0);
    writeFileSync(join(house.folder, 'data', 'controller.db'), Buffer.alloc(100, 'x'), { flag: 'r+' });
    const { status, output } = await house.run([house.file]);
    assert.equal(status, 3);
    assert.match(output, /damaged.*--recover/);
    await house.start({ words: ['--recover'] });
    await house.program.until('what became of the database', (output) => /set aside as/.test(output));
    assert.equal((await house.ask('POST', '/api/announcements', { name: 'New' })).status, 201);
  } finally {
    await house.remove();
  }
});

test('a module that is missing, no module, or without its entry stops the start with its name', async () => {
  const house = new House();
  try {
    const text = join(house.folder, 'text.so');
    writeFileSync(text, 'words');
    const wholesome = execFileSync('sh', ['-c', 'ldd "$CONTROLLER" | awk \'/libstdc/ {print $3}\'']).toString().trim();
    for (const module of ['/nowhere/agent.so', text, wholesome]) {
      const { status, output } = await house.run([house.file, '--module', module]);
      assert.equal(status, 1, output);
      assert.ok(output.includes(module), output);
    }
  } finally {
    await house.remove();
  }
});

test('a port in use stops the start with its number', async (t) => {
  const port = await serve(t);
  const house = new House();
  try {
    const { status, output } = await house.run([house.file, '--port', `${port}`]);
    assert.equal(status, 1);
    assert.match(output, new RegExp(`\\b${port}\\b`));
  } finally {
    await house.remove();
  }
});

test('a command for an announcement, room or navigator that does not exist changes nothing', () =>
  inHouse(undefined, async (house) => {
    const before = await house.get('/api/status');
    for (const [method, path, body] of [
      ['POST', '/api/announcements/77/play'],
      ['DELETE', '/api/announcements/77'],
      ['PUT', '/api/announcements/77/rooms/1', { volume: 3 }],
      ['PUT', '/api/rooms/77/volume', { volume: 3 }],
      ['POST', '/api/navigators/77/popups/1/ok'],
    ])
      assert.equal((await house.ask(method, path, body)).status, 404, path);
    await house.ask('POST', '/api/commands/execute_announcement', { id: '77' });
    const { playing, waiting, popups } = await house.get('/api/status');
    assert.deepEqual({ playing, waiting, popups }, { playing: before.playing, waiting: [], popups: [] });
    await house.playToItsEnd(await house.add({ audio: { file: 'short' }, rooms: [{ id: 1, volume: 9 }] }));
  }));
