// Where the controller is, what allows it, and what is said when it does not answer.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { chmodSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { join } from 'node:path';
import { test } from 'node:test';
import { environment, run, withHouse } from '../harness/announce.mjs';

const certify = (house, names) =>
  execFileSync(
    'openssl',
    [
      'req',
      '-x509',
      '-newkey',
      'ec',
      '-pkeyopt',
      'ec_paramgen_curve:prime256v1',
      '-nodes',
      '-subj',
      '/CN=house',
      '-addext',
      `subjectAltName=${names}`,
      '-days',
      '2',
      '-keyout',
      join(house.folder, 'key.pem'),
      '-out',
      join(house.folder, 'certificate.pem'),
    ],
    { stdio: 'ignore' },
  );

test('the address comes from the option, else the environment, else the configuration', () =>
  withHouse(async (house) => {
    const nowhere = 'http://127.0.0.1:1';
    assert.equal((await run(house, ['list', '-a', house.base], { ANNOUNCE_ADDRESS: nowhere })).status, 0);
    const config = join(house.folder, 'config', 'announce');
    execFileSync('mkdir', ['-p', config]);
    const file = join(config, 'config.yaml');
    writeFileSync(file, `address: ${nowhere}\n`);
    assert.equal((await run(house, ['list'])).status, 0);
    const gone = await run(house, ['list'], { ANNOUNCE_ADDRESS: '' });
    assert.equal(gone.status, 8);
    assert.match(gone.errors, /no controller answers at http:\/\/127\.0\.0\.1:1: Connection refused/);
    assert.ok(gone.errors.includes(`--address, ANNOUNCE_ADDRESS or ${file}`), gone.errors);
    writeFileSync(file, `address: ${house.base}\n`);
    assert.equal((await run(house, ['list'], { ANNOUNCE_ADDRESS: '' })).status, 0);

    for (const [text, message] of [
      ['adress: x\n', /:1: there is no key "adress"/],
      ['address: [1]\n', /address is no text/],
      ['a: [\n', /config\.yaml:\d+: /],
      ['- x\n', /no map/],
    ]) {
      writeFileSync(file, text);
      const wrong = await run(house, ['list']);
      assert.equal(wrong.status, 2);
      assert.match(wrong.errors, message);
    }
  }));

test('the token comes from option, file, environment or configuration; who can read its file is warned about', () =>
  withHouse(async (house) => {
    const { output } = await house.run(['token', 'add', 'phone', '--right', 'play', '--house', house.file]);
    const token = /phone\.\S+/.exec(output)[0];
    await house.stop();
    await house.start();
    const none = await run(house, ['list']);
    assert.equal(none.status, 5);
    assert.match(none.errors, /right: a token by --token-file, ANNOUNCE_TOKEN or the configuration file/);
    assert.equal((await run(house, ['list'], { ANNOUNCE_TOKEN: 'phone.wrong' })).status, 5);

    const file = join(house.folder, 'token');
    writeFileSync(file, `${token}\n`);
    chmodSync(file, 0o600);
    const given = await run(house, ['list', '--token-file', file]);
    assert.deepEqual([given.status, given.errors], [0, '']);
    chmodSync(file, 0o644);
    const open = await run(house, ['list', '--token-file', file]);
    assert.equal(open.status, 0);
    assert.match(open.errors, /warning: .*token holds a token, and other users can read it; right: chmod 600/);
    assert.equal((await run(house, ['list', '--token', token])).status, 0);
    assert.equal((await run(house, ['list', '--token-file', '-'], {}, token)).status, 0);
    assert.equal((await run(house, ['list'], { ANNOUNCE_TOKEN: token })).status, 0);
    // The events' socket needs it as well.
    assert.equal((await run(house, ['events', '-n', '1'], { ANNOUNCE_TOKEN: token })).status, 0);
    const config = join(house.folder, 'config', 'announce');
    execFileSync('mkdir', ['-p', config]);
    writeFileSync(join(config, 'config.yaml'), `token: ${token}\n`);
    chmodSync(join(config, 'config.yaml'), 0o640);
    const configured = await run(house, ['list']);
    assert.equal(configured.status, 0);
    assert.match(configured.errors, /config\.yaml holds a token, and other users can read it/);
    writeFileSync(join(config, 'config.yaml'), 'token_file: ../../token\n');
    chmodSync(file, 0o600);
    assert.deepEqual(await run(house, ['list']).then(({ status, errors }) => [status, errors]), [0, '']);

    const right = await run(house, ['add', '--name', 'x']);
    assert.equal(right.status, 5);
    assert.match(right.errors, /a token with the right for this|right/);
    for (const words of [
      ['--token', 'a b'],
      ['--token', 'x', '--token-file', file],
      ['--token-file', 'none'],
    ])
      assert.equal((await run(house, ['list', ...words])).status, 2);
  }));

