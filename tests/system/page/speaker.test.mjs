// Tablets on the wall are loudspeakers: real pages in real browsers, whose sound comes out of a sound server, and what
// becomes of an announcement when they are not tapped on, doubled or closed.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { eventually, launch } from '../harness/browser.mjs';
import { House } from '../harness/house.mjs';
import { kinds, SoundServer } from '../harness/sound-server.mjs';
import { clip, heard, rate, wavFile } from '../harness/sounds.mjs';

const skip = kinds.PipeWire ? false : 'PipeWire is not installed; script/bootstrap installs it';
const screens = [11, 12];
const recorder = 3; // the room beside them
const length = 1.5 * rate;
const probe = 2048; // frames that are looked for, every other one of them
const sparse = 2;

// Noise that is like no other, and the same each time.
function noise(seed, frames = length) {
  const samples = new Int16Array(frames);
  let state = seed * 2654435761;
  for (let frame = 0; frame < frames; ++frame) {
    state = (Math.imul(state, 1664525) + 1013904223) | 0;
    samples[frame] = (state >> 18) * 0.8;
  }
  return samples;
}

// Where these samples stand in the recording; -1 where nothing there is like them.
function find(recording, samples) {
  let energy = 0;
  for (let frame = 0; frame < samples.length; frame += sparse) energy += samples[frame] ** 2;
  let [best, place] = [0, -1];
  for (let begin = 0; begin + samples.length <= recording.length; ++begin) {
    let sum = 0;
    for (let frame = 0; frame < samples.length; frame += sparse) sum += recording[begin + frame] * samples[frame];
    if (sum > best) [best, place] = [sum, begin];
  }
  return best > energy / 2 ? place : -1; // of other noise, a quarter at most
}

// Where the page's noise begins, by the first part that is there, and that it goes on to its end. A browser that gets no
// time leaves gaps, so that no single part must be there.
function placeOf(recording, samples) {
  const found = (...parts) => {
    for (const part of parts) {
      const offset = Math.round((part * (length - probe)) / 10);
      const place = find(recording, samples.subarray(offset, offset + probe));
      if (place >= 0) return place - offset;
    }
    return -1;
  };
  const first = found(0, 1, 2);
  if (first >= 0) assert.ok(found(10, 9.5, 9, 8.5, 8) >= 0, 'it is heard to its end');
  return first;
}

