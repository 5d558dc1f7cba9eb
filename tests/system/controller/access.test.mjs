// Who may do what, from where, and over which kind of connection.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { once } from 'node:events';
import { readFileSync } from 'node:fs';
import http from 'node:http';
import https from 'node:https';
import net from 'node:net';
import { join } from 'node:path';
import { test } from 'node:test';
import WebSocket from 'ws';
import { House, within } from '../harness/house.mjs';

// One request on a connection of its own, with the headers exactly as given.
async function ask(house, method, path, { headers = {}, body, ...options } = {}) {
  const { request } = house.base.startsWith('https') ? https : http;
  const sent = request(house.base + path, { method, headers, agent: false, ...options });
  sent.end(body === undefined ? undefined : JSON.stringify(body));
  const [reply] = await within(`${method} ${path}`, once(sent, 'response'));
  let text = '';
  for await (const part of reply) text += part;
  return { status: reply.statusCode, headers: reply.headers, text };
}

async function addToken(house, name, ...rights) {
  const words = rights.flatMap((right) => ['--right', right]);
  const { status, output } = await house.run(['token', 'add', name, ...words, '--house', house.file]);
  assert.equal(status, 0, output);
  return { Authorization: `Bearer ${new RegExp(`${name}\\.\\S+`).exec(output)[0]}` };
}

// The status that an upgrade is refused with; 101 when it is not.
async function upgrade(house, path, headers = {}) {
  const socket = new WebSocket(house.base.replace('http', 'ws') + path, { headers });
  const opened = new Promise((resolve) => {
    socket.on('open', () => resolve(101));
    socket.on('unexpected-response', (_, reply) => resolve(reply.statusCode));
  });
  const status = await within(path, opened);
  socket.on('error', () => {});
  socket.terminate();
  return status;
}

async function withHouse(lines, body) {
  const house = new House([{}], lines);
  try {
    await body(house);
    assert.equal(await house.stop(), 0);
  } finally {
    await house.remove();
  }
}

test('each token may do what its rights say, and nothing without one', () =>
  withHouse('', async (house) => {
    const admin = await addToken(house, 'boss', 'admin');
    const play = await addToken(house, 'remote', 'play');
    const tablet = await addToken(house, 'tablet', 'navigator:11');
    await house.start();

    const json = { 'Content-Type': 'application/json' };
    const made = await ask(house, 'POST', '/api/announcements', {
      headers: { ...admin, ...json },
      body: { name: 'A' },
    });
    assert.equal(made.status, 201);
    const { id } = JSON.parse(made.text);

    const statuses = async (method, path) =>
      Promise.all(
        [{}, tablet, play, admin].map(async (headers) => (await ask(house, method, path, { headers })).status),
      );
    assert.deepEqual(await statuses('GET', '/api/announcements'), [401, 403, 200, 200]);
    assert.deepEqual(await statuses('GET', '/api/navigators/11'), [401, 200, 200, 200]);
    assert.deepEqual(await statuses('GET', '/api/navigators/12'), [401, 403, 200, 200]);
    assert.deepEqual(await statuses('POST', `/api/announcements/${id}/play`), [401, 403, 202, 202]);
    assert.deepEqual(await statuses('DELETE', `/api/announcements/${id}`), [401, 403, 403, 204]);
    assert.deepEqual(await statuses('GET', '/api/outputs'), [401, 403, 403, 200]);
    assert.deepEqual(await statuses('GET', '/healthz'), [200, 200, 200, 200]);

    const refused = await ask(house, 'GET', '/api/status');
    assert.match(refused.headers['www-authenticate'], /^Bearer/);
    assert.match(refused.headers['content-type'], /^application\/problem\+json/);
  }));

test('a ticket opens one socket, with the rights of its token', () =>
  withHouse('', async (house) => {
    const play = await addToken(house, 'remote', 'play');
    const tablet = await addToken(house, 'tablet', 'navigator:11');
    await house.start();
    const ticket = async (headers) => JSON.parse((await ask(house, 'POST', '/api/tickets', { headers })).text).ticket;

    assert.equal(await upgrade(house, '/api/events'), 401);
    assert.equal(await upgrade(house, '/api/events', play), 101);
    const one = await ticket(play);
    assert.equal(await upgrade(house, `/api/events?ticket=${one}`), 101);
    assert.equal(await upgrade(house, `/api/events?ticket=${one}`), 401);
    assert.equal(await upgrade(house, `/api/events?ticket=${await ticket(tablet)}`), 403);
    assert.equal(await upgrade(house, `/api/navigators/11/events?ticket=${await ticket(tablet)}`), 101);
    assert.equal(await upgrade(house, `/api/navigators/12/events?ticket=${await ticket(tablet)}`), 403);
  }));

