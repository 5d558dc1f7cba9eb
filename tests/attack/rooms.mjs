// The rounds of rooms.test.mjs, in a network and with disks of their own.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync, readlinkSync } from 'node:fs';
import { House } from '../system/harness/house.mjs';
import { Zone } from '../system/harness/multicast.mjs';
import { clip, heard, rate } from '../system/harness/sounds.mjs';
import { within } from '../system/harness/waits.mjs';
import { LostZone, ReadPipe, SmallDisk } from './faults-of-rooms.mjs';
import { randomFrom, seed } from './random.mjs';

const each = 5; // of a kind in the house
const plays = Math.ceil(Number(process.env.ROUNDS) / each);
const random = randomFrom(seed);
const sound = clip(0.3 * rate);
const packets = 10 + 15 + 10; // silence, the sound, silence
const own = 40; // the volume of every room
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

const witness = await Zone.open('239.255.85.1');
const house = new House([{}, { output: { multicast: witness.address, interface: 'lo' } }], '', '');
const places = Array.from({ length: each }, (_, index) => [
  new LostZone(index + 1),
  new ReadPipe(index + 1, house.folder),
  new SmallDisk(index + 1, house.folder),
]).flat();
house.rooms.push(...places.map(({ output }) => ({ output })));
house.write();
house.sound('clip', sound);

// What the controller still has open of the rooms, and the threads of pipelines that still run.
function left() {
  const { pid } = house.process;
  const files = readdirSync(`/proc/${pid}/fd`).flatMap((number) => {
    try {
      const file = readlinkSync(`/proc/${pid}/fd/${number}`);
      return /\/(pipe-|disk-|takes\/)/.test(file) ? [file] : [];
    } catch {
      return []; // closed meanwhile
    }
  });
  const threads = readdirSync(`/proc/${pid}/task`).flatMap((task) => {
    try {
      const name = readFileSync(`/proc/${pid}/task/${task}/comm`, 'utf8').trim();
      return name.startsWith('appsrc') ? [name] : [];
    } catch {
      return []; // ended meanwhile
    }
  });
  return [...files, ...threads];
}

// The fault's steps, one after the other, at random moments from before the announcement to beyond its sound. What is
// planned takes the same numbers, whatever happens.
function plan(place) {
  const fault = random.one(Object.keys(place.faults));
  let at = random.below(3) === 0 ? 0 : random.below(800);
  return place.faults[fault].map((act) => {
    const step = { at, act, fault: `${place.constructor.name} ${fault}` };
    at += 20 + random.below(500);
    return step;
  });
}

// Whether the rooms beside them have heard all of it; a machine that was too slow for a room has said so.
async function areWitnessesWhole(take, told) {
  const { rooms } = await house.get('/api/rooms');
  const late = rooms.slice(0, 2).some(({ trouble }) => /beginning/.test(trouble ?? ''));
  if (late) return false;
  assert.deepEqual([rooms[0].trouble, rooms[1].trouble], [null, null], told);
  assert.ok(heard(house.recording(1, take), sound, 100).isWhole, `the recording, ${told}`);
  assert.equal(witness.packets.length, packets, `the zone, ${told}`);
  const [{ source, sequence }] = witness.packets;
  witness.packets.forEach((packet, index) => {
    assert.deepEqual([packet.source, packet.sequence], [source, (sequence + index) % 65536], told);
  });
  return true;
}

let take = 0;
async function start() {
  await house.start();
  take = 0;
  assert.deepEqual(await house.volumes(), Array(house.rooms.length).fill(own), `SEED=${seed}: volumes at the start`);
}

async function round(id, steps, killAt, told) {
  witness.packets = [];
  const now = steps.filter(({ at }) => at === 0);
  now.forEach(({ act }) => act());
  const events = await house.watch();
  const begun = performance.now();
  await house.play(id);
  ++take;
  const later = steps.filter(({ at }) => at > 0 && (killAt === undefined || at < killAt)).sort((a, b) => a.at - b.at);
  for (const { at, act } of later) {
    await pause(begun + at - performance.now());
    act();
  }
  if (killAt !== undefined) {
    await pause(begun + killAt - performance.now());
    house.process.kill('SIGKILL');
    await house.ended;
    places.forEach((place) => place.heal());
    await start();
    return false;
  }
  await events.until('announcement_ended');
  events.socket.terminate();
  assert.deepEqual(await house.volumes(), Array(house.rooms.length).fill(own), `volumes, ${told}`);
  const isWhole = await areWitnessesWhole(take, told);
  places.forEach((place) => place.heal());
  return isWhole;
}

try {
  await start();
  const rooms = house.rooms.map((_, index) => ({ id: index + 1, volume: 100 }));
  const id = await house.add({ audio: { file: 'clip', delay_ms: 10 }, rooms });
  let whole = 0;
  let kills = 0;
  for (let number = 1; number <= plays; ++number) {
    const steps = places.flatMap((place) => plan(place));
    const killAt = random.below(5) === 0 ? random.below(1500) : undefined;
    const told = `SEED=${seed}, round ${number}: ${steps.map(({ at, fault }) => `${fault} at ${at}`).join(', ')}`;
    kills += killAt === undefined ? 0 : 1;
    whole += (await round(id, steps, killAt, told)) ? 1 : 0;
  }
  assert.ok(whole > 0, `SEED=${seed}: the machine was too slow for every round`);
  // All is well again: every room is heard, and nothing of what was is left.
  const look = async () => {
    while (left().length > 0) await pause(50);
  };
  await within('all outputs to close', look(), { sofar: () => `: ${left().join(', ')}` });
  await round(id, [], undefined, `SEED=${seed}, at the end`);
  const troubles = (await house.get('/api/rooms')).rooms.map(({ trouble }) => trouble ?? '');
  assert.deepEqual(
    troubles.filter((trouble) => trouble !== '' && !/beginning/.test(trouble)),
    [],
    `SEED=${seed}`,
  );
  await within('all outputs to close', look(), { sofar: () => `: ${left().join(', ')}` });
  assert.equal(await house.stop(), 0);
  console.log(
    `SEED=${seed}: ${plays} announcements, ${plays * each} faults of each kind, ${kills} kills; whole in ${whole}`,
  );
} finally {
  places.forEach((place) => place.end());
  witness.close();
  await house.remove();
}