test('pages play what they are told, together, and only those that may', { skip }, async (t) => {
  const server = new SoundServer('PipeWire');
  const house = new House(
    [{ output: 'page' }, { output: { page: 12 } }, {}],
    '',
    'navigators:\n  - {id: 11, name: Tablet, room: 1}\n  - {id: 12, name: Wall, room: 2}\n',
  );
  const sound = clip(length);
  const browsers = [];
  const navigator = async (id) => (await house.get('/api/navigators')).navigators.find((one) => one.id === id);
  const trouble = async (id) => (await house.get('/api/rooms')).rooms[id - 1].trouble;
  const untilArmed = (id, armed) =>
    eventually(async () => (await navigator(id)).armed === armed, `screen ${id} armed: ${armed}`);
  // A page in this browser that plays this noise in place of the sound; nothing that a browser takes for a tap.
  const open = async (browser, id, seed) => {
    const page = await (await browser.newContext()).newPage();
    const body = wavFile(noise(seed));
    await page.route('**/api/once/*', async (route) => {
      const reply = await route.fetch();
      assert.equal(reply.headers()['content-type'], 'audio/wav');
      assert.equal((await reply.body()).length, 44 + 4 * length);
      await route.fulfill({ body, contentType: 'audio/wav' });
    });
    await page.goto(`${house.base}/navigator/${id}`);
    return page;
  };
  const tap = (page) => page.getByRole('button', { name: 'Tap once to hear announcements here' });
  try {
    house.sound('clip', sound);
    await server.start();
    await house.start();
    for (const _ of screens) browsers.push(await launch({ env: server.env, ignoreDefaultArgs: ['--mute-audio'] }));
    const announcement = await house.add({
      audio: { file: 'clip', delay_ms: 500 },
      rooms: [1, 2, recorder].map((id) => ({ id, volume: 100 })),
    });
    let plays = 0;
    let failed = []; // rooms, and why, in the last play
    // Plays it, and gives what each of these noises was in the sink.
    const play = async (seeds, meanwhile = () => {}) => {
      const recording = await server.listen();
      const ended = house.playToItsEnd(announcement);
      plays += 1;
      await meanwhile();
      const seen = await ended;
      failed = seen.filter(({ type }) => type === 'room_output_failed').map(({ data }) => [data.room, data.reason]);
      assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
      assert.ok(heard(house.recording(recorder, plays), sound, 100).isWhole, 'the room beside them hears it whole');
      const samples = await recording.end();
      return seeds.map((seed) => placeOf(samples, noise(seed)));
    };

    const pages = [await open(browsers[0], 11, 1), await open(browsers[1], 12, 2)];
    for (const id of screens) await eventually(async () => (await navigator(id)).pages === 1, `the page of ${id}`);
    for (const id of [1, 2])
      await eventually(
        async () => /waits for somebody to tap on it/.test(await trouble(id)),
        `room ${id} to say why, before an announcement is lost there`,
      );
    assert.deepEqual(await play([1, 2]), [-1, -1]);
    assert.deepEqual(
      failed.map(([room]) => room),
      [1, 2],
    );
    for (const [index, id] of screens.entries()) {
      assert.equal((await navigator(id)).armed, false);
      assert.match(await trouble(index + 1), new RegExp(`the page of screen ${id} waits for somebody to tap on it`));
      await tap(pages[index]).click();
      await untilArmed(id, true);
      await tap(pages[index]).waitFor({ state: 'hidden' });
      await eventually(async () => (await trouble(index + 1)) === null, `room ${index + 1} to be heard`);
    }

    const places = await play([1, 2]);
    assert.ok(
      places.every((place) => place >= 0),
      `all are heard: ${places}`,
    );
    const spread = (Math.max(...places) - Math.min(...places)) / (rate / 1000);
    assert.ok(spread < 200, `they are together: ${spread} ms`); // some 2 ms where nothing else is done
    t.diagnostic(`between the first and the last page: ${spread.toFixed(1)} ms`);

    // Another page of the same screen, armed later, plays in its place.
    const second = await open(browsers[0], 11, 3);
    await eventually(async () => (await navigator(11)).pages === 2, 'its second page');
    await tap(second).click();
    await tap(second).waitFor({ state: 'hidden' });
    // One that goes while it plays is the trouble of its room alone.
    const [first, later] = await play([1, 3], async () => {
      const isHeard = () => {
        try {
          return house.recording(recorder, plays).some((sample) => sample !== 0);
        } catch {
          return false; // there is nothing yet
        }
      };
      await eventually(async () => isHeard(), 'the beginning');
      await pages[1].close();
    });
    assert.equal(first, -1);
    assert.ok(later >= 0);
    assert.deepEqual(failed, [[2, 'the page of screen 12 went away while it played']]);
    assert.equal((await navigator(12)).armed, false);

    // A page that goes on to another language, or to a newer page, keeps what its browser allows. It is looked at from
    // outside, for what looks at it inside counts as a tap.
    await pages[0].close();
    const events = await house.watch();
    await second.getByRole('button', { name: 'Deutsch' }).click();
    await events.until('pages_changed', ({ navigator: id, pages: count }) => id === 11 && count === 0);
    await events.until('pages_changed', ({ navigator: id, armed }) => id === 11 && armed);
    events.socket.terminate();
  } finally {
    for (const browser of browsers) await browser.close();
    await house.remove();
    await server.remove();
  }
});
