// What people complain about most in systems like this one must never happen here.
import assert from 'node:assert/strict';
import { rmSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';
import { clip, heard, rate } from '../harness/sounds.mjs';

const short = clip(rate / 2);
const bothRooms = [
  { id: 1, volume: 70 },
  { id: 2, volume: 60 },
];

async function inHouse(rooms, body) {
  const house = new House(rooms);
  try {
    house.sound('short', short);
    house.sound('long', clip(3 * rate));
    await house.start();
    await body(house);
  } finally {
    await house.remove();
  }
}

// Every way in which an announcement can end.
const ends = {
  'at its end': async () => {},
  'when its popup is dismissed': (house) => house.ask('POST', '/api/dismiss'),
  'when it is removed while it plays': (house, id) => house.ask('DELETE', `/api/announcements/${id}`),
  'when its rooms are taken out while it plays': async (house, id) => {
    await house.ask('DELETE', `/api/announcements/${id}/rooms/1`);
    await house.ask('DELETE', `/api/announcements/${id}/rooms/2`);
  },
  'when its description is replaced while it plays': (house, id) =>
    house.ask('PUT', `/api/announcements/${id}`, { name: 'Other', rooms: [{ id: 2, volume: 5 }] }),
  'when its file is removed while it plays': async (house) => rmSync(join(house.folder, 'media', 'long.wav')),
};
for (const [when, interfere] of Object.entries(ends))
  test(`no room is left at the announcement's volume ${when}`, () =>
    inHouse(undefined, async (house) => {
      const id = await house.add({
        audio: { file: 'long' },
        rooms: bothRooms,
        navigators: [{ id: 11, room: 1 }],
        video: { text: 'Hello', timeout_ms: 1000 },
      });
      const events = await house.watch();
      await house.play(id);
      await events.until('sound_started');
      assert.deepEqual(await house.volumes(), [70, 60]);
      await interfere(house, id);
      await events.until('announcement_ended');
      assert.deepEqual(await house.volumes(), [40, 40]);
      for (const room of (await house.get('/api/rooms')).rooms)
        assert.deepEqual({ taken: room.in_announcement, awake: room.awake }, { taken: false, awake: false });
      assert.deepEqual((await house.get('/api/status')).popups, []);
    }));

test('two announcements one after another are both heard whole, and the house goes on', () =>
  inHouse(undefined, async (house) => {
    const one = await house.add({ audio: { file: 'short' }, rooms: bothRooms });
    const two = await house.add({ audio: { file: 'short' }, rooms: [{ id: 1, volume: 50 }] });
    const three = await house.add({ audio: { file: 'short' }, rooms: bothRooms });
    const events = await house.watch();
    for (const id of [one, two, three]) await house.play(id);
    for (const id of [one, two, three]) await events.until('announcement_ended', (data) => data.announcement === id);
    assert.equal(await house.stop(), 0);
    const kitchen = [1, 2, 3].map((number) => house.recording(1, number));
    assert.deepEqual(
      kitchen.map((take, index) => heard(take, short, [70, 50, 70][index]).isWhole),
      [true, true, true],
    );
    assert.deepEqual(
      [1, 3].map((number) => heard(house.recording(2, number), short, 60).isWhole),
      [true, true],
    );
  }));

test('neither the first nor the last syllable is missing', () =>
  inHouse([{}, { lead_silence_ms: 700 }, { output: 'silent' }], async (house) => {
    const rooms = [1, 2, 3].map((id) => ({ id, volume: 100 }));
    await house.playToItsEnd(await house.add({ audio: { file: 'short' }, rooms }));
    assert.equal(await house.stop(), 0);
    for (const id of [1, 2]) {
      const { isWhole, tail } = heard(house.recording(id), short, 100);
      assert.ok(isWhole, `room ${id}`);
      assert.ok(tail >= rate / 10, `room ${id}: ${tail} frames of silence behind it`);
    }
    assert.ok(heard(house.recording(2), short, 100).first >= 0.7 * rate, 'the silence that the room asks for');
  }));

test('a room that was silent before is silent afterwards', () =>
  inHouse([{ start_volume: 0 }], async (house) => {
    const seen = await house.playToItsEnd(
      await house.add({ audio: { file: 'short' }, rooms: [{ id: 1, volume: 80 }] }),
    );
    assert.deepEqual(await house.volumes(), [0]);
    assert.equal((await house.get('/api/status')).sound, null);
    const types = seen.map((event) => event.type);
    assert.ok(types.indexOf('room_restored') > types.indexOf('sound_ended'));
    assert.equal(await house.stop(), 0);
    assert.ok(heard(house.recording(1), short, 80).isWhole, 'nothing is heard but the clip');
    assert.equal(house.recordings(1).length, 1, 'nothing is played after it');
  }));

test('a screen that was offline gets the popup that still stands, with the time that it still has', () =>
  inHouse(undefined, async (house) => {
    const id = await house.add({ navigators: [{ id: 11, room: 1 }], video: { text: 'Hello', timeout_ms: 20000 } });
    const before = await house.watch('/api/navigators/11/events');
    await before.until('state');
    before.socket.terminate();
    const other = await house.watch();
    await house.play(id);
    const shown = (await other.until('popup_shown')).popup;
    const late = await house.watch('/api/navigators/11/events');
    const { popup } = await late.until('state');
    assert.equal(popup.number, shown.number);
    assert.equal(popup.message, 'Hello');
    assert.ok(Math.abs(Date.parse(popup.ends) - Date.parse(shown.ends)) < 100, 'the end is the same');
    assert.ok(popup.remaining_ms < shown.remaining_ms);
  }));

test('a screen that was offline when the popup went is never shown it', () =>
  inHouse(undefined, async (house) => {
    const id = await house.add({ navigators: [{ id: 11, room: 1 }], video: { text: 'Hello', timeout_ms: 500 } });
    const page = await house.watch('/api/navigators/11/events');
    await page.until('state');
    await house.play(id);
    await page.until('popup_shown');
    page.socket.terminate();
    const events = await house.watch();
    await events.until('announcement_ended');
    const late = await house.watch('/api/navigators/11/events');
    assert.equal((await late.until('state')).popup, null);
  }));

test('a popup that is closed on one screen is closed on all others', () =>
  inHouse(undefined, async (house) => {
    const navigators = [
      { id: 11, room: 1 },
      { id: 12, room: 1 },
    ];
    const id = await house.add({ navigators, video: { text: 'Hello', timeout_ms: 20000 } });
    const pages = await Promise.all([11, 11, 12].map((page) => house.watch(`/api/navigators/${page}/events`)));
    await house.play(id);
    const shown = await Promise.all(pages.map((page) => page.until('popup_shown')));
    await house.ask('POST', `/api/navigators/12/popups/${shown[2].popup.number}/ok`);
    const hidden = await Promise.all(pages.map((page) => page.until('popup_hidden')));
    hidden.forEach((data, page) => assert.deepEqual(data, { number: shown[page].popup.number, why: 'dismissed' }));
  }));
