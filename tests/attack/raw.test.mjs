// What no client sends, by way of mistake or on purpose: the cases are in http.jsonl and websocket.jsonl, one a line.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { Connection } from './connection.mjs';

const read = (name) =>
  readFileSync(new URL(name, import.meta.url), 'utf8')
    .trim()
    .split('\n')
    .map((line) => JSON.parse(line));
const isSanitized = process.env.SANITIZERS !== undefined && process.env.SANITIZERS !== '';
const most = 48 * 1024; // KiB that a case may add to what the program holds

let house;
before(async () => {
  house = new House();
  await house.start();
  await house.add({ name: 'Kept' });
});
after(async () => {
  assert.equal(await house.stop(), 0);
  await house.remove();
});

const memory = () => Number(/VmRSS:\s+(\d+)/.exec(readFileSync(`/proc/${house.process.pid}/status`, 'utf8'))[1]);

// Whatever was sent, the house is as before.
async function leavesTheHouseAsItWas(attack) {
  const before_ = memory();
  await attack();
  assert.equal((await house.ask('GET', '/healthz')).status, 200);
  assert.deepEqual(
    (await house.get('/api/announcements')).announcements.map(({ name }) => name),
    ['Kept'],
  );
  if (!isSanitized) assert.ok(memory() - before_ < most, `${memory() - before_} KiB more are held`);
}

// The statuses of the replies, each with a head and a body of its Content-Length.
function statuses(received) {
  const text = received.toString('latin1');
  const found = [];
  for (let at = 0; at < text.length;) {
    const head = /^HTTP\/1\.1 (\d+) [^]*?\r\n\r\n/.exec(text.slice(at));
    assert.ok(head, `no reply: ${text.slice(at, at + 200)}`);
    const length = /^content-length: *(\d+)/im.exec(head[0]);
    at += head[0].length + Number(length?.[1] ?? 0);
    found.push(Number(head[1]));
  }
  return found;
}

// Behind each case comes another request: where the connection ends with the last reply it must not be answered.
const another = (isLast) =>
  `GET /${isLast ? 'smuggled' : 'healthz'} HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n`;

for (const { why, send, replies, closes } of read('http.jsonl'))
  test(`request: ${why}`, () =>
    leavesTheHouseAsItWas(async () => {
      const connection = new Connection(house);
      const isEndless = send.some((piece) => piece.endless);
      const isTaken = await connection.send([...send, another(closes)]);
      await connection.end();
      assert.ok(!isEndless || !isTaken, 'all of it was taken');
      // Who goes on sending to a connection that is closed may lose the reply.
      if (isEndless && connection.received.length === 0) return;
      assert.deepEqual(statuses(connection.received), closes ? replies : [...replies, 200]);
    }));

const upgrade =
  'GET /api/events HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n' +
  'Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n';

// The server's frames behind the head of its reply; what has not come whole is left out.
function framesOf(received) {
  const found = [];
  for (let at = received.indexOf('\r\n\r\n') + 4; at + 2 <= received.length;) {
    let size = received[at + 1];
    let begin = at + 2;
    if (size === 126) [size, begin] = [received.readUInt16BE(begin), begin + 2];
    else if (size === 127) [size, begin] = [Number(received.readBigUInt64BE(begin)), begin + 8];
    if (begin + size > received.length) break;
    found.push({ kind: received[at] & 15, body: received.subarray(begin, begin + size) });
    at = begin + size;
  }
  return found;
}

const [close, pong] = [8, 10];
const closeOf = (received) => framesOf(received).find(({ kind }) => kind === close);

// `closes`: with this code, or, "dropped", without a word; null: a ping behind the frames is answered.
for (const { why, frames, closes } of read('websocket.jsonl'))
  test(`socket: ${why}`, () =>
    leavesTheHouseAsItWas(async () => {
      const connection = new Connection(house);
      await connection.send([upgrade]);
      await connection.until('the first message', (received) => framesOf(received).length > 0);
      await connection.send([...frames, { hex: '89 82 00000000 6869' }]);
      const answered = await connection.until(
        'a pong, or the end',
        (received) =>
          closeOf(received) ?? framesOf(received).find(({ kind, body }) => kind === pong && body.toString() === 'hi'),
      );
      if (closes === null) assert.equal(answered?.kind, pong);
      else if (closes === 'dropped') assert.equal(closeOf(connection.received), undefined);
      else assert.equal(answered?.body.readUInt16BE(0), closes);
      connection.socket.destroy();
    }));
