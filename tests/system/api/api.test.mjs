import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Validator } from '@seriousme/openapi-schema-validator';
import { DemoHouse } from '../harness/demo-house.mjs';
import { kinds, SoundServer } from '../harness/sound-server.mjs';

let house;
const server = new SoundServer(); // started by the test that needs it
before(async () => {
  house = await DemoHouse.open({ PULSE_SERVER: server.address });
});
after(async () => {
  await house.close();
  await server.remove();
});

test('the description is valid OpenAPI and names every operation', async () => {
  const document = (await house.ask('GET', '/api/openapi.json')).body;
  const result = await new Validator().validate(document);
  assert.deepEqual(result, { valid: true });
  const { operations } = (await house.ask('GET', '/api/operations')).body;
  for (const { path, method, name } of operations)
    assert.equal(document.paths[path][method.toLowerCase()].operationId, name);
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
    ['POST', '/api/outputs/test', { output: 'file: /tmp/x.wav' }, 404],
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

test('200 commands at once are all answered, and the house goes on', async () => {
  const id = await house.add();
  const replies = await Promise.all(
    Array.from({ length: 200 }, (_, i) =>
      i % 2
        ? house.ask('POST', `/api/announcements/${id}/play`)
        : house.ask('PUT', `/api/announcements/${id}/rooms/1`, { volume: i % 100 }),
    ),
  );
  assert.deepEqual([...new Set(replies.map((reply) => reply.status))].sort(), [200, 202]);
  await house.ask('POST', '/api/dismiss');
  await house.idle();
  assert.equal((await house.ask('GET', '/healthz')).status, 200);
});

test('every operation is taken and answered as the description says, and every message is sent so', async () => {
  const watcher = await house.watch('/api/events');
  const page = await house.watch('/api/navigators/11/events');
  const id = await house.add({ tags: ['one', 'two'], urgent: true, video: { variable: { device: 100, variable: 1 } } });
  const ask = async (method, path, body) => {
    const reply = await house.ask(method, `/api/${path}`, body);
    assert.ok(reply.status < 300, `${method} /api/${path}: ${reply.text}`);
    return reply.body;
  };
  for (const path of [
    'announcements',
    'house',
    'rooms',
    'rooms/1',
    'outputs',
    'navigators',
    'navigators/11',
    'variables',
    'variables/100/1',
    'media',
    'voices',
    'history',
    'queue',
    'status',
    'events/recent',
  ])
    await ask('GET', path);
  if (kinds.PulseAudio) {
    await server.start();
    await ask('POST', 'outputs/test', { output: 'pulse: heard', volume: 30 });
  }
  const { entry } = await ask('POST', 'say', { text: 'Hello', navigators: [{ id: 11 }] });
  const { popup } = await page.until('popup_shown');
  const { entry: waiting } = await ask('POST', `announcements/${id}/play`);
  assert.ok(waiting > entry);
  await ask('POST', `queue/${waiting}/move`, { before: null });
  await ask('DELETE', `queue/${waiting}`);
  await ask('POST', `navigators/11/popups/${popup.number}/ok`);
  await ask('POST', 'stop');
  await ask('POST', 'dismiss');
  await house.idle();
  await ask('POST', 'navigators/11/test');
  await ask('POST', 'dismiss');
  await house.idle();
  await ask('POST', 'try', { name: 'Draft', video: { text: 'Half done' }, navigators: [{ id: 11, room: 1 }] });
  await ask('POST', 'stop');
  await house.idle();
  await ask('POST', 'rooms/1/test');
  await ask('POST', 'stop');
  await house.idle();
  await ask('PUT', 'rooms/1/volume', { volume: 30 });
  await ask('PUT', 'variables/100/1', { value: 'new' });
  await ask('PUT', `announcements/${id}/rooms/2`, { volume: 30 });
  await ask('PUT', `announcements/${id}/navigators/12`, { room: 2, onscreen: false });
  const one = await ask('GET', `announcements/${id}`);
  await ask('PUT', `announcements/${id}`, one);
  await ask('PUT', 'media/spoken.wav/speech', { text: 'Hello', speed: 120 });
  await ask('PUT', 'media/spoken.wav/loudness', { as_it_is: true });
  await ask('DELETE', 'media/spoken.wav');
  const sound = (await house.askForBytes('/api/media/gong.wav')).bytes;
  await house.ask('PUT', '/api/media/copy.wav', sound, { 'Content-Type': 'audio/wav' });
  await ask('DELETE', 'media/copy.wav');
  await ask('POST', 'tickets');
  await ask('POST', 'rehearsal', { announcement: id, stream_ready_ms: 5 });
  await ask('POST', 'commands/execute_announcement', { id: `${id}` });
  await house.idle();
  for (const { socket } of [watcher, page]) socket.close();
  assert.deepEqual(house.contract.unseen(), kinds.PulseAudio ? [] : ['test_output']);
  assert.deepEqual(house.contract.faults, []);
});

test('the description is printed without a house, always the same', async () => {
  const { status, output } = await house.run(['openapi']);
  assert.equal(status, 0);
  assert.equal(output, (await house.ask('GET', '/api/openapi.json')).text);
});
