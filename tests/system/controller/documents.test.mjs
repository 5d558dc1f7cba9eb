// What the manuals show works as they say.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';

const manual = readFileSync(new URL('../../../docs/house-file.md', import.meta.url), 'utf8');
const example = /```yaml\n([^]*?)```/.exec(manual)[1];

test('the whole house file of the manual is in order, and the manual has a row for each of its keys', async () => {
  const folder = mkdtempSync(join(tmpdir(), 'controller-manual-'));
  const house = new House();
  try {
    mkdirSync(join(folder, 'media'));
    for (const file of ['announcements.xml', 'certificate.pem', 'key.pem']) writeFileSync(join(folder, file), '');
    writeFileSync(join(folder, 'house.yaml'), example);
    const { status, output } = await house.run(['check', join(folder, 'house.yaml')]);
    assert.equal(status, 0, output);
  } finally {
    rmSync(folder, { recursive: true });
    await house.remove();
  }
  for (const [, key] of example.matchAll(/^[ -]*(\w+):/gm))
    assert.match(manual, new RegExp(`^## .*\`${key}\`|^\\|.*\`${key}\`.*\\|`, 'm'), key);
});

test('the rooms that the manual shows are in order, and what is probably not meant is told with its line', async () => {
  const house = new House();
  const check = async (rooms) => {
    writeFileSync(house.file, `name: H\nmedia_folder: media\ndata_folder: data\n${rooms}`);
    const { status, output } = await house.run(['check', house.file]);
    assert.equal(status, 0, output);
    return output.replaceAll(house.file, 'FILE');
  };
  try {
    writeFileSync(join(house.folder, 'home-assistant.token'), 'token', { mode: 0o600 });
    const pages = readFileSync(new URL('../../../docs/rooms.md', import.meta.url), 'utf8');
    for (const [, rooms] of pages.matchAll(/```yaml\n(rooms:[^]*?)```/g))
      assert.match(await check(rooms), /^FILE: H is in order .*\n$/);
    const zone = (id) => `  - {id: ${id}, name: A, output: {multicast: "239.255.10.1:5004"}}\n`;
    assert.match(
      await check(`rooms:\n${zone(1)}${zone(2)}`),
      /^FILE:6: rooms\[2\]\.output: warning: 239\.255\.10\.1:5004 is the address of rooms\[1\] as well; .*\nFILE: H is in order/,
    );
  } finally {
    await house.remove();
  }
});

test('every key that the program knows stands in the manual', async () => {
  const house = new House();
  try {
    const wrong = { nonsense: 1 };
    writeFileSync(
      house.file,
      JSON.stringify({
        ...wrong,
        rooms: [wrong],
        navigators: [wrong],
        variables: [wrong],
        tokens: [wrong],
        tls: wrong,
      }),
    );
    const { output } = await house.run(['check', house.file]);
    const lists = [...output.matchAll(/the keys here are (.*)$/gm)];
    assert.equal(lists.length, 6, output);
    for (const key of lists.flatMap(([, keys]) => keys.split(', '))) assert.ok(manual.includes(`\`${key}\``), key);
  } finally {
    await house.remove();
  }
});

test('a new house says how it is started, as it was made, whatever its folder is called', async () => {
  const house = new House();
  try {
    const folder = join(house.folder, "the neighbour's house");
    const made = await house.run(['init', folder], { argv0: 'script/run' });
    assert.equal(made.status, 0, made.output);
    const told = /^Start it with: (.*)$/m.exec(made.output)[1];
    // What a shell makes of it.
    const words = execFileSync('sh', ['-c', `printf '%s\\n' ${told}`], { encoding: 'utf8' })
      .trimEnd()
      .split('\n');
    assert.deepEqual(words, ['script/run', join(folder, 'house.yaml'), '--play', '1']);
    assert.equal((await house.run(['check', words[1]])).status, 0);
  } finally {
    await house.remove();
  }
});
