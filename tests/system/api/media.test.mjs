import assert from 'node:assert/strict';
import { readdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { DemoHouse } from '../harness/demo-house.mjs';
import { pngChunk, pngOf, turnedRight } from '../harness/pictures.mjs';

let house;
before(async () => {
  house = await DemoHouse.open();
});
after(() => house.close());

test('media are stored whole, sent back and removed', async () => {
  const sound = new Uint8Array(await (await fetch(`${house.base}/api/media/gong.wav`)).arrayBuffer());
  const type = { 'Content-Type': 'audio/wav' };
  assert.equal((await house.ask('PUT', '/api/media/copy.wav', sound, type)).status, 201);
  assert.equal((await house.ask('PUT', '/api/media/copy.wav', sound, type)).status, 200);
  assert.equal((await house.ask('PUT', '/api/media/cut.wav', sound.slice(0, 4000), type)).status, 422);
  const back = await fetch(`${house.base}/api/media/copy.wav`);
  assert.deepEqual(new Uint8Array(await back.arrayBuffer()), sound);
  assert.equal(
    (await house.ask('GET', '/api/media/copy.wav', undefined, { 'If-None-Match': back.headers.get('etag') })).status,
    304,
  );
  assert.equal((await house.ask('DELETE', '/api/media/copy.wav')).status, 204);
  const { media } = (await house.ask('GET', '/api/media')).body;
  assert.deepEqual(
    media.map((file) => file.name),
    ['doorbell.wav', 'gong.wav'],
  );
});

test('a photo is stored as screens need it, without its place, and shown small; a broken or huge one is refused', async () => {
  const demo = 'announcement-controller/demo';
  const type = { 'Content-Type': 'image/png' };
  const photo = pngOf(2000, 300, [pngChunk('tEXt', Buffer.from('Location\0 51.5N')), pngChunk('eXIf', turnedRight)]);
  const stored = await house.ask('PUT', '/api/media/Our%20garden.jpg', photo, type);
  assert.equal(stored.status, 201, stored.text);
  const { name, kind, width, height, is_converted: isConverted } = stored.body;
  assert.deepEqual([name, kind, width, height, isConverted], ['Our-garden.png', 'image', 288, 1920, true]);
  const { media } = (await house.ask('GET', '/api/media')).body;
  const listed = media.find((file) => file.name === name);
  assert.deepEqual([listed.width, listed.height], [288, 1920]);
  const back = await fetch(`${house.base}/api/media/${name}`);
  assert.equal(Buffer.from(await back.arrayBuffer()).indexOf('51.5N'), -1);
  const small = `/api/media/${name}/thumbnail`;
  const thumbnail = await fetch(house.base + small);
  assert.deepEqual([thumbnail.status, thumbnail.headers.get('content-type')], [200, 'image/jpeg']);
  assert.equal(thumbnail.headers.get('cache-control'), 'private, no-cache');
  const tag = thumbnail.headers.get('etag');
  assert.equal((await house.ask('GET', small, undefined, { 'If-None-Match': tag })).status, 304);
  assert.equal((await house.ask('GET', '/api/media/gong.wav/thumbnail')).status, 404);

  assert.equal((await house.ask('PUT', '/api/media/cut.png', photo.subarray(0, 400), type)).body.code, 'damaged');
  const huge = pngOf(100000, 100000);
  assert.equal((await house.ask('PUT', '/api/media/huge.png', huge, type)).body.code, 'too_large');

  writeFileSync(join(house.folder, demo, 'media', 'by-hand.png'), pngOf(640, 320));
  assert.equal((await fetch(`${house.base}/api/media/by-hand.png/thumbnail`)).status, 200);
  for (const file of [name, 'by-hand.png']) {
    assert.equal((await house.ask('DELETE', `/api/media/${file}`)).status, 204);
    assert.equal((await house.ask('GET', `/api/media/${file}/thumbnail`)).status, 404);
  }
  assert.deepEqual(readdirSync(join(house.folder, demo, 'data', 'thumbnails')), []);
});

test('a file that an announcement uses is not removed, and the reply names who uses it', async () => {
  const sound = new Uint8Array(await (await fetch(`${house.base}/api/media/gong.wav`)).arrayBuffer());
  await house.ask('PUT', '/api/media/used.wav', sound, { 'Content-Type': 'audio/wav' });
  const { id } = (await house.ask('POST', '/api/announcements', { name: 'User', audio: { file: 'used' } })).body;
  const refused = await house.ask('DELETE', '/api/media/used.wav');
  assert.equal(refused.status, 409);
  assert.deepEqual(refused.body.users, [{ id, name: 'User' }]);
  assert.equal((await fetch(`${house.base}/api/media/used.wav`)).status, 200);
  await house.ask('DELETE', `/api/announcements/${id}`);
  assert.equal((await house.ask('DELETE', '/api/media/used.wav')).status, 204);
});
