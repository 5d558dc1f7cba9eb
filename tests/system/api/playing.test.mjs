import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { announcement, DemoHouse } from '../harness/demo-house.mjs';

let house;
before(async () => {
  house = await DemoHouse.open();
});
after(() => house.close());

test('OK closes the popup on every screen, and a second OK does nothing', async () => {
  const id = await house.add();
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
  await house.idle();
});

test('events begin with the full state and go on without a gap', async () => {
  const watcher = await house.watch('/api/events');
  const state = await watcher.next();
  assert.equal(state.type, 'state');
  assert.deepEqual(Object.keys(state.data), ['status', 'rooms', 'navigators', 'variables', 'announcements']);
  const id = await house.add();
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
  await house.idle();
  const [one, two, three] = [await house.add(), await house.add(), await house.add()];
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
  await house.idle();
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
  const id = await house.add({ audio: { file: 'doorbell', delay_ms: 200 }, navigators: [] });
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

test('a room and a screen are tried out without leaving anything behind', async () => {
  await house.idle();
  const before = (await house.ask('GET', '/api/announcements')).body;
  const events = await house.watch('/api/events');
  const screen = await house.ask('POST', '/api/navigators/11/test');
  assert.equal(screen.status, 202, screen.text);
  assert.match((await events.until('popup_shown')).popup.message, /^This is a test: /);
  assert.equal((await house.ask('POST', '/api/rooms/1/test')).status, 409);
  await house.ask('POST', '/api/dismiss');
  await house.idle();
  assert.equal((await house.ask('POST', '/api/rooms/1/test')).status, 202);
  // Where the machine has no sound device, trying out is how to find that out.
  assert.match((await events.until('sound_ended')).error ?? 'heard', /^heard$|Kitchen: .*no sound device/);
  await house.idle();
  assert.deepEqual((await house.ask('GET', '/api/announcements')).body, before);
  const [newest] = (await house.ask('GET', '/api/history?limit=1')).body.history;
  assert.deepEqual([newest.name, newest.rooms], ['Test tone', [1]]);
  const draft = { name: 'Draft', video: { text: 'Half done' }, navigators: [{ id: 11, room: 1 }] };
  assert.equal((await house.ask('POST', '/api/try', { ...draft, id: 1 })).status, 400);
  assert.equal((await house.ask('POST', '/api/try', draft)).status, 202);
  assert.equal((await events.until('popup_shown', ({ popup }) => popup.message === 'Half done')).navigator, 11);
  await house.ask('POST', '/api/dismiss');
  await house.idle();
  assert.deepEqual((await house.ask('GET', '/api/announcements')).body, before);
});
