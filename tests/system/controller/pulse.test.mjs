// Announcements on a sink of a sound server, PulseAudio and PipeWire: heard whole, other programs' music quieter
// meanwhile and as it was afterwards, whatever happens in between.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';
import { clip, heard, rate } from '../harness/sounds.mjs';
import { run } from '../harness/announce.mjs';
import { Program } from '../harness/program.mjs';
import { announcement, kinds, levels, music, SoundServer, tone } from '../harness/sound-server.mjs';

const full = 65536;
const ducked = 36854; // 15 dB below
const near = (value, wanted) => value !== undefined && Math.abs(value - wanted) <= 65;
const middle = (values) => [...values].sort((one, other) => one - other)[values.length >> 1];

for (const [kind, isInstalled] of Object.entries(kinds)) {
  const skip = isInstalled ? false : `${kind} is not installed; script/bootstrap installs it`;

  // A house with one room on the server's sink, and an announcement of a second there.
  const onServer = (name, output, body, delay = 500) =>
    test(`${kind}: ${name}`, { skip }, async () => {
      const server = new SoundServer(kind);
      const house = new House([{ output }]);
      try {
        house.sound('clip', tone(announcement, 1));
        await server.start();
        await house.start({ env: { PULSE_SERVER: server.address } });
        const id = await house.add({ audio: { file: 'clip', delay_ms: delay }, rooms: [{ id: 1, volume: 100 }] });
        await body(server, house, id);
      } finally {
        await house.remove();
        await server.remove();
      }
    });

  onServer(
    'music is 15 dB quieter before it begins, however soon, while it plays, and as loud as before afterwards',
    'pulse: heard',
    async (server, house, id) => {
      await server.play();
      const recording = await server.listen();
      const seen = await house.playToItsEnd(id);
      assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
      await server.until('the music to be raised', () => near(server.volume('music'), full));
      const samples = await recording.end();
      const [said, played] = [levels(samples, announcement), levels(samples, music)];
      const first = said.findIndex((level) => level > -15);
      const last = said.findLastIndex((level) => level > -15);
      assert.ok(Math.abs(last - first - 49) <= 2, `the announcement was heard for ${(last - first + 1) * 20} ms`);
      const before = middle(played.slice(0, 10));
      const during = middle(played.slice(first, last + 1));
      assert.ok(Math.abs(before - during - 15) < 1, `the music was at ${before} dB, then at ${during} dB`);
      assert.ok(played[first] < before - 14, 'it is quiet before the first sample');
      assert.ok(Math.max(...played.slice(first, last)) < before - 14, 'and until the last');
      assert.deepEqual(house.complaints, []);
    },
    1,
  );

  onServer(
    'auto is its own sink; what begins meanwhile is lowered too, what its user sets meanwhile is left',
    'auto',
    async (server, house, id) => {
      await server.play('music');
      const events = await house.watch();
      await house.play(id);
      await server.until('the music to be lowered', () => near(server.volume('music'), ducked));
      await server.play('film');
      await server.until('the film to be lowered', () => near(server.volume('film'), ducked));
      const roles = server.streams().map(({ properties }) => properties['media.role']);
      assert.ok(roles.includes('announcement'), `${roles}`);
      server.setVolume('music', 0.8);
      await events.until('announcement_ended', (data) => data.announcement === id);
      await server.until('the film to be raised', () => near(server.volume('film'), full));
      assert.ok(near(server.volume('music'), 0.8 * full));
      events.socket.terminate();
    },
  );

  onServer('its sinks are listed, and one is tried without being a room', 'pulse: nowhere', async (server, house) => {
    const [{ health, trouble }] = (await house.get('/api/rooms')).rooms;
    assert.equal(health, 'silent');
    assert.match(trouble, /the sound server has no sink "nowhere"/);
    const { outputs } = await house.get('/api/outputs');
    const found = outputs.find(({ output }) => output === 'pulse: heard');
    assert.deepEqual(
      [found.kind, found.line, found.rooms],
      ['sound_server', 'output: {pulse: heard}', []],
      JSON.stringify(outputs),
    );
    assert.ok(found.name.length > 0);
    const env = { ...process.env, PULSE_SERVER: server.address };
    assert.match((await house.run(['outputs'], { env })).output, /^.* {2}output: \{pulse: heard\}$/m);
    const table = (await run(house, ['outputs'])).output;
    assert.match(table, /^pulse: heard +.* {2}sound server(, default)? +output: \{pulse: heard\}$/m);
    const recording = await server.listen();
    assert.deepEqual(
      await house.ask('POST', '/api/outputs/test', { output: 'pulse: heard' }).then(({ body }) => body),
      {
        heard: true,
        trouble: null,
      },
    );
    const samples = await recording.end();
    assert.ok(
      samples.some((sample) => Math.abs(sample) > 100),
      'the tone is heard',
    );
    await server.kill();
    assert.match((await house.run(['outputs'], { env })).output, /^Nothing was found/);
  });

  onServer('duck: off leaves the music', { pulse: 'heard', duck: 'off' }, async (server, house, id) => {
    await server.play();
    const recording = await server.listen();
    await house.playToItsEnd(id);
    const played = levels(await recording.end(), music);
    // Lowered it would be for a second; a busy machine's gaps are shorter.
    const lowered = played.slice(5, -5).filter((level) => level < Math.max(...played) - 10);
    assert.ok(lowered.length < 25, `the music was lowered for ${lowered.length * 20} ms: ${lowered}`);
  });

  onServer(
    'a server that was killed is trouble, and its room is heard again when it is back',
    'pulse: heard',
    async (server, house, id) => {
      const events = await house.watch();
      await house.playToItsEnd(id);
      assert.equal((await house.get('/api/rooms')).rooms[0].health, 'healthy');
      await server.kill();
      // Before anything is lost there.
      await events.until('room_health_changed', ({ health }) => health === 'silent');
      assert.match((await house.get('/api/rooms')).rooms[0].trouble, /no sound server answers/);
      const seen = await house.playToItsEnd(id);
      assert.match(seen.find((event) => event.type === 'sound_ended').data.error, /no sound server answers/);
      assert.match((await house.get('/api/rooms')).rooms[0].trouble, /no sound server answers/);
      await server.start();
      await server.play();
      const again = await house.playToItsEnd(id);
      assert.equal(again.find((event) => event.type === 'sound_ended').data.error, null);
      const [{ health, trouble }] = (await house.get('/api/rooms')).rooms;
      assert.deepEqual([health, trouble], ['healthy', null]);
      await server.until('the music to be raised', () => near(server.volume('music'), full));
      events.socket.terminate();
    },
  );

  onServer(
    'killed while the music is lowered, it is back at once, and for the program’s next stream',
    { pulse: 'heard', duck: -20 },
    async (server, house, id) => {
      const player = await server.play();
      await house.play(id);
      await server.until('the music to be lowered', () => near(server.volume('music'), 30419));
      house.process.kill('SIGKILL');
      await server.until('the music to be raised', () => near(server.volume('music'), full));
      await player.stop();
      await server.play();
      assert.ok(near(server.volume('music'), full));
    },
  );
}

