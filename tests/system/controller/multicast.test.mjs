// Rooms that are multicast zones: what loudspeakers get, packet by packet.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { test } from 'node:test';
import { environment, run } from '../harness/announce.mjs';
import { House } from '../harness/house.mjs';
import { Relay, Zone, isHeardHere } from '../harness/multicast.mjs';
import { rate } from '../harness/sounds.mjs';
import { randomFrom } from '../../attack/random.mjs';

const skip = (await isHeardHere()) ? false : 'this machine sends no multicast to itself';
const mayUnshare = spawnSync('unshare', ['--net', 'true']).status === 0;

// 1.01 s that rise in pitch, all of it within what a telephone passes on: no part of it is like another. It begins and
// ends softly, so that nothing rings.
const frames = rate + rate / 100;
const sound = Int16Array.from({ length: frames }, (_, frame) => {
  const time = frame / rate;
  const edge = Math.min(1, frame / 960, (frames - 1 - frame) / 960);
  return Math.round(12000 * edge * Math.sin(2 * Math.PI * (300 * time + 700 * time * time)));
});

async function withZones(outputs, body, take) {
  const zones = await Promise.all(outputs.map((_, index) => Zone.open(`239.255.84.${index + 1}`, take)));
  const rooms = zones.map((zone, index) => ({
    output: { multicast: zone.address, interface: 'lo', ...outputs[index] },
  }));
  const house = new House(rooms);
  try {
    house.sound('rise', sound);
    await body(house, zones);
  } finally {
    zones.forEach((zone) => zone.close());
    await house.remove();
  }
}

const announcement = (...volumes) => ({
  audio: { file: 'rise', delay_ms: 200 },
  rooms: volumes.map((volume, index) => ({ id: index + 1, volume })),
});

// Puts the packets together by their numbers; they are one stream without a hole.
function together(packets, samplesEach) {
  assert.equal(packets[0].hasMarker, true);
  packets.forEach((packet, index) => {
    assert.equal(packet.hasMarker, index === 0);
    assert.equal(packet.source, packets[0].source);
    assert.equal(packet.sequence, (packets[0].sequence + index) % 65536);
    assert.equal(packet.timestamp, (packets[0].timestamp + index * samplesEach) % 2 ** 32);
    assert.equal(packet.samples.length, samplesEach);
  });
  return packets.flatMap((packet) => packet.samples);
}

// u-law has steps of 3 %.
function sounds(found, wanted, at) {
  assert.ok(Math.abs(found - wanted) <= 0.04 * Math.abs(wanted) + 40, `sample ${at}: ${found}, not ${wanted}`);
}

function isSilence(samples) {
  return samples.every((sample) => Math.abs(sample) <= 8);
}

test(
  'each zone gets the whole clip at its volume, in 20 ms packets, with 200 ms of silence on either side',
  { skip },
  () =>
    withZones([{}, { codec: 'l16' }], async (house, zones) => {
      await house.start();
      const id = await house.add(announcement(100, 50));
      await house.playToItsEnd(id);
      for (const [index, factor, gain] of [
        [0, 6, 1],
        [1, 2, 1 / 8],
      ]) {
        const { packets } = zones[index];
        assert.equal(packets.length, 10 + 51 + 10);
        assert.equal(packets[0].type, index === 0 ? 0 : 96);
        const samples = together(packets, 960 / factor);
        const each = rate / factor;
        assert.ok(isSilence(samples.slice(0, each / 5)), 'before');
        assert.ok(isSilence(samples.slice(-each / 5)), 'after');
        for (let at = 0; at * factor < frames; ++at) sounds(samples[each / 5 + at], sound[at * factor] * gain, at);
        // The network and this program come between, now and then; half of the steps from one to the next are no longer.
        const steps = packets.slice(1).map(({ at }, index) => at - packets[index].at);
        const pace = steps.sort((one, other) => one - other)[steps.length >> 1];
        assert.ok(Math.abs(pace - 20) < 2, `${pace} ms`);
      }
      await house.playToItsEnd(id);
      const again = zones[0].packets.slice(71);
      together(again, 160);
      assert.equal(again.length, 71);
      assert.notEqual(again[0].source, zones[0].packets[0].source);
      const rooms = (await house.get('/api/rooms')).rooms;
      assert.deepEqual(
        rooms.map(({ answers, trouble }) => ({ answers, trouble })),
        Array(2).fill({ answers: false, trouble: null }),
      );
    }),
);

test(
  'what is urgent goes to the urgent address alone, and to the usual one of rooms that have no other',
  { skip },
  () =>
    withZones([{}, {}, {}], async (house, [usual, urgent, other]) => {
      const [first, , third] = house.rooms;
      first.output.urgent = urgent.address;
      house.rooms = [first, third];
      house.write();
      await house.start();
      const haveHeard = () => [usual, urgent, other].map(({ packets }) => packets.splice(0).length > 0);
      await house.playToItsEnd(await house.add({ ...announcement(100, 100), urgent: true }));
      assert.deepEqual(haveHeard(), [false, true, true]);
      const said = await run(house, ['say', '--sound', 'rise', '--room', '1', '--urgent', '--wait']);
      assert.equal(said.output, 'It was said: ended\n', said.errors);
      assert.deepEqual(haveHeard(), [false, true, false]);
    }),
);

