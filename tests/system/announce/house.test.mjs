// Status, rooms, screens, variables, media.
import assert from 'node:assert/strict';
import { readFileSync, truncateSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { json, onTerminal, run, withHouse } from '../harness/announce.mjs';
import { House } from '../harness/house.mjs';
import { clip, rate, writeSound } from '../harness/sounds.mjs';

test("views are tables for people and the API's JSON for programs", () =>
  withHouse(async (house) => {
    assert.match(
      (await run(house, ['rooms'])).output,
      /^ 1 {2}Kitchen {10}40 {7}80 {2}file: .*1-%n\.wav +(healthy|unknown)$/m,
    );
    assert.equal(
      (await run(house, ['screens'])).output,
      'ID  NAME        ROOM     PAGES  POPUP\n' +
        '11  Tablet      Kitchen      0\n' +
        '12  Television  Kitchen      0\n',
    );
    assert.equal((await run(house, ['variables'])).output, 'ID   NAME     VALUE\n9/4  Outside  cold\n');
    const status = (await run(house, ['status'])).output;
    for (const line of [/^house +Test house$/m, /^playing +nothing$/m, /^waiting +nothing$/m, /^saved +yes$/m])
      assert.match(status, line);
    assert.match((await run(house, ['history'])).output, /Nothing has been played yet/);
    for (const [command, path] of [
      ['rooms', '/api/rooms'],
      ['screens', '/api/navigators'],
      ['variables', '/api/variables'],
      ['media', '/api/media'],
      ['history', '/api/history'],
    ])
      assert.deepEqual(await json(house, [command]), await house.get(path));
    assert.equal((await json(house, ['status'])).house, 'Test house');
  }));

test('of loudspeakers that never answer it is said', async () => {
  const house = new House([
    { name: 'School', output: 'multicast: 239.255.84.1:5004 interface=lo' },
    { name: 'Kitchen' },
  ]);
  try {
    await house.start();
    const lines = (await run(house, ['rooms'])).output.split('\n');
    assert.match(lines[1], /School.*multicast: 239\.255\.84\.1:5004 interface=lo +never answers$/);
    assert.match(lines[2], /Kitchen.*\.wav +(healthy|unknown)$/);
  } finally {
    await house.remove();
  }
});

test('the volume of a room is set, and its limit is said', () =>
  withHouse(async (house) => {
    assert.equal((await run(house, ['rooms', 'volume', 'kitchen', '25'])).output, 'Kitchen is at volume 25\n');
    assert.equal(
      (await run(house, ['rooms', 'volume', '1', '100'])).output,
      'Kitchen is at volume 80, which is the most for it\n',
    );
    assert.deepEqual(await json(house, ['rooms', 'volume', 'Living room', '7']), { id: 2, volume: 7 });
    assert.deepEqual(await house.volumes(), [80, 7]);
    for (const [words, status] of [
      [['Kitchn', '5'], 3],
      [['Kitchen', '101'], 2],
      [['Kitchen', 'loud'], 2],
      [['Kitchen'], 2],
    ])
      assert.equal((await run(house, ['rooms', 'volume', ...words])).status, status);
  }));

test('a variable is set, to any text', () =>
  withHouse(async (house) => {
    assert.equal((await run(house, ['variables', 'set', 'outside', '21 °C'])).output, 'Outside is "21 °C"\n');
    assert.equal((await json(house, ['variables', 'set', '9/4', '--', '-5'])).value, '-5');
    assert.equal((await run(house, ['variables', 'set', 'Outsde', 'x'])).status, 3);
    const long = await run(house, ['variables', 'set', 'Outside', 'x'.repeat(5000)]);
    assert.equal(long.status, 6, long.errors);
    assert.equal((await house.get('/api/variables')).variables[0].value, '-5');
  }));

test('media are brought, listed and removed', () =>
  withHouse(async (house) => {
    const sound = join(house.folder, 'media', 'chime.wav');
    const bell = join(house.folder, 'bell.wav');
    writeFileSync(bell, readFileSync(sound));
    assert.match((await run(house, ['media', 'add', bell])).output, /^bell\.wav is in the media folder/);
    assert.equal((await json(house, ['media', 'add', bell, '--name', 'other.wav'])).media[0].name, 'other.wav');
    const table = (await run(house, ['media', 'list'])).output;
    assert.match(table, /^bell\.wav +sound +[\d.]+ KiB +250 ms +.* 48000 Hz, mono$/m);
    assert.deepEqual(await json(house, ['media', 'remove', 'bell.wav', 'other.wav']), {
      removed: ['bell.wav', 'other.wav'],
    });
    assert.equal((await house.get('/api/media')).media.length, 1);

    const cases = [
      [['add', join(house.folder, 'none.wav')], 3, /cannot be read/],
      [['add', house.folder], 3, /cannot be read/],
      [['add', bell, sound, '--name', 'x.wav'], 2, /--name names one file/],
      [['add'], 2, /FILE is missing/],
      [['add', house.file], 6, /house\.yaml cannot be decoded here[^]*right: a sound \(MP3/],
      [['remove', 'chim.wav'], 3, /nearest: chime\.wav/],
    ];
    for (const [words, status, message] of cases) {
      const result = await run(house, ['media', ...words]);
      assert.equal(result.status, status, `${words}: ${result.errors}`);
      assert.match(result.errors, message);
    }
    truncateSync(bell, 1000);
    assert.equal((await run(house, ['media', 'add', bell])).status, 6);
    truncateSync(bell, 33 << 20);
    const large = await run(house, ['media', 'add', bell]);
    assert.equal(large.status, 6);
    assert.match(large.errors, /33\.0 MiB[^]*at most 32\.0 MiB/);
  }));

test('a name is made good the same way by command line and API, and both say what it has become', () =>
  withHouse(async (house) => {
    const content = readFileSync(join(house.folder, 'media', 'chime.wav'));
    const bell = join(house.folder, 'My Door Bell.wav');
    writeFileSync(bell, content);
    assert.match(
      (await run(house, ['media', 'add', bell])).output,
      /^My Door Bell\.wav is in the media folder as My-Door-Bell\.wav \([\d.]+ KiB\)\n$/,
    );
    assert.equal((await json(house, ['media', 'add', bell])).media[0].name, 'My-Door-Bell.wav');
    const path = `/api/media/${encodeURIComponent('My Door Bell.wav')}`;
    const stored = await house.ask('PUT', path, content, { 'Content-Type': 'audio/wav' });
    assert.equal(stored.status, 200);
    assert.equal(stored.body.name, 'My-Door-Bell.wav');
    const names = (await house.get('/api/media')).media.map((file) => file.name);
    assert.deepEqual(names, ['My-Door-Bell.wav', 'chime.wav']);
    assert.match((await run(house, ['media', 'remove', 'My Door Bell.wav'])).errors, /nearest: My-Door-Bell\.wav/);
  }));

test('what cannot be decoded or is too long is told what it is, what to do, and by its own name', () =>
  withHouse(async (house) => {
    const song = join(house.folder, 'chime.mp3');
    writeFileSync(song, 'no sound at all');
    const refused = await run(house, ['media', 'add', song]);
    assert.equal(refused.status, 6);
    assert.match(refused.errors, /chime\.mp3 cannot be decoded here: .*\n +right: a sound \(MP3/);
    const reply = await house.ask('PUT', '/api/media/chime.mp3', 'no sound at all', { 'Content-Type': 'audio/mpeg' });
    assert.deepEqual([reply.status, reply.body.code], [422, 'cannot_decode']);
    const long = join(house.folder, 'long.wav');
    writeSound(long, clip(rate * 30));
    const tooLong = await run(house, ['media', 'add', long]);
    assert.equal(tooLong.status, 6);
    assert.match(tooLong.errors, /^announce: long\.wav lasts 30\.0 s; at most 20 s can be played\n +right: .*--from/);
    const part = await json(house, ['media', 'add', long, '--from', '5s', '--to', '6.5s', '--name', 'Part of it.mp3']);
    assert.deepEqual(
      [part.media[0].name, part.media[0].duration_ms, part.media[0].is_converted],
      ['Part-of-it.wav', 1500, true],
    );
  }));

test('of several files those that can be taken are, and it is said of each what has become of it', () =>
  withHouse(async (house) => {
    const sound = join(house.folder, 'media', 'chime.wav');
    const files = ['a.wav', 'bad.wav', 'z.wav'].map((name) => join(house.folder, name));
    for (const file of files) writeFileSync(file, readFileSync(sound));
    truncateSync(files[1], 1000);
    const some = await run(house, ['media', 'add', ...files]);
    assert.equal(some.status, 6);
    assert.match(some.output, /^a\.wav is in the media folder \(.*\)\nz\.wav is in the media folder \(.*\)\n$/);
    assert.match(
      some.errors,
      /^announce: .*bad\.wav: bad\.wav: truncated[^]*announce: 2 of 3 are in the media folder\n$/,
    );
    const told = await run(house, ['media', 'add', ...files, '--json']);
    assert.equal(told.status, 6);
    const reply = JSON.parse(told.output);
    assert.deepEqual(
      reply.media.map((file) => file.name),
      ['a.wav', 'z.wav'],
    );
    assert.equal(reply.failed.length, 1);
    assert.equal(reply.failed[0].name, files[1]);
    assert.match(reply.failed[0].detail, /^bad\.wav: truncated/);

    // A controller that has gone has gone for all of them.
    await house.stop();
    const none = await run(house, ['media', 'add', ...files]);
    assert.equal(none.status, 8);
    assert.match(none.errors, /^announce: [^\n]*a\.wav: [^\n]*; 0 of 3 are in the media folder\n/);
    assert.equal(none.errors.match(/announce: /g).length, 1);
  }));

test('a file that announcements use is not removed, and they are listed', () =>
  withHouse(async (house) => {
    writeFileSync(join(house.folder, 'media', 'free.wav'), readFileSync(join(house.folder, 'media', 'chime.wav')));
    await house.add({ name: 'Dinner', audio: { file: 'chime' } });
    await house.add({ name: 'Doorbell', audio: { file: 'chime' } });
    const refused = await run(house, ['media', 'remove', 'chime.wav', 'free.wav']);
    assert.equal(refused.status, 7);
    assert.equal(refused.output, 'free.wav is removed\n');
    assert.match(refused.errors, /chime\.wav is used by 2 announcements: Dinner \(1\), Doorbell \(2\)\n +right: /);
    assert.match(refused.errors, /announce: 1 of 2 is removed\n$/);
    assert.deepEqual(
      (await house.get('/api/media')).media.map((file) => file.name),
      ['chime.wav'],
    );
  }));

test('an upload shows how far it is on a terminal, and nowhere else', () =>
  withHouse(async (house) => {
    const sound = join(house.folder, 'media', 'chime.wav');
    const shown = await onTerminal(house, ['media', 'add', sound, '--name', 'bell.wav'], { COLUMNS: '60' });
    assert.match(shown.output, /\rbell\.wav \[#+\] 100%/);
    const silent = await run(house, ['media', 'add', sound, '--name', 'bell.wav']);
    assert.equal(silent.errors, '');
    assert.doesNotMatch(silent.output, /%/);
  }));