test('a certificate is verified: its authority, and its name', () =>
  withTls('IP:127.0.0.1,DNS:localhost', async (house, ca) => {
    const system = await run(house, ['list']);
    assert.equal(system.status, 8);
    assert.match(system.errors, /its certificate is not trusted: self-signed certificate[^]*--ca FILE/);
    assert.equal((await run(house, ['list', '--ca', ca])).status, 0);
    const name = house.base.replace('127.0.0.1', 'localhost');
    assert.equal((await run(house, ['events', '-a', name, '--ca', ca])).status, 0);
    const added = await run(house, ['add', '--name', 'Quick', '--ca', ca]);
    assert.equal(added.status, 0, added.errors);
    const played = await run(house, ['play', 'Quick', '--wait', '--ca', ca]);
    assert.equal(played.status, 0, played.errors);
    const plain = await run(house, ['list', '-a', house.base.replace('https', 'http')]);
    assert.equal(plain.status, 8);
    assert.match(plain.errors, /right: .*https:\/\//);
    assert.equal((await run(house, ['list', '--ca', join(house.folder, 'none.pem')])).status, 2);
  }));

test('a certificate for another name is refused, whoever has signed it', () =>
  withTls('DNS:elsewhere', async (house, ca) => {
    const { status, errors } = await run(house, ['list', '--ca', ca]);
    assert.equal(status, 8);
    assert.match(errors, /not trusted: .*mismatch[^]*a certificate for 127\.0\.0\.1/i);
  }));

async function withTls(names, body) {
  await withHouse(async (house) => {
    await house.stop();
    certify(house, names);
    house.write('tls:\n  certificate: certificate.pem\n  key: key.pem\n');
    await house.start();
    await body(house, join(house.folder, 'certificate.pem'));
  });
}

test('what is no controller is told so', () =>
  withHouse(async (house) => {
    const answers = {
      'HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello': 1,
      'HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[]': 1,
      'HTTP/1.1 302 Found\r\nLocation: /x\r\nContent-Length: 0\r\n\r\n': 1,
      'SSH-2.0-x\r\n\r\n': 8,
      '': 8,
    };
    for (const [answer, expected] of Object.entries(answers)) {
      const server = createServer((socket) => {
        socket.on('error', () => {});
        socket.once('data', () => socket.end(answer));
      });
      await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
      const { status, errors } = await run(house, ['list', '-a', `127.0.0.1:${server.address().port}`]);
      assert.equal(status, expected, `${answer}: ${errors}`);
      assert.match(errors, /controller/);
      server.close();
    }
    const unknown = await run(house, ['list', '-a', 'no-such-host.invalid']);
    assert.equal(unknown.status, 8);
    assert.match(unknown.errors, /the name no-such-host\.invalid is not known/);
    assert.equal((await run(house, ['list', '-a', 'ftp://house'])).status, 2);
    assert.ok(environment(house).ANNOUNCE_ADDRESS.startsWith('http'));
  }));

test('what is typed wrongly is answered with what would be right: exit status 2', () =>
  withHouse(async (house) => {
    for (const [words, message] of [
      [[], /the command is missing/],
      [['lst'], /right: list\?/],
      [['list', '--jsn'], /--json\?/],
      [['media', 'ad'], /right: add\?/],
      [['completion', 'tcsh'], /bash, zsh or fish/],
    ]) {
      const { status, output, errors } = await run(house, words);
      assert.equal(status, 2, `${words}: ${errors}`);
      assert.equal(output, '');
      assert.match(errors, message);
    }
    for (const words of [
      ['--help'],
      ['play', '--help'],
      ['media', '--help'],
      ['--version'],
      ['manual'],
      ['manual', '--markdown'],
    ]) {
      const { status, output, errors } = await run(house, words, { ANNOUNCE_ADDRESS: '127.0.0.1:1' });
      assert.deepEqual([status, errors], [0, '']);
      assert.ok(output.length > 10);
    }
  }));