test('who guesses tokens waits, and who has one does not', () =>
  withHouse('', async (house) => {
    const play = await addToken(house, 'remote', 'play');
    await house.start();
    assert.equal((await ask(house, 'GET', '/api/status', { headers: play })).status, 200);
    const guess = (number) =>
      ask(house, 'GET', '/api/status', { headers: { Authorization: `Bearer remote.${number}` } });
    const statuses = [];
    for (let number = 0; number < 12; ++number) statuses.push((await guess(number)).status);
    assert.deepEqual(statuses.slice(0, 10), Array(10).fill(401));
    assert.equal(statuses.at(-1), 429);
    assert.ok(Number((await guess(0)).headers['retry-after']) > 0);
    assert.equal((await ask(house, 'GET', '/api/status', { headers: play })).status, 200);
  }));

test("a page from elsewhere reaches nothing through its visitor's browser", () =>
  withHouse('', async (house) => {
    await house.start();
    const { port } = new URL(house.base);
    const status = async (headers, path = '/api/status') => (await ask(house, 'GET', path, { headers })).status;
    assert.equal(await status({ Host: `127.0.0.1:${port}` }), 200);
    assert.equal(await status({ Host: `attacker.example:${port}` }), 421);
    assert.equal(await status({ Host: `attacker.example:${port}` }, '/'), 421);
    assert.equal(await status({ Origin: 'http://attacker.example' }), 403);
    assert.equal(await status({ Origin: 'null' }), 403);
    assert.equal(await status({ Origin: house.base }), 200);
    assert.equal(await upgrade(house, '/api/events', { Origin: 'http://attacker.example' }), 403);
    const reply = await ask(house, 'GET', '/api/status', { headers: { Origin: house.base } });
    assert.equal(reply.headers['access-control-allow-origin'], undefined);
  }));

test('an address that others can reach is not served without a token', () =>
  withHouse('address: 0.0.0.0\n', async (house) => {
    const refused = await house.run([house.file, '--port', '0', '--stay']);
    assert.notEqual(refused.status, 0);
    assert.match(refused.output, /0\.0\.0\.0.*token/s);
    await addToken(house, 'boss', 'admin');
    await house.start();
    // What it prints can be opened as it stands there, on this machine too.
    await house.program.until('what can be opened', (output) => /in a browser\./.test(output));
    const [line] = /^Open .* in a browser\.$/m.exec(house.output);
    assert.doesNotMatch(line, /0\.0\.0\.0/);
    house.base = /http:\/\/127\.0\.0\.1:\d+(?=\/ in a browser)/.exec(line)[0];
    assert.equal((await ask(house, 'GET', '/api/status')).status, 401);
  }));

test('with a certificate, pages, API and events are served over TLS and over nothing else', () =>
  withHouse('tls:\n  certificate: certificate.pem\n  key: key.pem\n', async (house) => {
    execFileSync(
      'openssl',
      [
        'req',
        '-x509',
        '-newkey',
        'rsa:2048',
        '-nodes',
        '-subj',
        '/CN=localhost',
        '-addext',
        'subjectAltName=IP:127.0.0.1',
        '-days',
        '2',
        '-keyout',
        join(house.folder, 'key.pem'),
        '-out',
        join(house.folder, 'certificate.pem'),
      ],
      { stdio: 'ignore' },
    );
    const ca = readFileSync(join(house.folder, 'certificate.pem'));
    await house.start();
    assert.match(house.base, /^https:/);
    assert.equal((await ask(house, 'GET', '/api/status', { ca })).status, 200);
    assert.equal((await ask(house, 'GET', '/', { ca })).status, 200);
    await assert.rejects(ask(house, 'GET', '/api/status'), /self-signed/);
    const old = ask(house, 'GET', '/api/status', { ca, maxVersion: 'TLSv1.1', ciphers: 'DEFAULT@SECLEVEL=0' });
    await assert.rejects(old);
    const by = (ciphers) => ask(house, 'GET', '/api/status', { ca, maxVersion: 'TLSv1.2', ciphers });
    for (const weak of [
      'AES256-GCM-SHA384',
      'ECDHE-RSA-AES256-SHA384',
      'ECDHE-RSA-AES128-SHA',
      'DHE-RSA-AES128-SHA256',
    ])
      await assert.rejects(by(weak), weak);
    for (const good of ['ECDHE-RSA-AES128-GCM-SHA256', 'ECDHE-RSA-CHACHA20-POLY1305'])
      assert.equal((await by(good)).headers['strict-transport-security'], 'max-age=2592000', good);

    const socket = new WebSocket(`${house.base.replace('https', 'wss')}/api/events`, { ca });
    const [first] = await within('the first message', once(socket, 'message'));
    assert.equal(JSON.parse(first).type, 'state');
    socket.terminate();

    const plain = net.connect(new URL(house.base).port, '127.0.0.1');
    plain.on('error', () => {});
    plain.write('GET /api/status HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n');
    let answer = '';
    plain.on('data', (bytes) => {
      answer += bytes.toString('latin1');
    });
    await within('the end of a plain connection', once(plain, 'close'));
    assert.doesNotMatch(answer, /200 OK/);
    assert.equal((await ask(house, 'GET', '/api/status', { ca })).status, 200);
  }));
