import assert from 'node:assert/strict';
import { readdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { Validator } from '@seriousme/openapi-schema-validator';
import { Contract } from '../harness/contract.mjs';
import { House } from '../harness/house.mjs';
import { pngChunk, pngOf, turnedRight } from '../harness/pictures.mjs';

let house;
before(async () => {
  house = await House.demo();
  house.contract = new Contract((await house.ask('GET', '/api/openapi.json')).body);
});
after(async () => {
  assert.equal(await house.stop(), 0);
  await house.remove();
});

const announcement = {
  name: 'Test',
  audio: { file: '', delay_ms: 0 },
  video: { image: '', text: '<b>hi</b>', delay_ms: 0, timeout_ms: 20000, ok_button: true, variable: null },
  rooms: [{ id: 1, volume: 20 }],
  navigators: [
    { id: 11, room: 1, onscreen: true },
    { id: 12, room: 2, onscreen: true },
  ],
};

async function add(changes = {}) {
  const reply = await house.ask('POST', '/api/announcements', { ...announcement, ...changes });
  assert.equal(reply.status, 201, reply.text);
  return reply.body.id;
}

async function idle() {
  const events = await house.watch();
  while ((await house.get('/api/status')).playing !== null) await events.until('announcement_ended');
  events.socket.terminate();
}

test('the description is valid OpenAPI and names every operation', async () => {
  const document = (await house.ask('GET', '/api/openapi.json')).body;
  const result = await new Validator().validate(document);
  assert.deepEqual(result, { valid: true });
  const { operations } = (await house.ask('GET', '/api/operations')).body;
  for (const { path, method, name } of operations)
    assert.equal(document.paths[path][method.toLowerCase()].operationId, name);
});

test('an announcement is stored, read, replaced and removed', async () => {
  const stored = await house.ask('POST', '/api/announcements', announcement);
  assert.equal(stored.status, 201);
  const { id } = stored.body;
  assert.deepEqual(stored.body, { id, ...announcement });
  assert.equal(stored.headers.get('location'), `/api/announcements/${id}`);
  assert.deepEqual((await house.ask('GET', `/api/announcements/${id}`)).body, { id, ...announcement });
  const changed = { ...announcement, name: 'Other', rooms: [], video: { ...announcement.video, ok_button: false } };
  assert.deepEqual((await house.ask('PUT', `/api/announcements/${id}`, changed)).body, { id, ...changed });
  const list = (await house.ask('GET', '/api/announcements')).body.announcements;
  assert.deepEqual(
    list.find((one) => one.id === id),
    { id, ...changed },
  );
  assert.equal((await house.ask('DELETE', `/api/announcements/${id}`)).status, 204);
  assert.equal((await house.ask('GET', `/api/announcements/${id}`)).status, 404);
  assert.equal((await house.ask('DELETE', `/api/announcements/${id}`)).status, 404);
});

test('rooms and navigators of an announcement are added, changed and removed', async () => {
  const id = await add({ rooms: [], navigators: [] });
  const at = `/api/announcements/${id}`;
  assert.deepEqual((await house.ask('PUT', `${at}/rooms/2`, { volume: 30 })).body, { id: 2, volume: 30 });
  assert.deepEqual((await house.ask('PUT', `${at}/rooms/2`, { volume: 31 })).body, { id: 2, volume: 31 });
  await house.ask('PUT', `${at}/navigators/12`, { room: 2, onscreen: false });
  await house.ask('PUT', `${at}/navigators/12`, { room: 1, onscreen: true });
  const { rooms, navigators } = (await house.ask('GET', at)).body;
  assert.deepEqual(
    { rooms, navigators },
    { rooms: [{ id: 2, volume: 31 }], navigators: [{ id: 12, room: 1, onscreen: true }] },
  );
  assert.equal((await house.ask('DELETE', `${at}/rooms/2`)).status, 204);
  assert.equal((await house.ask('DELETE', `${at}/rooms/2`)).status, 404);
  assert.equal((await house.ask('DELETE', `${at}/navigators/12`)).status, 204);
  assert.equal((await house.ask('DELETE', `${at}/navigators/12`)).status, 404);
});

test('what is wrong is answered with what would be right', async () => {
  const json = { 'Content-Type': 'application/json' };
  const wrong = [
    ['GET', '/nothing', undefined, 404],
    ['GET', '/api/announcements/x', undefined, 404],
    ['GET', '/api/announcements/4294967296', undefined, 404],
    ['GET', '/api/rooms/77', undefined, 404],
    ['POST', '/api/announcements/77/play', undefined, 404],
    ['PATCH', '/api/announcements', undefined, 405],
    ['PUT', '/api/variables/1/1', { value: 'x' }, 404],
    ['POST', '/api/announcements', {}, 400],
    ['POST', '/api/announcements', '{', 400, json],
    ['POST', '/api/announcements', 'x', 415, { 'Content-Type': 'text/plain' }],
    ['POST', '/api/announcements', '{}', 415, { ...json, 'Content-Encoding': 'gzip' }],
    ['POST', '/api/announcements', ' '.repeat(300000), 413, json],
    ['PUT', '/api/rooms/1/volume', { volume: 101 }, 400],
    ['GET', '/api/history?before=x', undefined, 400],
    ['POST', '/api/rooms/77/test', undefined, 404],
    ['POST', '/api/navigators/77/test', undefined, 404],
    ['GET', '/api/events', undefined, 426],
    ['GET', '/api/history?limit=0', undefined, 400],
    ['GET', '/api/events/recent?limit=1001', undefined, 400],
    ['POST', '/api/commands/nothing', {}, 404],
    ['POST', '/api/requests/add_announcement', { announcement: '<' }, 400],
    ['GET', '/api/media/..%2F..%2Fetc%2Fpasswd', undefined, 404],
    ['PUT', '/api/media/x.svg', 'x', 415],
    ['PUT', '/api/media/x.wav', 'x', 422, { 'Content-Type': 'audio/wav' }],
    ['POST', '/api/dismiss', { no: 1 }, 400],
    ['GET', '/assets/..%2Fapi', undefined, 404],
    ['GET', '/api/status', undefined, 403, { Origin: 'http://evil.example' }],
  ];
  for (const [method, path, body, status, headers] of wrong) {
    const reply = await house.ask(method, path, body, headers);
    assert.equal(reply.status, status, `${method} ${path}: ${reply.text}`);
    assert.equal(reply.headers.get('content-type'), 'application/problem+json', path);
    assert.equal(reply.body.status, status);
    assert.ok(reply.body.detail.length > 0);
  }
  assert.equal((await house.ask('PATCH', '/api/announcements')).headers.get('allow'), 'GET, POST');
});

test('OK closes the popup on every screen, and a second OK does nothing', async () => {
  const id = await add();
  const kitchen = await house.watch('/api/navigators/11/events');
  const living = await house.watch('/api/navigators/12/events');
  assert.equal((await kitchen.next()).data.popup, null);
  assert.equal((await living.next()).data.popup, null);
  const { entry, ...played } = (await house.ask('POST', `/api/announcements/${id}/play`)).body;
  assert.deepEqual(played, { announcement: id, state: 'playing' });
  assert.ok(entry > 0);
  const { popup } = await kitchen.until('popup_shown');
  const other = (await living.until('popup_shown')).popup;
  assert.equal(popup.message, '<b>hi</b>');
  assert.equal(popup.remaining_ms, 20000);
  const late = await house.watch('/api/navigators/11/events');
  assert.equal((await late.next()).data.popup.number, popup.number);
  const ok = `/api/navigators/11/popups/${popup.number}/ok`;
  assert.deepEqual((await house.ask('POST', ok)).body, { dismissed: true });
  assert.deepEqual(await kitchen.until('popup_hidden'), { number: popup.number, why: 'dismissed' });
  assert.deepEqual(await living.until('popup_hidden'), { number: other.number, why: 'dismissed' });
  assert.deepEqual((await house.ask('POST', ok)).body, { dismissed: false });
  for (const page of [kitchen, living, late]) page.socket.close();
  await idle();
});

test('events begin with the full state and go on without a gap', async () => {
  const watcher = await house.watch('/api/events');
  const state = await watcher.next();
  assert.equal(state.type, 'state');
  assert.deepEqual(Object.keys(state.data), ['status', 'rooms', 'navigators', 'variables', 'announcements']);
  const id = await add();
  await house.ask('POST', `/api/announcements/${id}/play`);
  await house.ask('POST', '/api/dismiss');
  let seq = state.seq;
  const seen = new Set();
  while (!seen.has('announcement_ended')) {
    const message = await watcher.next();
    if (message.type === 'alive') continue;
    assert.equal(message.seq, ++seq);
    if (message.type === 'announcement_stored') assert.deepEqual(message.data.now, { id, ...announcement });
    seen.add(message.type);
  }
  for (const type of [
    'announcement_stored',
    'play_asked',
    'announcement_started',
    'screens_woken',
    'popup_shown',
    'popup_hidden',
    'screens_rested',
    'state_saved',
  ])
    assert.ok(seen.has(type), type);
  watcher.socket.close();
});

test('what plays and waits is told', async () => {
  await idle();
  const [one, two, three] = [await add(), await add(), await add()];
  for (const id of [one, two, three, two]) await house.ask('POST', `/api/announcements/${id}/play`);
  const { playing, waiting } = (await house.ask('GET', '/api/status')).body;
  assert.equal(playing.announcement, one);
  assert.deepEqual(waiting, [two, three]);
  const ids = ({ body }) => body.queue.map(({ announcement }) => announcement);
  const queue = await house.ask('GET', '/api/queue');
  assert.deepEqual(ids(queue), [two, three]);
  const [first, second] = queue.body.queue;
  assert.equal(first.name, 'Test');
  const moved = await house.ask('POST', `/api/queue/${second.entry}/move`, { before: first.entry });
  assert.deepEqual(ids(moved), [three, two]);
  assert.deepEqual(ids(await house.ask('POST', `/api/queue/${second.entry}/move`, { before: null })), [two, three]);
  assert.equal((await house.ask('POST', `/api/queue/${second.entry}/move`, { before: 999 })).status, 404);
  assert.equal((await house.ask('DELETE', `/api/queue/${second.entry}`)).status, 204);
  assert.equal((await house.ask('DELETE', `/api/queue/${second.entry}`)).status, 404);
  assert.equal((await house.ask('POST', `/api/announcements/${three}/play`)).body.state, 'waiting');
  const said = (await house.ask('POST', '/api/say', { text: 'Hello', navigators: [{ id: 11 }] })).body;
  assert.deepEqual([said.state, said.trouble], ['waiting', null]);
  assert.equal((await house.ask('DELETE', `/api/queue/${said.entry}`)).status, 204);
  for (const id of [two, three]) await house.ask('DELETE', `/api/announcements/${id}`);
  assert.deepEqual((await house.ask('POST', '/api/stop')).body, { stopped: true });
  await idle();
  assert.deepEqual((await house.ask('GET', '/api/status')).body.waiting, []);
  assert.deepEqual((await house.ask('POST', '/api/stop')).body, { stopped: false });
  assert.equal((await house.ask('GET', '/api/history?limit=1')).body.history[0].outcome, 'stopped');
});

test("volumes and variables are set, and a room's highest volume holds", async () => {
  assert.deepEqual((await house.ask('PUT', '/api/rooms/1/volume', { volume: 100 })).body, { id: 1, volume: 80 });
  assert.equal((await house.ask('PUT', '/api/variables/100/1', { value: 'Ünï' })).body.value, 'Ünï');
  assert.equal((await house.ask('GET', '/api/variables/100/1')).body.value, 'Ünï');
  assert.equal((await house.ask('PUT', '/api/variables/100/1', { value: 'x'.repeat(4097) })).status, 400);
});

test('volumes set while an announcement takes the room over are answered as they were set', async () => {
  const id = await add({ audio: { file: 'doorbell', delay_ms: 200 }, navigators: [] });
  const events = await house.watch();
  await house.play(id);
  await events.until('room_set_up', ({ room }) => room === 1);
  let isTakenOver = false;
  const set = (volume) => house.ask('PUT', '/api/rooms/1/volume', { volume });
  const setAllTheTime = async (volume) => {
    while (!isTakenOver) assert.deepEqual((await set(volume)).body, { id: 1, volume });
  };
  const takenOver = events.until('room_volume_changed', ({ room, volume }) => room === 1 && volume === 20);
  await Promise.all([
    takenOver.then(() => (isTakenOver = true)),
    ...[31, 32, 33, 34, 35, 36, 37, 38].map(setAllTheTime),
  ]);
  // The very volume that the announcement uses is as good as any other.
  assert.deepEqual((await set(20)).body, { id: 1, volume: 20 });
  await events.until('announcement_ended', ({ announcement }) => announcement === id);
  assert.equal((await house.get('/api/rooms/1')).volume, 20);
  events.socket.terminate();
});

test('a rehearsal tells what would happen, and plays nothing', async () => {
  const before = (await house.ask('GET', '/api/metrics'.replace('/api', ''))).text.match(/played_total (\d+)/)[1];
  const { body } = await house.ask('POST', '/api/rehearsal', {
    announcement: { ...announcement, audio: { file: 'x', delay_ms: 500 } },
    sound_ms: 1000,
  });
  const at = (what) => body.timeline.find((entry) => entry.what === what)?.at_ms;
  assert.equal(body.complete, true);
  assert.equal(at('started'), 0);
  assert.equal(at('popup_shown'), 0);
  assert.equal(at('stream_ready'), 20);
  assert.equal(at('sound_started'), 520);
  assert.equal(at('sound_ended'), 1520);
  assert.equal(at('room_restored'), 3520);
  assert.equal(at('popup_hidden'), 20000);
  assert.equal(body.timeline.at(-1).what, 'ended');
  const after = (await house.ask('GET', '/metrics')).text.match(/played_total (\d+)/)[1];
  assert.equal(after, before);
});

test('a rehearsal says what is not there, in place of hearing and showing it', async () => {
  const { body } = await house.ask('POST', '/api/rehearsal', {
    announcement: {
      ...announcement,
      audio: { file: 'gone', delay_ms: 500 },
      rooms: [...announcement.rooms, { id: 4711, volume: 20 }],
      navigators: [{ id: 4712, room: 1, onscreen: true }],
    },
  });
  const told = (what) => body.timeline.filter((entry) => entry.what === what);
  assert.deepEqual(told('room_missing'), [{ at_ms: 0, what: 'room_missing', room: 4711 }]);
  assert.deepEqual(told('screen_missing'), [{ at_ms: 0, what: 'screen_missing', navigator: 4712 }]);
  assert.deepEqual(told('sound_missing'), [
    {
      at_ms: 520,
      what: 'sound_missing',
      file: 'gone',
      text: 'there is no sound file "gone.wav" in the media folder',
    },
  ]);
  assert.deepEqual(
    told('room_set_up').map((entry) => entry.room),
    announcement.rooms.map((room) => room.id),
  );
  for (const what of ['sound_started', 'sound_ended', 'popup_shown', 'popup_hidden']) assert.deepEqual(told(what), []);
  assert.equal(body.complete, true);
});

test('an announcement is stored with rooms and screens that are not there, and the reply names them', async () => {
  const strange = {
    ...announcement,
    rooms: [...announcement.rooms, { id: 4711, volume: 20 }],
    navigators: [{ id: 4712, room: 1, onscreen: true }],
  };
  const added = await house.ask('POST', '/api/announcements', strange);
  assert.equal(added.status, 201);
  assert.equal(added.headers.get('Announcement-Missing'), 'room 4711, navigator 4712');
  const path = `/api/announcements/${added.body.id}`;
  const replaced = await house.ask('PUT', path, { ...strange, navigators: [] });
  assert.equal(replaced.headers.get('Announcement-Missing'), 'room 4711');
  const mended = await house.ask('PUT', path, announcement);
  assert.equal(mended.headers.get('Announcement-Missing'), null);
  await house.ask('DELETE', path);
});

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
  const photo = pngOf(2400, 1200, [pngChunk('tEXt', Buffer.from('Location\0 51.5N')), pngChunk('eXIf', turnedRight)]);
  const stored = await house.ask('PUT', '/api/media/Our%20garden.jpg', photo, type);
  assert.equal(stored.status, 201, stored.text);
  const { name, kind, width, height, is_converted: isConverted } = stored.body;
  assert.deepEqual([name, kind, width, height, isConverted], ['Our-garden.png', 'image', 960, 1920, true]);
  const { media } = (await house.ask('GET', '/api/media')).body;
  const listed = media.find((file) => file.name === name);
  assert.deepEqual([listed.width, listed.height], [960, 1920]);
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

test('a change that was made on an older state is refused when it says which', async () => {
  const { id } = (await house.ask('POST', '/api/announcements', { name: 'One' })).body;
  const at = `/api/announcements/${id}`;
  const tag = (await house.ask('GET', at)).headers.get('etag');
  const second = await house.ask('PUT', at, { name: 'Two' }, { 'If-Match': tag });
  assert.equal(second.status, 200);
  assert.notEqual(second.headers.get('etag'), tag);
  const refused = await house.ask('PUT', at, { name: 'Three' }, { 'If-Match': tag });
  assert.equal(refused.status, 412);
  assert.equal((await house.ask('GET', at)).body.name, 'Two');
  assert.equal((await house.ask('PUT', at, { name: 'Four' }, { 'If-Match': second.headers.get('etag') })).status, 200);
  assert.equal((await house.ask('PUT', at, { name: 'Five' }, { 'If-Match': '*' })).status, 200);
  assert.equal((await house.ask('PUT', at, { name: 'Six' })).status, 200);
  await house.ask('DELETE', at);
  assert.equal((await house.ask('PUT', at, { name: 'Seven' }, { 'If-Match': '*' })).status, 404);
});

test('a reply of more than a kilobyte is compressed where asked for, and its tag is as good as the plain one', async () => {
  const { id } = (await house.ask('POST', '/api/announcements', { name: 'Long', video: { text: 'word '.repeat(300) } }))
    .body;
  const at = `/api/announcements/${id}`;
  const [plain, packed, head] = [
    await house.ask('GET', at, undefined, { 'Accept-Encoding': 'identity' }),
    await house.ask('GET', at, undefined, { 'Accept-Encoding': 'gzip' }),
    await fetch(house.base + at, { method: 'HEAD', headers: { 'Accept-Encoding': 'gzip' } }),
  ];
  assert.equal(plain.headers.get('content-encoding'), null);
  assert.equal(packed.headers.get('content-encoding'), 'gzip');
  assert.equal(packed.text, plain.text);
  assert.ok(Number(packed.headers.get('content-length')) < 500);
  assert.equal(head.headers.get('content-length'), packed.headers.get('content-length'));
  for (const { headers } of [plain, packed]) assert.equal(headers.get('vary'), 'Accept-Encoding');
  const [tag, packedTag] = [plain, packed].map(({ headers }) => headers.get('etag'));
  assert.notEqual(tag, packedTag);
  assert.equal((await house.ask('PUT', at, packed.body, { 'If-Match': packedTag })).status, 200);
  assert.equal((await house.ask('PUT', at, packed.body, { 'If-Match': tag })).status, 200);
  assert.equal((await house.ask('PUT', at, { name: 'Other' }, { 'If-Match': `"no", ${packedTag}` })).status, 200);
  assert.equal((await house.ask('PUT', at, { name: 'Lost' }, { 'If-Match': packedTag })).status, 412);
  await house.ask('DELETE', at);
});

test('a room and a screen are tried out without leaving anything behind', async () => {
  await idle();
  const before = (await house.ask('GET', '/api/announcements')).body;
  const events = await house.watch('/api/events');
  const screen = await house.ask('POST', '/api/navigators/11/test');
  assert.equal(screen.status, 202, screen.text);
  assert.match((await events.until('popup_shown')).popup.message, /^This is a test: /);
  assert.equal((await house.ask('POST', '/api/rooms/1/test')).status, 409);
  await house.ask('POST', '/api/dismiss');
  await idle();
  assert.equal((await house.ask('POST', '/api/rooms/1/test')).status, 202);
  // Where the machine has no sound device, trying out is how to find that out.
  assert.match((await events.until('sound_ended')).error ?? 'heard', /^heard$|Kitchen: .*no sound device/);
  await idle();
  assert.deepEqual((await house.ask('GET', '/api/announcements')).body, before);
  const [newest] = (await house.ask('GET', '/api/history?limit=1')).body.history;
  assert.deepEqual([newest.name, newest.rooms], ['Test tone', [1]]);
  const draft = { name: 'Draft', video: { text: 'Half done' }, navigators: [{ id: 11, room: 1 }] };
  assert.equal((await house.ask('POST', '/api/try', { ...draft, id: 1 })).status, 400);
  assert.equal((await house.ask('POST', '/api/try', draft)).status, 202);
  assert.equal((await events.until('popup_shown', ({ popup }) => popup.message === 'Half done')).navigator, 11);
  await house.ask('POST', '/api/dismiss');
  await idle();
  assert.deepEqual((await house.ask('GET', '/api/announcements')).body, before);
});

test('200 commands at once are all answered, and the house goes on', async () => {
  const id = await add();
  const replies = await Promise.all(
    Array.from({ length: 200 }, (_, i) =>
      i % 2
        ? house.ask('POST', `/api/announcements/${id}/play`)
        : house.ask('PUT', `/api/announcements/${id}/rooms/1`, { volume: i % 100 }),
    ),
  );
  assert.deepEqual([...new Set(replies.map((reply) => reply.status))].sort(), [200, 202]);
  await house.ask('POST', '/api/dismiss');
  await idle();
  assert.equal((await house.ask('GET', '/healthz')).status, 200);
});

test('every operation is taken and answered as the description says, and every message is sent so', async () => {
  const id = await add({ tags: ['one', 'two'], video: { variable: { device: 100, variable: 1 } } });
  for (const path of [
    'house',
    'rooms',
    'rooms/1',
    'navigators',
    'navigators/11',
    'variables',
    'media',
    'voices',
    'history',
  ])
    await house.ask('GET', `/api/${path}`);
  await house.ask('PUT', '/api/media/spoken.wav/speech', { text: 'Hello', speed: 120 });
  await house.ask('PUT', '/api/media/spoken.wav/loudness', { as_it_is: true });
  await house.ask('DELETE', '/api/media/spoken.wav');
  await house.ask('GET', '/api/events/recent');
  await house.ask('POST', '/api/tickets');
  await house.ask('POST', '/api/rehearsal', { announcement: id, stream_ready_ms: 5 });
  await house.ask('POST', '/api/commands/execute_announcement', { id: `${id}` });
  await idle();
  assert.deepEqual(house.contract.unseen(), []);
  assert.deepEqual(house.contract.faults, []);
});

test('the description is printed without a house, always the same', async () => {
  const { status, output } = await house.run(['openapi']);
  assert.equal(status, 0);
  assert.equal(output, (await house.ask('GET', '/api/openapi.json')).text);
});
