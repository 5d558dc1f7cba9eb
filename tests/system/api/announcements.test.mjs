import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { announcement, DemoHouse } from '../harness/demo-house.mjs';

let house;
before(async () => {
  house = await DemoHouse.open();
});
after(() => house.close());

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

test('what the house adds stays when a request says nothing of it, and goes when it says so', async () => {
  const id = await house.add({ tags: ['meals'], urgent: true });
  const at = `/api/announcements/${id}`;
  const put = async (added) => {
    const { tags, urgent } = (await house.ask('PUT', at, { ...announcement, ...added })).body;
    return { tags, urgent };
  };
  assert.deepEqual(await put({}), { tags: ['meals'], urgent: true });
  assert.deepEqual(await put({ tags: ['evening'] }), { tags: ['evening'], urgent: true });
  assert.deepEqual(await put({ urgent: false }), { tags: ['evening'], urgent: undefined });
  assert.deepEqual(await put({ tags: [], urgent: true }), { tags: undefined, urgent: true });
  await house.ask('DELETE', at);
});

test('rooms and navigators of an announcement are added, changed and removed', async () => {
  const id = await house.add({ rooms: [], navigators: [] });
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
      text_means: { code: 'sound_missing', params: { file: 'gone.wav' } },
    },
  ]);
  assert.deepEqual(
    told('room_set_up').map((entry) => entry.room),
    announcement.rooms.map((room) => room.id),
  );
  for (const what of ['sound_started', 'sound_ended', 'popup_shown', 'popup_hidden']) assert.deepEqual(told(what), []);
  assert.equal(body.complete, true);
});
