// Announcements: stored, shown, changed, copied, removed, carried.
import assert from 'node:assert/strict';
import { existsSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { json, onTerminal, run, withHouse } from '../harness/announce.mjs';

const dinner = [
  'add',
  '--name',
  'Dinner',
  '--sound',
  'chime.wav',
  '--text',
  'Dinner is ready',
  '--room',
  'Kitchen:40',
  '--screen',
  'tablet',
];

test('what add stores is what the options say, by names', () =>
  withHouse(async (house) => {
    assert.deepEqual(await run(house, dinner), {
      status: 0,
      signal: null,
      output: 'announcement 1 (Dinner) is stored\n',
      errors: '',
    });
    const stored = await house.get('/api/announcements/1');
    assert.deepEqual(stored, {
      id: 1,
      name: 'Dinner',
      audio: { file: 'chime', delay_ms: 0 },
      video: { image: '', text: 'Dinner is ready', delay_ms: 0, timeout_ms: 0, ok_button: true, variable: null },
      rooms: [{ id: 1, volume: 40 }],
      navigators: [{ id: 11, room: 1, onscreen: true }],
    });
    const all = await json(house, [
      'add',
      '--name',
      'All',
      '--sound-delay',
      '1.5s',
      '--room',
      '2',
      '--room',
      'Kitchen',
      '--variable',
      'outside',
      '--image',
      'http://house/x.png',
      '--popup-delay',
      '2s',
      '--popup-time',
      '1min',
      '--ok-button',
      'no',
      '--urgent',
      'yes',
    ]);
    assert.deepEqual(all, await house.get('/api/announcements/2'));
    assert.deepEqual(all.audio, { file: '', delay_ms: 1500 });
    assert.equal(all.urgent, true);
    await run(house, ['edit', 'All', '--name', 'Most']);
    assert.equal((await house.get('/api/announcements/2')).urgent, true);
    await run(house, ['edit', 'Most', '--urgent', 'no']);
    assert.equal((await house.get('/api/announcements/2')).urgent, undefined);
    assert.deepEqual(all.video, {
      image: 'http://house/x.png',
      text: '',
      delay_ms: 2000,
      timeout_ms: 60000,
      ok_button: false,
      variable: { device: 9, variable: 4, name: 'Outside' },
    });
    assert.deepEqual(all.rooms, [
      { id: 1, volume: -1 },
      { id: 2, volume: -1 },
    ]);
  }));

test("list and show are tables for people and the API's JSON for programs", () =>
  withHouse(async (house) => {
    assert.match((await run(house, ['list'])).output, /no announcements; "announce add" makes one/);
    await run(house, dinner);
    const list = await run(house, ['list']);
    assert.equal(
      list.output,
      'ID  NAME    SOUND  ROOMS       SCREENS  TEXT\n' + ' 1  Dinner  chime  Kitchen 40  Tablet   Dinner is ready\n',
    );
    assert.deepEqual(await json(house, ['list']), await house.get('/api/announcements'));
    const shown = await run(house, ['show', 'dinner']);
    for (const line of [
      /^sound +chime\.wav$/m,
      /^rooms +Kitchen 40$/m,
      /^screens +Tablet$/m,
      /^popup +for 30 s, with an OK button$/m,
    ])
      assert.match(shown.output, line);
    assert.deepEqual(await json(house, ['show', '1']), await house.get('/api/announcements/1'));
  }));

test('on a terminal a table is shortened to its width and coloured, unless NO_COLOR is set', () =>
  withHouse(async (house) => {
    await run(house, ['add', '--name', '夕食', '--text', 'A long text that has no place in a narrow terminal']);
    const coloured = await onTerminal(house, ['list'], { COLUMNS: '50' });
    assert.match(coloured.output, /\x1b\[1m/);
    const plain = await onTerminal(house, ['list'], { COLUMNS: '50', NO_COLOR: '1' });
    assert.doesNotMatch(plain.output, /\x1b/);
    const lines = plain.output.replaceAll('\r', '').trimEnd().split('\n');
    assert.equal(lines.length, 2);
    assert.match(lines[1], /夕食 .*…$/);
    assert.ok([...lines[1]].length + 2 <= 50, lines[1]);
    assert.match((await run(house, ['list'])).output, /in a narrow terminal$/m);
  }));

test('names that are wrong are refused with the nearest, and nothing is stored', () =>
  withHouse(async (house) => {
    await run(house, dinner);
    await run(house, dinner);
    const cases = [
      [['show', 'Lunch'], 3, /"announce list" shows/],
      [['show', 'Dinnr'], 3, /nearest: Dinner \(1\) or Dinner \(2\)/],
      [['show', 'Dinner'], 4, /an id: Dinner \(1\) or Dinner \(2\)/],
      [['add', '--name', 'x', '--room', 'Kitchn:40'], 3, /nearest: Kitchen \(1\)/],
      [['add', '--name', 'x', '--screen', 'Televison'], 3, /nearest: Television \(12\)/],
      [['add', '--name', 'x', '--sound', 'chim.wav'], 3, /nearest: chime\.wav/],
      [['add', '--name', 'x', '--variable', 'Inside'], 3, /no variable "Inside"/],
      [['add', '--name', 'x', '--room', 'Kitchen:101'], 2, /whole number from 0 to 100/],
      [['add', '--name', 'x', '--popup-time', '5'], 2, /500ms, 1\.5s/],
      [['add', '--name', 'x', '--ok-button', 'maybe'], 2, /yes or no/],
      [['add', '--text', 'no name'], 2, /--name NAME/],
      [['remove', '1', 'Bell'], 3, /no announcement "Bell"/],
      [['copy', '77'], 3, /no announcement "77"/],
      [['edit', '1', '--remove-room', 'Living room'], 3, /has no room/],
    ];
    for (const [words, status, message] of cases) {
      const result = await run(house, words);
      assert.equal(result.status, status, `${words}: ${result.errors}`);
      assert.match(result.errors, message);
      assert.equal(result.output, '');
    }
    assert.equal((await house.get('/api/announcements')).announcements.length, 2);
  }));

test('copy and remove', () =>
  withHouse(async (house) => {
    await run(house, dinner);
    const copy = await json(house, ['copy', 'Dinner', '--room', 'Living room:50', '--remove-screen', 'Tablet']);
    assert.equal(copy.name, 'Dinner (copy)');
    assert.deepEqual(copy.rooms, [
      { id: 1, volume: 40 },
      { id: 2, volume: 50 },
    ]);
    assert.deepEqual(copy.navigators, []);
    assert.equal((await json(house, ['copy', 'Dinner', 'Supper'])).name, 'Supper');
    assert.deepEqual(await json(house, ['remove', 'Dinner', 'supper']), { removed: [1, 3] });
    assert.match((await run(house, ['remove', '2'])).output, /^announcement 2 \(Dinner \(copy\)\) is removed$/m);
    assert.deepEqual((await house.get('/api/announcements')).announcements, []);
  }));

test('rehearse prints the timeline, and its JSON', () =>
  withHouse(async (house) => {
    await run(house, dinner);
    const { status, output } = await run(house, ['rehearse', 'Dinner']);
    assert.equal(status, 0);
    assert.match(output, /^0:00\.000  Dinner begins$/m);
    assert.match(output, /Kitchen is at volume 40/);
    assert.match(output, /Tablet shows "Dinner is ready" for 30 s/);
    assert.match(output, /chime\.wav plays/);
    assert.match(output, /Dinner is over\n$/);
    const timeline = await json(house, ['rehearse', 'Dinner', '--sound-length', '3s']);
    const at = (what) => timeline.timeline.find((entry) => entry.what === what).at_ms;
    assert.equal(at('sound_ended') - at('sound_started'), 3000);
    assert.equal((await house.get('/api/history')).history.length, 0);
  }));

test('rehearse says what is not there, and neither plays nor shows it', () =>
  withHouse(async (house) => {
    await run(house, dinner);
    const there = await house.get('/api/announcements/1');
    await house.ask('PUT', '/api/announcements/1', {
      ...there,
      audio: { ...there.audio, file: 'gone' },
      rooms: [...there.rooms, { id: 99, volume: 20 }],
      navigators: [...there.navigators, { id: 98, room: 1, onscreen: true }],
    });
    const { output } = await run(house, ['rehearse', 'Dinner']);
    assert.match(output, /nothing is heard: there is no sound file "gone.wav" in the media folder$/m);
    assert.match(output, /room 99 is not in this house: nothing is heard there$/m);
    assert.match(output, /screen 98 is not in this house: nothing is shown there$/m);
    assert.doesNotMatch(output, /gone\.wav plays|the sound is over|room 99 is set up|screen 98 shows/);
    assert.match((await run(house, ['rehearse', 'Dinner', '--sound-length', '3s'])).output, /gone\.wav plays/);
  }));

test('import says what the house does not have, and stores it all the same', () =>
  withHouse(async (house) => {
    const file = join(house.folder, 'elsewhere.json');
    const rooms = [1, 99].map((id) => ({ id, volume: 20 }));
    const navigators = [{ id: 98, room: 1, onscreen: true }];
    writeFileSync(file, JSON.stringify({ announcements: [{ name: 'Elsewhere', rooms, navigators }] }));
    const said = /"Elsewhere" names what this house does not have: room 99, screen 98/;
    const trial = await run(house, ['import', file, '--dry-run']);
    const done = await run(house, ['import', file]);
    for (const { errors, status } of [trial, done]) {
      assert.equal(status, 0);
      assert.match(errors, said);
    }
    assert.deepEqual((await house.get('/api/announcements')).announcements[0].rooms, rooms);
    assert.equal((await run(house, ['import', file])).errors, '');
  }));

test('what export writes import stores again; what differs is replaced only when that is asked for', () =>
  withHouse(async (house) => {
    await run(house, dinner);
    const file = join(house.folder, 'all.json');
    assert.equal((await run(house, ['export', file])).status, 0);
    assert.equal((await run(house, ['export'])).output, readFileSync(file, 'utf8'));
    assert.match((await run(house, ['import', file])).output, /1 are there already/);

    await run(house, ['edit', 'Dinner', '--text', 'Changed']);
    const refused = await run(house, ['import', file]);
    assert.equal(refused.status, 7);
    assert.match(refused.errors, /announcement 1 \(Dinner\); nothing is imported/);
    assert.match((await run(house, ['import', file, '--replace', '--dry-run'])).output, /Dinner would be replaced/);
    assert.equal((await house.get('/api/announcements/1')).video.text, 'Changed');
    assert.match((await run(house, ['import', file, '--replace'])).output, /Dinner is replaced/);
    assert.equal((await house.get('/api/announcements/1')).video.text, 'Dinner is ready');

    await run(house, ['remove', '1']);
    const text = readFileSync(file, 'utf8');
    assert.match((await run(house, ['import', '-'], {}, text)).output, /Dinner is added/);
    const wrong = JSON.stringify({ announcements: [{ name: 'Good' }, { name: 'Bad', audio: { delay_ms: -5 } }] });
    const half = await run(house, ['import', '-'], {}, wrong);
    assert.equal(half.status, 6);
    assert.match(half.errors, /"Bad": audio\.delay_ms.*1 of 2 are imported/);
    assert.equal((await run(house, ['import', '-'], {}, '{')).status, 2);
    assert.equal((await run(house, ['import', join(house.folder, 'none')])).status, 3);
    const nowhere = await run(house, ['export', join(house.folder, 'none', 'all.json')]);
    assert.equal(nowhere.status, 1);
    assert.ok(!existsSync(join(house.folder, 'none')));
    writeFileSync(file, Buffer.from([0xff]));
    assert.match((await run(house, ['import', file])).errors, /is not UTF-8/);
  }));
