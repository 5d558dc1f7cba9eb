// Rooms that are players of Home Assistant, which fetch their sound here.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { chmodSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { HomeAssistant } from '../harness/home-assistant.mjs';
import { House } from '../harness/house.mjs';
import { clip, rate } from '../harness/sounds.mjs';

const token = 'eyJ.long.lived';
const samples = clip(rate / 2);

async function withPlayer(body, { tls, url, lines, ...keys } = {}) {
  const assistant = await new HomeAssistant(token, tls).start();
  const output = {
    home_assistant: 'media_player.kitchen',
    url: url ?? assistant.url,
    token_file: 'assistant.token',
    ...keys,
  };
  const house = new House([{ output }, {}], lines);
  try {
    writeFileSync(join(house.folder, 'assistant.token'), `${token}\n`, { mode: 0o600 });
    house.sound('clip', samples);
    await body(house, assistant);
  } finally {
    await assistant.stop();
    await house.remove();
  }
}

const announcement = {
  audio: { file: 'clip', delay_ms: 200 },
  rooms: [
    { id: 1, volume: 35 },
    { id: 2, volume: 100 },
  ],
};

// What `check` says, and how it ends.
const check = (house) => house.run(['check', house.file]);

test('a player fetches the clip as a file, at an address of its own that is gone afterwards', () =>
  withPlayer(async (house, assistant) => {
    assert.equal((await check(house)).status, 0);
    await house.start();
    const id = await house.add(announcement);
    const before = performance.now();
    const events = await house.playToItsEnd(id);
    assert.ok(performance.now() - before > 500, 'it ends by the length of the clip');
    assert.ok(!events.some(({ type }) => type === 'room_output_failed'));
    const [{ service, order, status, type, sound }] = assistant.orders;
    assert.deepEqual([assistant.orders.length, service, status, type], [1, 'play_media', 200, 'audio/wav']);
    const { media_content_id: address, ...rest } = order;
    assert.deepEqual(rest, {
      entity_id: 'media_player.kitchen',
      media_content_type: 'music',
      announce: true,
      extra: { volume: 35 },
    });
    assert.match(address, new RegExp(`^${house.base}/api/once/[0-9a-f]{32}\\.wav$`));
    // 48 kHz, 16 bit, and both channels the clip's one.
    assert.equal(sound.length, 44 + samples.length * 4);
    assert.deepEqual([sound.readUInt16LE(22), sound.readUInt32LE(24), sound.readUInt16LE(34)], [2, rate, 16]);
    samples.forEach((sample, frame) => {
      const at = 44 + frame * 4;
      if (sound.readInt16LE(at) !== sample || sound.readInt16LE(at + 2) !== sample)
        assert.fail(`frame ${frame} is ${sound.readInt16LE(at)}, ${sound.readInt16LE(at + 2)}, not ${sample}`);
    });
    const path = new URL(address).pathname;
    assert.equal((await house.ask('GET', path)).status, 404);
    assert.equal(house.recording(2).filter((sample) => sample !== 0).length > 0, true);
    await house.playToItsEnd(id);
    assert.notEqual(assistant.orders[1].order.media_content_id, address);
    assert.doesNotMatch(house.output, new RegExp(token));
  }));

test('what is wrong is said by check, by the room and in the log, without the token', () =>
  withPlayer(async (house, assistant) => {
    const file = join(house.folder, 'assistant.token');
    chmodSync(file, 0o644);
    const { status, output } = await check(house);
    assert.equal(status, 0);
    assert.match(
      output,
      /rooms\[1\]\.output: warning: everybody on this machine can read the token in .*assistant\.token/,
    );
    chmodSync(file, 0o600);
    assistant.state.state = 'unavailable';
    await house.start();
    const id = await house.add(announcement);
    await house.playToItsEnd(id);
    const [room] = (await house.get('/api/rooms')).rooms;
    assert.equal(room.trouble, `media_player.kitchen is unavailable at ${assistant.url}`);
    assert.equal(room.trouble_means.code, 'player_unavailable');
    assert.equal(assistant.orders.length, 0);
    assistant.state.state = 'idle';
    await house.playToItsEnd(id);
    assert.equal((await house.get('/api/rooms')).rooms[0].trouble, null);
    assert.equal(assistant.orders.length, 1);
    assert.doesNotMatch(house.output, new RegExp(token));
  }));

test('a stop stops the player, and takes its address away at once', () =>
  withPlayer(async (house, assistant) => {
    house.sound('clip', new Int16Array(10 * rate).fill(9000));
    await house.start();
    const events = await house.watch();
    await house.play(await house.add(announcement));
    await house.program.within('an order', assistant.until(1));
    assert.equal((await house.ask('POST', '/api/stop')).status, 200);
    await events.until('announcement_ended');
    await house.program.within('another order', assistant.until(2));
    assert.deepEqual(
      assistant.orders.map(({ service }) => service),
      ['play_media', 'media_stop'],
    );
    assert.deepEqual(assistant.orders[1].order, { entity_id: 'media_player.kitchen' });
    assert.equal((await house.ask('GET', new URL(assistant.orders[0].order.media_content_id).pathname)).status, 404);
  }));

test('over https only a server whose certificate is good gets the token', async () => {
  const other = new House();
  const [key, cert] = ['key.pem', 'cert.pem'].map((name) => join(other.folder, name));
  const words = `req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1`;
  execFileSync('openssl', [...words.split(' '), '-keyout', key, '-out', cert], { stdio: 'ignore' });
  const tls = { key: readFileSync(key), cert: readFileSync(cert) };
  try {
    await withPlayer(
      async (house, assistant) => {
        await house.start();
        const id = await house.add(announcement);
        await house.playToItsEnd(id);
        assert.match((await house.get('/api/rooms')).rooms[0].trouble, /cannot be reached safely: /);
        assert.equal(assistant.orders.length, 0);
        assert.equal(await house.stop(), 0);
        await house.start({ env: { SSL_CERT_FILE: cert } });
        await house.playToItsEnd(id);
        assert.equal((await house.get('/api/rooms')).rooms[0].trouble, null);
        assert.equal(assistant.orders.length, 1);
      },
      { tls },
    );
  } finally {
    await other.remove();
  }
});
