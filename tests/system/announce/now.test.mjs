// What is said, waits and is stopped now: by the command line, with the installed voice, in a house that records.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { json, run, start, withHouse } from '../harness/announce.mjs';
import { clip, rate } from '../harness/sounds.mjs';

const standing = { video: { text: 'Come', timeout_ms: 60000 }, navigators: [{ id: 11, room: 1 }] };

test('what is said is heard, shown, stands in the history with its words, and is forgotten', () =>
  withHouse(async (house) => {
    const events = await house.watch();
    const words = ['say', 'Dinner is ready', '--room', 'Kitchen:60', '--screen', '11', '--popup-time', '2s', '--wait'];
    const said = start(house, [...words, '--chime', 'chime']);
    const { popup } = await events.until('popup_shown');
    assert.equal(popup.message, 'Dinner is ready');
    const { playing } = await events.until('playing_changed', (now) => now.playing?.sound?.length_ms > 600);
    assert.ok(Date.parse(playing.ends) > Date.parse(playing.sound.since) + playing.sound.length_ms);
    assert.equal(playing.can_be_dismissed, true);
    const { status, output, errors } = await said.end();
    assert.equal(status, 0, errors);
    assert.equal(output, 'It was said: ended\n');
    const sound = house.recording(1).filter((sample) => Math.abs(sample) > 2).length;
    assert.ok(sound > rate / 2, `${sound} frames were heard`);
    const [entry] = (await house.get('/api/history')).history;
    assert.deepEqual([entry.name, entry.outcome, entry.rooms], ['Dinner is ready', 'ended', [1]]);
    assert.deepEqual((await house.get('/api/announcements')).announcements, []);
    events.socket.terminate();
  }));

test('what cannot be said is refused with what would be right', () =>
  withHouse(async (house) => {
    const refused = async (order, status, words) => {
      const reply = await house.ask('POST', '/api/say', order);
      assert.equal(reply.status, status, JSON.stringify(reply.body));
      assert.match(reply.body.detail, words);
    };
    await refused({ text: 'Hello' }, 400, /nobody would hear/);
    await refused({ rooms: [{ id: 1 }] }, 400, /nothing to say/);
    await refused({ text: 'Hello', rooms: [{ id: 99 }] }, 404, /no room 99/);
    await refused({ text: 'Hello', voice: 'Nobody', rooms: [{ id: 1 }] }, 422, /Nobody/);
    await refused({ text: 'It is {Nowhere}', navigators: [{ id: 11 }] }, 422, /Nowhere/);
    await refused({ text: 'word '.repeat(390), rooms: [{ id: 1 }] }, 422, /\d s/);
    const nowhere = await run(house, ['say', 'Hello']);
    assert.equal(nowhere.status, 2);
    assert.match(nowhere.errors, /nobody would hear or see it\n +right: at least one --room or --screen$/m);
    assert.deepEqual((await house.get('/api/history')).history, []);
  }));

test('a sound is stopped in its middle, what waits is played, taken back and moved, also after a kill', () =>
  withHouse(async (house) => {
    house.sound('long', clip(rate * 15));
    await house.add({
      name: 'Long',
      ...standing,
      audio: { file: 'long', delay_ms: 100 },
      rooms: [{ id: 1, volume: 80 }],
    });
    for (const name of ['First', 'Second', 'Third']) await house.add({ name, ...standing });
    const events = await house.watch();
    await house.play(1);
    await events.until('sound_started');
    for (const id of [2, 3, 4]) await house.play(id);
    const rows = async () => (await run(house, ['queue'])).output.match(/First|Second|Third/g);
    assert.deepEqual(await rows(), ['First', 'Second', 'Third']);
    const { queue } = await json(house, ['queue']);
    await run(house, ['queue', 'move', `${queue[2].entry}`, '--before', `${queue[0].entry}`]);
    await run(house, ['queue', 'remove', `${queue[1].entry}`]);
    assert.deepEqual(await rows(), ['Third', 'First']);
    assert.match((await run(house, ['status'])).output, /^playing +Long, since .*, for another .+$/m);

    assert.equal((await run(house, ['stop'])).output, 'Stopped\n');
    await events.until('announcement_started', ({ announcement }) => announcement === 4);
    const heard = house.recording(1).filter((sample) => sample !== 0).length;
    assert.ok(heard < rate * 10, `${heard} frames were heard of ${15 * rate}`);
    // What is acknowledged is on the disk, and all that came before it: also that what plays waits no more.
    assert.equal((await house.ask('PUT', '/api/rooms/1/volume', { volume: 40 })).status, 200);
    house.process.kill('SIGKILL');
    await house.ended;
    await house.start();
    const after = await house.watch();
    const { status } = (await after.next()).data;
    assert.equal((status.playing ?? status.queue[0]).name, 'First');
    events.socket.terminate();
    after.socket.terminate();
  }));
