// What goes on: play --wait, --watch, events, and how it is left.
import assert from 'node:assert/strict';
import { createServer } from 'node:http';
import { test } from 'node:test';
import { WebSocketServer } from 'ws';
import { clip, rate } from '../harness/sounds.mjs';
import { json, run, start, withHouse } from '../harness/announce.mjs';

const lines = (text) =>
  text
    .trimEnd()
    .split('\n')
    .map((line) => JSON.parse(line));

// The popup stands as long as it is let.
const standing = { video: { text: 'Come', timeout_ms: 60000 }, navigators: [{ id: 11, room: 1 }] };

test('play asks for it and goes; with --wait it says how it ended', () =>
  withHouse(async (house) => {
    const id = await house.add({ name: 'Short', audio: { file: 'chime' }, rooms: [{ id: 1, volume: 50 }] });
    assert.deepEqual(await json(house, ['play', 'Short', '--wait']), { announcement: id, outcome: 'ended' });
    const result = await run(house, ['play', 'Short', '--wait']);
    assert.equal(result.status, 0);
    assert.equal(result.output, 'announcement 1 (Short): ended\n');
    assert.equal((await house.get('/api/history')).history.length, 2);
    assert.match((await run(house, ['history', '-n', '1'])).output, / Short +ended +Kitchen/);
    assert.match((await run(house, ['play', 'short'])).output, /^announcement 1 \(Short\) plays$/m);
    assert.equal((await run(house, ['play', 'Shrt'])).status, 3);
  }));

test('one that is dismissed, and one that cannot be heard, end otherwise: exit status 9', () =>
  withHouse(async (house) => {
    await house.add({ name: 'Standing', ...standing });
    const events = await house.watch();
    const waiting = start(house, ['play', 'Standing', '--wait']);
    await events.until('popup_shown');
    assert.match((await run(house, ['dismiss'])).output, /popup of announcement 1 \(Standing\) is dismissed/);
    const result = await waiting.end();
    assert.equal(result.status, 9, result.errors);
    assert.equal(result.output, 'announcement 1 (Standing): dismissed\n');
    assert.deepEqual(await json(house, ['dismiss']), { announcement: null });

    await house.add({ name: 'Missing', audio: { file: 'none' }, rooms: [{ id: 1, volume: 50 }] });
    const missing = await run(house, ['play', 'Missing', '--wait']);
    assert.equal(missing.status, 9, missing.output);
    assert.match(missing.output, /Missing\): failed: /);
    events.socket.terminate();
  }));

test('one that is removed while it waits for its turn is not waited for any longer', () =>
  withHouse(async (house) => {
    await house.add({ name: 'Standing', ...standing });
    await house.add({ name: 'Next' });
    const events = await house.watch();
    await house.play(1);
    await events.until('popup_shown');
    const waiting = start(house, ['play', 'Next', '--wait', '--json']);
    await events.until('play_asked', (data) => data.announcement === 2);
    assert.match((await run(house, ['status'])).output, /^waiting +Next$/m);
    await run(house, ['remove', 'Next']);
    const result = await waiting.end();
    assert.equal(result.status, 9);
    assert.deepEqual(JSON.parse(result.output), { announcement: 2, outcome: 'removed' });
    events.socket.terminate();
  }));

test('the end of the controller ends the wait: exit status 8', () =>
  withHouse(async (house) => {
    await house.add({ name: 'Standing', ...standing });
    const events = await house.watch();
    const waiting = start(house, ['play', '1', '--wait']);
    await events.until('popup_shown');
    await house.stop();
    const result = await waiting.end();
    // What the controller still says before it goes may be how the announcement ended.
    assert.ok([8, 9].includes(result.status), `${result.status} ${result.errors}`);
  }));

test('Ctrl-C leaves with 130 and without a word, whatever is waited for', () =>
  withHouse(async (house) => {
    await house.add({ name: 'Standing', ...standing });
    const events = await house.watch();
    const playing = start(house, ['play', '1', '--wait']);
    await events.until('popup_shown');
    const watching = start(house, ['status', '--watch']);
    await watching.until('a view', (output) => /popup +Tablet/.test(output));
    const following = start(house, ['events', '--follow', '-n', '100']);
    await following.until('an event', (output) => /Standing begins/.test(output));
    for (const program of [playing, watching, following]) {
      program.process.kill('SIGINT');
      const { status, signal, errors } = await program.end();
      assert.deepEqual({ status, signal, errors }, { status: 130, signal: null, errors: '' });
    }
    events.socket.terminate();
  }));

test('a view that is watched is printed again when it has changed', () =>
  withHouse(async (house) => {
    const rooms = start(house, ['rooms', '--watch']);
    const list = start(house, ['list', '--watch', '--json']);
    await rooms.until('the rooms', (output) => /Kitchen +40/.test(output));
    await list.until('the list', (output) => output.endsWith('\n'));
    // It is followed from here on: the first view may be older than the connection.
    await house.ask('PUT', '/api/rooms/1/volume', { volume: 33 });
    await rooms.until('the new volume', (output) => /Kitchen +33/.test(output));
    await house.add({ name: 'Dinner' });
    await list.until('the new announcement', (output) => /Dinner/.test(output));
    rooms.process.kill('SIGTERM');
    list.process.kill('SIGTERM');
    assert.equal((await rooms.end()).status, 130);
    const views = lines((await list.end()).output);
    assert.deepEqual(views[0], { announcements: [] });
    assert.equal(views.at(-1).announcements[0].name, 'Dinner');
  }));