const skipPlayers = kinds.PulseAudio ? false : 'PulseAudio is not installed; script/bootstrap installs it';

test('a sound server that hangs keeps no other room waiting, and is told', { skip: skipPlayers }, async () => {
  const server = new SoundServer('PulseAudio');
  const house = new House([{ output: 'pulse: heard' }, {}]);
  const sound = clip(rate / 2);
  try {
    house.sound('clip', sound);
    await server.start();
    server.server.process.kill('SIGSTOP');
    await house.start({ env: { PULSE_SERVER: server.address } });
    const volumes = [1, 2].map((id) => ({ id, volume: 100 }));
    const seen = await house.playToItsEnd(await house.add({ audio: { file: 'clip', delay_ms: 1 }, rooms: volumes }));
    assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
    assert.ok(heard(house.recording(2), sound, 100).isWhole);
    const [{ trouble }, other] = (await house.get('/api/rooms')).rooms;
    assert.match(trouble, /the sound server does not answer/);
    assert.equal(other.trouble, null);
  } finally {
    await house.remove();
    await server.remove();
  }
});

// A player on a bus of its own; `said` waits for what it says next.
async function withPlayer(body) {
  const server = new SoundServer('PulseAudio');
  const house = new House([{ output: { pulse: 'heard', duck: 'pause' } }]);
  const bus = new Program('dbus-daemon', [
    '--session',
    '--nofork',
    '--print-address',
    `--address=unix:dir=${server.folder}`,
  ]);
  const [address] = await bus.until('the address of the bus', (output) => /unix:\S+/.exec(output));
  const env = { PULSE_SERVER: server.address, DBUS_SESSION_BUS_ADDRESS: address };
  const player = new Program(process.env.MEDIA_PLAYER, ['book'], { env: { ...process.env, ...env } });
  const said = (words) => player.until(words, (output) => output.trim().split('\n').join(' ') === words);
  try {
    house.sound('clip', tone(announcement, 0.5));
    await said('Playing');
    await server.start();
    await house.start({ env });
    const id = await house.add({ audio: { file: 'clip', delay_ms: 500 }, rooms: [{ id: 1, volume: 100 }] });
    await body({ house, id, said, env });
  } finally {
    for (const program of [player, bus]) program.process.kill('SIGKILL');
    await house.remove();
    await server.remove();
  }
}

test(
  'duck: pause pauses a player that offers it, and has it play again after the announcement',
  { skip: skipPlayers },
  () =>
    withPlayer(async ({ house, id, said }) => {
      const events = await house.watch();
      await house.play(id);
      await said('Playing Paused');
      await events.until('announcement_ended', (data) => data.announcement === id);
      await said('Playing Paused Playing');
      events.socket.terminate();
      assert.deepEqual(house.complaints, []);
    }),
);

test('a player that is paused when the program is killed plays again', { skip: skipPlayers }, () =>
  withPlayer(async ({ house, id, said }) => {
    await house.play(id);
    await said('Playing Paused');
    house.process.kill('SIGKILL');
    await said('Playing Paused Playing');
  }),
);
