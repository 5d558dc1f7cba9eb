// Voices that fail, each in a way of its own: the real program, which asks them for `say` and for stored announcements,
// and a room that records what is heard instead.
import assert from 'node:assert/strict';
import { once } from 'node:events';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { withHouse } from '../harness/announce.mjs';
import { clip, heard, rate } from '../harness/sounds.mjs';

const chime = clip(rate / 4);
const written = (type, data, payload = '') => {
  const head = { type, data_length: data.length, ...(payload && { payload_length: payload.length }) };
  return `${JSON.stringify(head)}\n${data}${payload}`;
};

// A server of the Wyoming protocol: `answer` is given a socket, and which event has come over it.
async function server(answer) {
  const sockets = new Set();
  const listening = createServer((socket) => {
    sockets.add(socket);
    socket.on('error', () => {});
    socket.on('data', (bytes) => answer(socket, `${bytes}`.includes('"synthesize"') ? 'synthesize' : 'describe'));
  }).listen(0, '127.0.0.1');
  await once(listening, 'listening');
  const close = async () => {
    for (const socket of sockets) socket.destroy();
    listening.close();
    await once(listening, 'close');
  };
  return { port: listening.address().port, close };
}

function breakOff(socket, event) {
  if (event === 'describe') {
    socket.write(written('info', '{"tts":[]}'));
    return;
  }
  const chunk = written('audio-chunk', '{"rate":22050,"width":2,"channels":1}', 'x'.repeat(4096));
  socket.end(chunk.slice(0, chunk.length / 2));
}

async function failingVoices() {
  const breaking = await server(breakOff);
  const silent = await server(() => {});
  const gone = await server(() => {});
  await gone.close();
  const script = (text) => ({ engine: 'command', command: ['/bin/sh', '-c', text] });
  const wyoming = ({ port }) => ({ engine: 'wyoming', host: '127.0.0.1', port });
  const voices = {
    Hanging: [script('sleep 1000'), 'has not spoken within 10 s'],
    Garbage: [script('echo this is no sound'), 'gives what is no WAV file'],
    Dying: [script('kill -SEGV $$'), 'was ended by signal 11'],
    Endless: [script('cat /dev/zero'), 'has printed more than 32 MiB'],
    Missing: [
      { engine: 'command', command: ['/nowhere/speaker'] },
      'is not there: no program /nowhere/speaker is installed',
    ],
    Breaking: [wyoming(breaking), 'has broken off before its audio-stop'],
    Refusing: [wyoming(gone), `cannot be reached: 127.0.0.1 port ${gone.port}: Connection refused`],
    Silent: [wyoming(silent), 'has not spoken within 10 s'],
  };
  const lines = [{ name: 'Anna', language: 'en' }];
  for (const [name, [voice]] of Object.entries(voices)) lines.push({ name, language: 'en', ...voice });
  return {
    why: Object.fromEntries(Object.entries(voices).map(([name, [, why]]) => [name, `the voice ${name} ${why}`])),
    lines: `voices:\n${lines.map((line) => `  - ${JSON.stringify(line)}\n`).join('')}`,
    close: () => Promise.all([breaking.close(), silent.close()]),
  };
}

// Stores a sound of this voice, and an announcement that plays it and shows its text.
async function store(house, voice) {
  const text = `Dinner is ready, says ${voice}`;
  const { status, body } = await house.ask('PUT', `/api/media/${voice}/speech`, { text, voice, chime: 'chime' });
  assert.equal(status, 200, JSON.stringify(body));
  const id = await house.add({
    name: voice,
    audio: { file: voice, delay_ms: 10 },
    video: { text, timeout_ms: 500 },
    rooms: [{ id: 1, volume: 80 }],
    navigators: [{ id: 11, room: 1 }],
  });
  return { id, text, trouble: body.trouble };
}

async function say(house, voice) {
  const order = { text: `Now says ${voice}`, voice, chime: 'chime', rooms: [{ id: 1, volume: 80 }] };
  const { status, body } = await house.ask('POST', '/api/say', {
    ...order,
    navigators: [{ id: 11 }],
    timeout_ms: 500,
  });
  assert.equal(status, 202, JSON.stringify(body));
  const { audio, video } = await house.get(`/api/announcements/${body.announcement}`);
  assert.deepEqual([body.trouble, audio.file, video.text], [body.trouble, 'chime', order.text]);
  return { ...body, text: order.text };
}

// Plays until as many are over, and gives what each was: its text on the screen, and what was recorded.
async function untilOver(house, events, count) {
  const played = [];
  while (played.length < count) {
    const { announcement } = await events.until('announcement_started');
    const { popup } = await events.until('popup_shown');
    await events.until('announcement_ended');
    played.push({ announcement, message: popup.message, recording: house.recording(1, played.length + 1) });
  }
  return played;
}