test('a view that is watched comes back when the controller does', () =>
  withHouse(async (house) => {
    const variables = start(house, ['variables', '--watch']);
    await variables.until('the variable', (output) => /cold/.test(output));
    const port = new URL(house.base).port;
    await house.stop();
    await variables.until('the loss', (output, errors) => /trying again/.test(errors));
    await house.start({ port });
    await house.ask('PUT', '/api/variables/9/4', { value: 'warm' });
    await variables.until('the new value', (output) => /warm/.test(output));
    variables.process.kill('SIGINT');
    assert.equal((await variables.end()).status, 130);
  }));

test('events tells what has happened, and with --follow what happens, each once and in order', () =>
  withHouse(async (house) => {
    await house.add({ name: 'Short', audio: { file: 'chime' }, rooms: [{ id: 1, volume: 50 }] });
    assert.match((await run(house, ['events'])).output, /^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d {2}Short is stored$/m);
    const following = start(house, ['events', '--follow', '--json', '-n', '1000']);
    await following.until('the first events', (output) => /announcement_stored/.test(output));
    await house.playToItsEnd(1);
    await following.until('the end', (output) => /announcement_ended/.test(output));
    following.process.kill('SIGINT');
    const events = lines((await following.end()).output);
    events.forEach((event, index) => assert.equal(event.seq, index + 1));
    const types = events.map((event) => event.type);
    for (const type of ['announcement_started', 'sound_started', 'sound_ended', 'room_restored'])
      assert.ok(types.includes(type), type);
    const few = await run(house, ['events', '--json', '--type', 'sound_started', '-n', '1000']);
    assert.deepEqual(
      lines(few.output).map((event) => event.type),
      ['sound_started'],
    );
    const words = (await run(house, ['events', '-n', '1000'])).output;
    for (const phrase of [
      'Short is asked for',
      'Short begins',
      'chime.wav plays',
      'the sound is over',
      'Short is over',
    ])
      assert.ok(words.includes(phrase), phrase);
    assert.equal((await run(house, ['events', '-n', '1001'])).status, 2);
    const mistyped = await run(house, ['events', '--type', 'sound_startd', '--type', 'sound_ended']);
    assert.equal(mistyped.status, 2);
    assert.equal(
      mistyped.errors,
      'announce: there is no type of event "sound_startd"\n  right: the nearest: sound_started\n',
    );
    const unknown = await run(house, ['events', '--type', 'nosuch']);
    assert.equal(unknown.status, 2);
    assert.equal(unknown.output, '');
    assert.match(unknown.errors, /right: one of play_asked, queue_changed, .* or log\n$/);
  }));

test('what happens between its connection and its question is not lost to who follows', () =>
  withHouse(async (house) => {
    const known = [];
    const happen = (seq) => known.push({ seq, type: 'rooms_changed', time: '2026-01-01T12:00:00Z', data: {} });
    happen(1);
    const server = createServer((request, response) => {
      const limit = Number(new URL(request.url, 'http://localhost').searchParams.get('limit'));
      response.end(JSON.stringify({ events: known.slice(-limit) }));
      // One after the first question, and two more before the second.
      if (known.length === 1) happen(2);
    });
    const sockets = new WebSocketServer({ server });
    sockets.on('connection', (socket) => {
      socket.send(JSON.stringify({ type: 'state', seq: 2, time: known[0].time, data: {} }));
      happen(3);
      happen(4);
      for (const event of known.slice(2)) socket.send(JSON.stringify(event));
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
    const address = { ANNOUNCE_ADDRESS: `http://127.0.0.1:${server.address().port}` };
    const following = start(house, ['events', '--follow', '--json', '-n', '1'], address);
    await following.until('the last event', (output) => /"seq":4/.test(output));
    following.process.kill('SIGINT');
    assert.deepEqual(
      lines((await following.end()).output).map(({ seq }) => seq),
      [1, 2, 3, 4],
    );
    sockets.clients.forEach((socket) => socket.terminate());
    server.close();
  }));

test('events that are followed go on where they were when the controller starts again', () =>
  withHouse(async (house) => {
    house.sound('long', clip(rate / 2));
    const following = start(house, ['events', '--follow', '--type', 'variable_changed', '-n', '0']);
    const set = (value) => house.ask('PUT', '/api/variables/9/4', { value });
    // Set until it is heard: the program may not have connected yet.
    for (let count = 0; !/first/.test(following.output); ++count) {
      await set(`first ${count}`);
      await new Promise((resolve) => setTimeout(resolve, 50));
      assert.ok(count < 1000, following.errors);
    }
    const port = new URL(house.base).port;
    await house.stop();
    await following.until('the loss', (output, errors) => /trying again/.test(errors));
    await house.start({ port });
    await set('second');
    await following.until('the event after the loss', (output) => /"second"/.test(output));
    following.process.kill('SIGINT');
    const { status, output } = await following.end();
    assert.equal(status, 130);
    assert.equal(output.match(/"second"/g).length, 1);
  }));
