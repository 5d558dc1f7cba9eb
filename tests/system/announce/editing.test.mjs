// Editing: by options, in an editor, from a file.
import assert from 'node:assert/strict';
import { createServer } from 'node:http';
import { existsSync, readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { json, run, withHouse } from '../harness/announce.mjs';

// An editor that does to the file what the script says, once a call; each call keeps what it was given.
function editor(house, ...scripts) {
  const count = join(house.folder, 'count');
  writeFileSync(count, '0');
  scripts.forEach((script, index) => writeFileSync(join(house.folder, `edit${index}`), script));
  const file = join(house.folder, 'editor.sh');
  writeFileSync(
    file,
    `n=$(cat ${count})\necho $((n + 1)) > ${count}\ncp "$1" ${house.folder}/given$n\n` +
      `[ ! -f ${house.folder}/edit$n ] || . ${house.folder}/edit$n\n`,
  );
  return { EDITOR: `sh ${file}` };
}

const given = (house, index) => readFileSync(join(house.folder, `given${index}`), 'utf8');
const calls = (house) => Number(readFileSync(join(house.folder, 'count'), 'utf8'));
const left = (house) => readdirSync(house.folder).filter((name) => name.startsWith('announcement-'));

const withDinner = (body) =>
  withHouse(async (house) => {
    await run(house, [
      'add',
      '--name',
      'Dinner',
      '--sound',
      'chime',
      '--text',
      'Dinner is ready',
      '--room',
      'Kitchen:40',
      '--screen',
      'Tablet',
    ]);
    await body(house, () => house.get('/api/announcements/1'));
  });

test('options change what they name and leave the rest', () =>
  withDinner(async (house, stored) => {
    const before = await stored();
    const changed = await json(house, [
      'edit',
      'Dinner',
      '--name',
      'Supper',
      '--room',
      'Kitchen:60',
      '--room',
      'Living room',
      '--sound',
      'none',
      '--popup-time',
      '5s',
    ]);
    assert.deepEqual(changed, {
      ...before,
      name: 'Supper',
      audio: { file: '', delay_ms: 0 },
      video: { ...before.video, timeout_ms: 5000 },
      rooms: [
        { id: 1, volume: 60 },
        { id: 2, volume: -1 },
      ],
    });
    assert.deepEqual(await stored(), changed);
  }));

test('what is changed in the editor is stored; what is left alone stays', () =>
  withDinner(async (house, stored) => {
    const before = await stored();
    const env = editor(
      house,
      `sed -i 's/volume: 40/volume: 70/; s/^text:.*/text: "夕食: now"/; s/^sound_delay:.*/sound_delay: 2s/' "$1"`,
    );
    const { status, output } = await run(house, ['edit', 'Dinner'], env);
    assert.equal(status, 0);
    assert.equal(output, 'announcement 1 (Dinner) is changed\n');
    assert.match(given(house, 0), /^name: Dinner +# how it is called$/m);
    assert.match(given(house, 0), /^ {2}- \{room: Kitchen, volume: 40\}$/m);
    assert.deepEqual(await stored(), {
      ...before,
      audio: { file: 'chime', delay_ms: 2000 },
      video: { ...before.video, text: '夕食: now' },
      rooms: [{ id: 1, volume: 70 }],
    });
    assert.deepEqual(left(house), []);
  }));

test('VISUAL goes before EDITOR, and nothing changed or everything deleted leaves it as it was', () =>
  withDinner(async (house, stored) => {
    const before = await stored();
    for (const command of ['true', 'sh -c \': > "$1"\' sh']) {
      const { status, output } = await run(house, ['edit', '1'], { VISUAL: command, EDITOR: 'false' });
      assert.equal(status, 0);
      assert.equal(output, 'announcement 1 (Dinner) is as it was\n');
    }
    assert.deepEqual(await stored(), before);
    assert.deepEqual(left(house), []);
  }));

test('mistakes open the editor again with all of them on top, and nothing is lost', () =>
  withDinner(async (house, stored) => {
    const env = editor(
      house,
      `sed -i 's/room: Kitchen/room: Kitchn/; s/^ok_button:.*/ok_button: maybe/; s/^text:.*/txt: Late/' "$1"`,
      `sed -i 's/room: Kitchn/room: Kitchen/; s/^ok_button:.*/ok_button: no/; s/^txt:/text:/' "$1"`,
    );
    const { status, errors } = await run(house, ['edit', 'Dinner'], env);
    assert.equal(status, 0, errors);
    assert.equal(calls(house), 2);
    const again = given(house, 1);
    assert.match(again, /^#! line \d+: there is no room "Kitchn"; right: the nearest: Kitchen \(1\)$/m);
    assert.match(again, /^#! line \d+: there is no key "txt"; right: text\?$/m);
    assert.match(again, /^#! line \d+: ok_button: "maybe" is neither; right: yes or no$/m);
    assert.match(again, /^txt: Late/m);
    // The numbers are those of the text with the mistakes on top of it.
    const number = Number(/^#! line (\d+): there is no room/m.exec(again)[1]);
    assert.match(again.split('\n')[number - 1], /Kitchn/);
    assert.equal((await stored()).video.text, 'Late');
    assert.equal((await stored()).video.ok_button, false);
  }));

test('a text that is no YAML, and one that the controller refuses, can be mended too', () =>
  withDinner(async (house, stored) => {
    const env = editor(
      house,
      `echo 'name: [' > "$1"`,
      `printf 'name: "%s"\\n' "$(head -c 300000 /dev/zero | tr '\\0' x)" > "$1"`,
      `printf 'name: Fine\\n' > "$1"`,
    );
    const { status, errors } = await run(house, ['edit', 'Dinner'], env);
    assert.equal(status, 0, errors);
    assert.match(given(house, 1), /^#! .*this is no YAML/m);
    assert.match(given(house, 2), /^#! /m);
    assert.equal((await stored()).name, 'Fine');
    assert.deepEqual((await stored()).rooms, [{ id: 1, volume: 40 }]);
  }));

test('mistakes that are left end it; the text is kept, and --file takes it later', () =>
  withDinner(async (house, stored) => {
    const env = editor(house, `sed -i 's/^sound:.*/sound: chim/; s/^text:.*/text: Kept/' "$1"`);
    const { status, errors } = await run(house, ['edit', 'Dinner'], env);
    assert.equal(status, 2);
    assert.equal(left(house).length, 1);
    const file = join(house.folder, left(house)[0]);
    assert.ok(errors.includes(file), errors);
    assert.equal((await stored()).video.text, 'Dinner is ready');

    const text = readFileSync(file, 'utf8');
    const wrong = await run(house, ['edit', '1', '--file', file]);
    assert.equal(wrong.status, 2);
    assert.match(wrong.errors, /no sound "chim"/);
    writeFileSync(file, text.replace('sound: chim', 'sound: chime'));
    assert.equal((await run(house, ['edit', '1', '--file', file])).status, 0);
    assert.equal((await stored()).video.text, 'Kept');
    assert.equal((await run(house, ['edit', '1', '--file', file, '--text', 'x'])).status, 2);
  }));

test('a text that comes back as something else than UTF-8 is kept', () =>
  withDinner(async (house, stored) => {
    const before = await stored();
    const env = editor(house, `printf 'name: \\377\n' > "$1"`);
    const { status, errors } = await run(house, ['edit', '1'], env);
    assert.equal(status, 2);
    assert.match(errors, /is not UTF-8/);
    assert.equal(left(house).length, 1);
    assert.deepEqual(await stored(), before);
  }));

test('an editor that fails, or is not there, changes nothing', () =>
  withDinner(async (house, stored) => {
    const before = await stored();
    for (const command of ['false', 'no-such-editor']) {
      const { status, errors } = await run(house, ['edit', '1'], { EDITOR: command });
      assert.equal(status, 1);
      assert.match(errors, /the editor ".*" has failed; nothing is changed/);
    }
    assert.deepEqual(await stored(), before);
  }));

test('when the controller is gone by the time the text is done, the text is kept', () =>
  withDinner(async (house) => {
    const env = editor(
      house,
      `sed -i 's/^text:.*/text: Kept/' "$1"\nkill -TERM ${house.process.pid}\n` +
        `while kill -0 ${house.process.pid} 2>/dev/null; do sleep 0.1; done`,
    );
    const { status, errors } = await run(house, ['edit', '1'], env);
    assert.equal(status, 8);
    assert.equal(left(house).length, 1);
    const file = join(house.folder, left(house)[0]);
    assert.ok(errors.includes(file), errors);
    assert.match(readFileSync(file, 'utf8'), /^text: Kept/m);
    assert.ok(existsSync(file));
  }));

test('when somebody else has changed it meanwhile nothing is overwritten, and the text is kept', () =>
  withDinner(async (house, stored) => {
    const one = await stored();
    const reply = (response, status, body, headers = {}) =>
      response.writeHead(status, { 'Content-Type': 'application/json', ...headers }).end(JSON.stringify(body));
    const asked = [];
    // A controller whose announcement has another version by the time it is stored.
    const server = createServer((request, response) => {
      request.resume();
      const answers = {
        '/api/rooms': { rooms: [{ id: 1, name: 'Kitchen' }] },
        '/api/navigators': { navigators: [{ id: 11, name: 'Tablet', room: 1 }] },
        '/api/announcements': { announcements: [one] },
      };
      if (request.method === 'PUT') {
        asked.push(request.headers['if-match']);
        return reply(response, 412, { status: 412, detail: 'the announcement has been changed' });
      }
      return reply(response, 200, answers[request.url] ?? one, { ETag: '"v1"' });
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
    try {
      const env = {
        ...editor(house, `sed -i 's/^text:.*/text: Mine/' "$1"`),
        ANNOUNCE_ADDRESS: `http://127.0.0.1:${server.address().port}`,
      };
      const edited = await run(house, ['edit', 'Dinner'], env);
      assert.equal(edited.status, 7, edited.errors);
      assert.match(edited.errors, /the announcement has been changed; the text is in/);
      assert.match(readFileSync(join(house.folder, left(house)[0]), 'utf8'), /^text: Mine/m);
      assert.equal((await run(house, ['edit', 'Dinner', '--text', 'Mine'], env)).status, 7);
      assert.deepEqual(asked, ['"v1"', '"v1"']);
    } finally {
      server.close();
    }
  }));