test('whatever a voice does, the chime alone is heard, the text is shown, and everybody is told why', async () => {
  const { why, lines, close } = await failingVoices();
  const names = Object.keys(why);
  try {
    await withHouse(
      async (house) => {
        assert.match(house.output, /warning: the voice Missing is not there/);
        assert.match((await house.run(['check', house.file])).output, /on this machine the voice Missing is not there/);
        const asked = async () =>
          (await house.get('/api/voices')).voices.filter(({ trouble }) => trouble).map(({ name }) => name);
        assert.deepEqual(await asked(), ['Missing']);
        const events = await house.watch();
        const stored = await Promise.all(names.map((name) => store(house, name)));
        assert.deepEqual(
          stored.map(({ trouble }) => trouble),
          names.map((name) => why[name]),
        );
        const expected = new Map();
        // The one that hangs is waited for; meanwhile nothing begins, and what was said can be taken back.
        const heardStored = stored.filter((_, index) => names[index] !== 'Silent');
        for (const { id, text } of heardStored) {
          expected.set(id, text);
          await house.play(id);
        }
        const said = await Promise.all(names.filter((name) => name !== 'Hanging').map((name) => say(house, name)));
        assert.deepEqual(
          said.map(({ trouble }) => trouble),
          names.filter((name) => name !== 'Hanging').map((name) => why[name]),
        );
        const kept = said.at(-1);
        expected.set(kept.announcement, kept.text);
        for (const { entry } of said.slice(0, -1))
          assert.equal((await house.ask('DELETE', `/api/queue/${entry}`)).status, 204);
        for (const { announcement, message, recording } of await untilOver(house, events, expected.size)) {
          assert.equal(message, expected.get(announcement));
          assert.ok(heard(recording, chime, 80).isWhole, `"${message}" is the chime, and nothing else`);
        }
        const { voices } = await house.get('/api/voices');
        assert.deepEqual(
          voices.map(({ name, trouble }) => [name, trouble]),
          [['Anna', null], ...names.map((name) => [name, why[name]])],
        );
        const { media } = await house.get('/api/media');
        for (const name of names) assert.equal(media.find((one) => one.name === `${name}.wav`).trouble, why[name]);

        const { id } = await store(house, 'Anna');
        await house.play(id);
        await events.until('announcement_ended', (data) => data.announcement === id);
        const spoken = house.recording(1, expected.size + 1);
        assert.ok(!heard(spoken, chime, 80).isWhole, 'the next one is the chime with the speech behind it');
        events.socket.terminate();
      },
      { lines },
    );
  } finally {
    await close();
  }
});

test('while a voice fails, an old text is never heard with a new popup', async () => {
  const folder = mkdtempSync(join(tmpdir(), 'voice-'));
  const command = ['/bin/sh', '-c', `test ! -e ${folder}/broken && exec espeak-ng --stdin --stdout`];
  const lines = `voices:\n  - ${JSON.stringify({ name: 'Fragile', language: 'en', engine: 'command', command })}\n`;
  try {
    await withHouse(
      async (house) => {
        const put = (text) => house.ask('PUT', '/api/media/post/speech', { text, chime: 'chime' });
        assert.equal((await put('It is {Outside}')).body.trouble, undefined);
        const id = await house.add({
          audio: { file: 'post', delay_ms: 10 },
          video: { variable: { device: 9, variable: 4, name: 'Outside' }, timeout_ms: 500 },
          rooms: [{ id: 1, volume: 80 }],
          navigators: [{ id: 11, room: 1 }],
        });
        let takes = 0;
        const played = async () => {
          const seen = await house.playToItsEnd(id);
          const { popup } = seen.find(({ type }) => type === 'popup_shown').data;
          return [popup.message, heard(house.recording(1, ++takes), chime, 80).isWhole];
        };
        assert.deepEqual(await played(), ['cold', false]);
        writeFileSync(join(folder, 'broken'), '');
        await house.ask('PUT', '/api/variables/9/4', { value: 'warm' });
        assert.deepEqual(await played(), ['warm', true]);
        assert.match((await put('It has become {Outside}')).body.trouble, /the voice Fragile failed with status 1/);
        assert.deepEqual(await played(), ['warm', true]);
        rmSync(join(folder, 'broken'));
        assert.deepEqual(await played(), ['warm', false]);
      },
      { lines },
    );
  } finally {
    rmSync(folder, { recursive: true, force: true });
  }
});
