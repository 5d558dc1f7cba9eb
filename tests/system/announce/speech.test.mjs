// What is spoken: stored by the command line, played by the real program with the installed voice, heard in a room.
import assert from 'node:assert/strict';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { json, run, withHouse } from '../harness/announce.mjs';
import { clip, rate, wavFile } from '../harness/sounds.mjs';

const millisecond = rate / 1000;
const recipe = { text: 'The post is here, {Outside}', voice: '', speed: 120, chime: 'chime' };

// A voice that fails as long as there is a file "broken", and a default that does not.
const voices = (folder) =>
  'voices:\n  - {name: Anna, language: en}\n' +
  '  - {name: Fragile, language: en, engine: command, command: [/bin/sh, -c, ' +
  `"test -e ${folder}/broken && echo no voice >&2 && exit 1; exec espeak-ng --stdin --stdout"]}\n`;

// Where sound stands in a recording, in milliseconds: pieces between which there are more than 100 ms of silence.
function piecesOf(recording) {
  const pieces = [];
  for (let at = 0; at < recording.length; ++at) {
    if (Math.abs(recording[at]) < 2) continue;
    const last = pieces.at(-1);
    if (last && at - last.end < 100 * millisecond) last.end = at;
    else pieces.push({ begin: at, end: at });
  }
  return pieces.map(({ begin, end }) => ({ begin: begin / millisecond, end: end / millisecond }));
}

const put = (house, file) =>
  house.ask('PUT', `/api/media/${file}`, wavFile(clip(rate / 4)), { 'Content-Type': 'audio/wav' });

async function play(house, number) {
  const { status, errors } = await run(house, ['play', 'Post', '--wait']);
  assert.equal(status, 0, errors);
  return piecesOf(house.recording(1, number));
}

test('a spoken sound is stored, listed, heard behind its chime, spoken anew, and there after a kill', () =>
  withHouse(async (house) => {
    const words = ['media', 'speak', 'post', recipe.text, '--chime', 'chime', '--speed', '120'];
    assert.match((await run(house, words)).output, /^post\.wav is stored, and lasts [\d.]+ m?s\n$/);
    const stored = (await house.get('/api/media')).media.find(({ name }) => name === 'post.wav');
    assert.deepEqual(stored.speech, recipe);
    assert.deepEqual([stored.sample_rate, stored.channels, stored.trouble], [48000, 1, undefined]);
    const { bytes } = await house.askForBytes('/api/media/post.wav');
    assert.equal(bytes.length, stored.bytes);
    assert.deepEqual(
      (await json(house, ['voices'])).voices.map(({ name, engine }) => [name, engine]),
      [['espeak', 'espeak']],
    );

    await run(house, ['add', '--name', 'Post', '--sound', 'post', '--room', 'Kitchen:40']);
    const [chime, speech] = await play(house, 1);
    assert.ok(Math.abs(chime.end - chime.begin - 250) < 2, `the chime lasts ${chime.end - chime.begin} ms`);
    assert.ok(Math.abs(speech.begin - chime.end - 300) < 15, `${speech.begin - chime.end} ms lie between`);

    await run(house, ['variables', 'set', 'Outside', 'somebody is at the door']);
    house.process.kill('SIGKILL');
    await house.ended;
    await house.start();
    const longer = await play(house, 1);
    const last = longer.at(-1).end - longer[0].begin;
    assert.ok(last > stored.duration_ms + 500, `it lasts ${last} ms with a longer value, ${stored.duration_ms} before`);

    assert.equal((await run(house, ['media', 'remove', 'post.wav'])).status, 7);
    await run(house, ['remove', 'Post']);
    assert.equal((await run(house, ['media', 'remove', 'post.wav'])).status, 0);
    assert.deepEqual(
      (await house.get('/api/media')).media.map(({ name }) => name),
      ['chime.wav'],
    );
  }));

test('what cannot be spoken is refused where it is typed, with what would be right', () =>
  withHouse(async (house) => {
    const cases = [
      [['post', 'It is {Inside}'], /no variable \{Inside\}; the house has \{Outside\}/],
      [['post', 'Hello', '--voice', 'Bertha'], /no voice Bertha[^]*right: one of espeak/],
      [['post', 'Somebody is at the door. '.repeat(40)], /would last \d+\.\d s, and a sound lasts 20\.0 s at most/],
      [['chime', 'Hello'], /there is a file chime\.wav in the media folder/],
    ];
    for (const [words, message] of cases) {
      const refused = await run(house, ['media', 'speak', ...words]);
      assert.notEqual(refused.status, 0);
      assert.match(refused.errors, message);
    }
    const put = (text) => house.ask('PUT', '/api/media/post.wav/speech', { text });
    assert.equal((await put('It is {Inside}')).status, 422);
    const long = await put('Somebody is at the door. '.repeat(40));
    assert.deepEqual([long.status, long.body.code], [422, 'too_long']);
    assert.ok(long.body.duration_ms > 20000);
    assert.deepEqual(
      (await house.get('/api/media')).media.map(({ name }) => name),
      ['chime.wav'],
    );
  }));

