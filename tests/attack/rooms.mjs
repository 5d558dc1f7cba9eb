// A lane of rooms.test.mjs, in a network and with disks of its own. Its words: the lane, how often the controller is
// killed, and how many announcements it lives to the end of. Says at last what there was.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync, readlinkSync } from 'node:fs';
import { Zone } from '../system/harness/multicast.mjs';
import { clip, heard, rate } from '../system/harness/sounds.mjs';
import { within } from '../system/harness/waits.mjs';
import { LostZone, ReadPipe, SmallDisk } from './faults-of-rooms.mjs';
import { AttackedHouse, pause } from './lanes.mjs';
import { randomOfLane, seed } from './random.mjs';

const each = 5; // of a kind in the house
const [lane, kills, wholes] = process.argv.slice(2).map(Number);
const random = randomOfLane(lane);
const sound = clip(0.3 * rate);
const packets = 10 + 15 + 10; // silence, the sound, silence
const own = 40; // the volume of every room

const witness = await Zone.open('239.255.85.1');
const house = new AttackedHouse([{}, { output: { multicast: witness.address, interface: 'lo' } }], '', '');
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
async function areWitnessesWhole(told) {
  const { rooms } = await house.get('/api/rooms');
  const late = rooms.slice(0, 2).some(({ trouble }) => /beginning/.test(trouble ?? ''));
  if (late) return false;
  assert.deepEqual([rooms[0].trouble, rooms[1].trouble], [null, null], told);
  assert.ok(heard(house.newestRecording(1), sound, 100).isWhole, `the recording, ${told}`);
  assert.equal(witness.packets.length, packets, `the zone, ${told}`);
  const [{ source, sequence }] = witness.packets;
  witness.packets.forEach((packet, index) => {
    assert.deepEqual([packet.source, packet.sequence], [source, (sequence + index) % 65536], told);
  });
  return true;
}

async function checkVolumes(told) {
  assert.deepEqual(await house.volumes(), Array(house.rooms.length).fill(own), `volumes, ${told}`);
}

async function round(id, steps, killAt, told) {
  witness.packets = [];
  const now = steps.filter(({ at }) => at === 0);
  now.forEach(({ act }) => act());
  const events = await house.watch();
  const begun = performance.now();
  await house.play(id);
  const later = steps.filter(({ at }) => at > 0 && (killAt === undefined || at < killAt)).sort((a, b) => a.at - b.at);
  for (const { at, act } of later) {
    await pause(begun + at - performance.now());
    act();
  }
  if (killAt !== undefined) {
    await pause(begun + killAt - performance.now());
    await house.kill();
    places.forEach((place) => place.heal());
    await house.startAgain();
    await checkVolumes(told);
    return false;
  }
  await events.until('announcement_ended');
  events.socket.terminate();
  await checkVolumes(told);
  const isWhole = await areWitnessesWhole(told);
  places.forEach((place) => place.heal());
  return isWhole;
}

// Where in the sequence it is killed.
const fates = Array(wholes).fill(false);
for (let kill = 0; kill < kills; ++kill) fates.splice(random.below(fates.length + 1), 0, true);

try {
  await house.start();
  const rooms = house.rooms.map((_, index) => ({ id: index + 1, volume: 100 }));
  const id = await house.add({ audio: { file: 'clip', delay_ms: 10 }, rooms });
  let whole = 0;
  for (const [index, isKilled] of fates.entries()) {
    const steps = places.flatMap((place) => plan(place));
    const killAt = isKilled ? random.below(1500) : undefined;
    const faults = steps.map(({ at, fault }) => `${fault} at ${at}`).join(', ');
    const told = `SEED=${seed}, lane ${lane}, round ${index + 1}, ${killAt === undefined ? '' : `killed at ${killAt}, `}${faults}`;
    whole += (await round(id, steps, killAt, told)) ? 1 : 0;
  }
  // All is well again: every room is heard, and nothing of what was is left.
  const look = async () => {
    while (left().length > 0) await pause(50);
  };
  await within('all outputs to close', look(), { sofar: () => `: ${left().join(', ')}` });
  whole += (await round(id, [], undefined, `SEED=${seed}, lane ${lane}, at the end`)) ? 1 : 0;
  const troubles = (await house.get('/api/rooms')).rooms.map(({ trouble }) => trouble ?? '');
  assert.deepEqual(
    troubles.filter((trouble) => trouble !== '' && !/beginning/.test(trouble)),
    [],
    `SEED=${seed}, lane ${lane}`,
  );
  await within('all outputs to close', look(), { sofar: () => `: ${left().join(', ')}` });
  assert.equal(await house.stop(), 0);
  console.log(`counts: ${JSON.stringify({ kills, faults: each * fates.length, whole })}`);
} finally {
  places.forEach((place) => place.end());
  witness.close();
  await house.remove();
}