test(
  'of what a network delays and loses, a loudspeaker knows the order and the place of each packet',
  { skip },
  async () => {
    const random = randomFrom(Number(process.env.SEED ?? 11));
    const fates = Array.from({ length: 71 }, () => (random.below(100) < 6 ? null : random.below(21)));
    const relay = await Relay.open('239.255.84.30', fates);
    const house = new House([{ output: { multicast: relay.address, interface: 'lo' } }]);
    try {
      house.sound('rise', sound);
      await house.start();
      await house.play(await house.add({ ...announcement(100), audio: { file: 'rise', delay_ms: 1000 } }));
      await relay.until(fates.filter((fate) => fate !== null).length);
      together(relay.heard, 160);
      const [first] = relay.heard;
      const line = [];
      const got = relay.passed.map(({ source, sequence, timestamp, samples }) => {
        assert.equal(source, first.source);
        samples.forEach((sample, index) => (line[((timestamp - first.timestamp) >>> 0) + index] = sample));
        return (sequence - first.sequence) & 0xffff;
      });
      const wanted = fates.flatMap((fate, index) => (fate === null ? [] : [index]));
      assert.deepEqual(
        got.sort((one, other) => one - other),
        wanted,
      );
      for (const index of wanted)
        for (let at = index * 160; at < (index + 1) * 160; ++at) sounds(line[at], sound[(at - 1600) * 6] ?? 0, at);
      assert.equal(Object.keys(line).length, wanted.length * 160);
    } finally {
      relay.close();
      await house.remove();
    }
  },
);

test('a stop in the middle fades out within 50 ms, and 200 ms of silence follow', { skip }, () =>
  withZones([{ codec: 'l16' }], async (house, [zone]) => {
    house.sound('rise', new Int16Array(10 * rate).fill(10000));
    await house.start();
    const events = await house.watch();
    await house.play(await house.add(announcement(100)));
    await events.until('sound_started');
    await house.program.within(
      'some of the sound',
      new Promise((resolve) => zone.socket.on('message', () => zone.packets.length >= 20 && resolve())),
    );
    assert.equal((await house.ask('POST', '/api/stop')).status, 200);
    await events.until('announcement_ended');
    const samples = together(zone.packets, 480);
    const full = samples.findLastIndex((sample) => Math.abs(sample - 10000) < 20);
    const last = samples.findLastIndex((sample) => sample !== 0);
    assert.ok(Math.abs(last - full - 1200) <= 10, `${last - full} samples of fading`);
    assert.ok(samples.length - last - 1 >= 4800, 'silence behind it');
    assert.ok(samples.length < 24000 * 9, 'the rest is not sent');
  }),
);

test('a thousand zones begin and play whole', { skip }, async () => {
  const heard = new Map();
  const take = (bytes) => {
    const source = bytes.readUInt32BE(8);
    heard.set(source, (heard.get(source) ?? 0) + 1);
  };
  // A socket holds some hundred packets, so that none of them gets more than 25 at a time.
  const listeners = await Promise.all(Array.from({ length: 40 }, () => Zone.open('239.255.84.200', take)));
  const rooms = Array.from({ length: 1000 }, (_, index) => ({
    output: { multicast: listeners[index % listeners.length].address, interface: 'lo' },
  }));
  const house = new House(rooms, '', '');
  try {
    house.sound('rise', sound.slice(0, rate / 5));
    await house.start();
    const id = await house.add(announcement(...Array(1000).fill(60)));
    await house.playToItsEnd(id);
    assert.equal(heard.size, 1000);
    assert.deepEqual([...new Set(heard.values())], [30]);
    const [{ outcome }] = (await house.get('/api/history')).history;
    assert.equal(outcome, 'ended');
    assert.deepEqual([...new Set((await house.get('/api/rooms')).rooms.map(({ trouble }) => trouble))], [null]);
  } finally {
    listeners.forEach((listener) => listener.close());
    await house.remove();
  }
});

test(
  'without a network the zone is in trouble and the other room plays whole, and without playing it is well when that is back',
  { skip: mayUnshare ? false : 'network namespaces are not allowed here' },
  async () => {
    const zone = { output: { multicast: '239.255.84.1:5004' } };
    const house = new House([{}, zone]);
    try {
      house.sound('rise', sound);
      await house.start({ wrapper: ['unshare', '--net', 'sh', '-c', 'ip link set lo up && exec "$@"', 'sh'] });
      const inside = (...words) =>
        execFileSync('nsenter', ['--net', '--target', `${house.process.pid}`, ...words], { env: environment(house) });
      const announce = (...words) => inside(process.env.ANNOUNCE, ...words);
      announce('add', '--name', 'Test', '--sound', 'rise', '--room', 'Room 1:100', '--room', 'Room 2:100');
      const trouble = () => JSON.parse(announce('rooms', '--json').toString()).rooms[1].trouble;
      const unreachable = /nothing can be sent to 239\.255\.84\.1:5004: Network is unreachable/;
      await house.program.until('a zone without a way', (output) => /Room 2 cannot be heard/.test(output));
      assert.match(trouble(), unreachable);
      announce('play', 'Test', '--wait');
      assert.match(trouble(), unreachable);
      assert.ok(house.recording(1, 1).some((sample) => sample !== 0));
      inside('ip', 'route', 'add', '239.0.0.0/8', 'dev', 'lo');
      await house.program.until('a way to the zone', (output) => output.includes('Room 2 can be heard again'));
      assert.equal(trouble(), null);
    } finally {
      await house.remove();
    }
  },
);