test('when a voice fails the chime alone is heard, and everybody is told why', async () => {
  const folder = mkdtempSync(join(tmpdir(), 'voice-'));
  try {
    await withHouse(
      async (house) => {
        writeFileSync(join(folder, 'broken'), '');
        const stored = await run(house, ['media', 'speak', 'post', 'Hello', '--chime', 'chime', '--voice', 'Fragile']);
        const why = 'the voice Fragile failed with status 1: no voice';
        assert.equal(stored.output, `post.wav is stored, but not spoken: ${why}\n`);
        await run(house, ['add', '--name', 'Post', '--sound', 'post', '--room', 'Kitchen:40']);
        const heard = await play(house, 1);
        assert.equal(heard.length, 1);
        assert.ok(Math.abs(heard[0].end - heard[0].begin - 250) < 2);
        assert.equal((await house.get('/api/voices')).voices[1].trouble, why);
        assert.equal((await house.get('/api/media')).media.find(({ name }) => name === 'post.wav').trouble, why);
        rmSync(join(folder, 'broken'));
        assert.equal((await play(house, 2)).length, 2);
        assert.equal((await house.get('/api/voices')).voices[1].trouble, null);
        const { events } = await house.get('/api/events/recent?limit=200');
        const told = events.filter(({ type }) => type.startsWith('voice_'));
        assert.deepEqual(
          told.map(({ type, data }) => [type, data.voice, data.reason]),
          [
            ['voice_failed', 'Fragile', why],
            ['voice_recovered', 'Fragile', undefined],
          ],
        );
      },
      { lines: voices(folder) },
    );
  } finally {
    rmSync(folder, { recursive: true, force: true });
  }
});

test('what a raw command plays is spoken with the values of then', () =>
  withHouse(async (house) => {
    await run(house, ['media', 'speak', 'post', 'It is {Outside}']);
    const id = await house.add({ audio: { file: 'post', delay_ms: 10 }, rooms: [{ id: 1, volume: 40 }] });
    const events = await house.watch();
    // Nobody waits until the new value has been spoken.
    const value = 'much warmer than anybody would have thought of it yesterday';
    await Promise.all([
      house.ask('PUT', '/api/variables/9/4', { value }),
      house.ask('POST', '/api/commands/execute_announcement', { id: `${id}` }),
    ]);
    await events.until('announcement_ended');
    const [speech] = piecesOf(house.recording(1)).slice(-1);
    const { duration_ms } = (await house.get('/api/media')).media.find(({ name }) => name === 'post.wav');
    const first = piecesOf(house.recording(1))[0];
    assert.ok(duration_ms > 2000, `${duration_ms} ms`);
    assert.ok(
      Math.abs(speech.end - first.begin - duration_ms) < 200,
      `${speech.end - first.begin} of ${duration_ms} ms`,
    );
    events.socket.terminate();
  }));

test('a sound is played as loud as it is when somebody says so, until that is taken back or the sound is gone', () =>
  withHouse(async (house) => {
    const loudness = (...words) => run(house, ['media', 'loudness', ...words]);
    const isAsItIs = async () => {
      const { media } = await house.get('/api/media');
      return media.find(({ name }) => name === 'chime.wav').loudness.as_it_is;
    };
    assert.equal((await loudness('chime', 'as-it-is')).output, 'chime.wav is played as loud as it is\n');
    assert.equal(await isAsItIs(), true);
    assert.match((await run(house, ['media'])).output, /chime\.wav .*LUFS, as it is/);
    assert.equal((await loudness('chime', 'even')).output, 'chime.wav is played as loud as all others\n');
    assert.equal(await isAsItIs(), false);
    assert.match((await loudness('chime', 'louder')).errors, /"louder" is no way to play a sound/);
    assert.match((await loudness('gong', 'even')).errors, /gong/);

    await loudness('chime', 'as-it-is');
    await run(house, ['media', 'remove', 'chime.wav']);
    await put(house, 'chime.wav');
    assert.equal(await isAsItIs(), false, 'another sound of its name is another one');
  }));

test('what is brought to be heard once goes when it was heard, and at the next start', () =>
  withHouse(async (house) => {
    const bring = async (name) => {
      const { status } = await put(house, `${name}.wav?passing=true`);
      return status;
    };
    const files = async () => (await house.get('/api/media')).media.map(({ name }) => name);
    assert.equal(await bring('recording'), 201);
    assert.equal(await bring('chime'), 200, 'what is to stay stays');
    const events = await house.watch();
    await house.ask('POST', '/api/say', { sound: 'recording', rooms: [{ id: 1 }] });
    assert.equal((await events.until('media_removed')).name, 'recording.wav');
    assert.deepEqual(await files(), ['chime.wav']);
    assert.ok(house.recording(1).some((sample) => sample !== 0));

    assert.equal(await bring('left'), 201);
    assert.equal((await put(house, 'kept.wav?passing=maybe')).status, 422);
    await house.get('/api/history'); // behind what was to be written
    house.process.kill('SIGKILL');
    await house.ended;
    await house.start();
    const after = await house.watch();
    while ((await files()).includes('left.wav')) await after.until('media_removed');
    assert.deepEqual(await files(), ['chime.wav']);
    events.socket.terminate();
    after.socket.terminate();
  }));
