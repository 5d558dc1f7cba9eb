// Completion in the shells themselves, with names from a running controller.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { test } from 'node:test';
import { environment, run, Running, withHouse } from '../harness/announce.mjs';

const hasShell = (name) => spawnSync(name, ['-c', 'true']).status === 0;

const withNames = (body) =>
  withHouse(async (house) => {
    for (const name of ['Dinner', 'Door bell', "It's late"]) await house.add({ name });
    await body(house);
  });

// What bash offers for the words, of which it takes the last one apart as it does at its prompt.
async function inBash(house, ...words) {
  const script = `source <(announce completion bash)
        COMP_WORDS=(announce "$@"); COMP_CWORD=$#; _announce; printf '%s\\n' "\${COMPREPLY[@]}"`;
  const { output, errors } = await new Running('bash', ['-c', script, 'bash', ...words], environment(house)).end();
  assert.equal(errors, '');
  return output.trimEnd().split('\n');
}

test('bash completes commands, options, and names as they have to be typed', () =>
  withNames(async (house) => {
    assert.deepEqual(await inBash(house, 'reh'), ['rehearse']);
    assert.deepEqual(await inBash(house, 'media', ''), ['list', 'add', 'speak', 'loudness', 'remove']);
    assert.deepEqual(await inBash(house, 'play', 'Dinner', '--w'), ['--wait']);
    assert.deepEqual(await inBash(house, 'play', 'd'), ['Dinner', 'Door\\ bell']);
    assert.deepEqual(await inBash(house, 'play', 'Door\\ '), ['Door\\ bell']);
    assert.deepEqual(await inBash(house, 'play', '"Do'), ['Door bell']);
    assert.deepEqual(await inBash(house, 'play', 'It'), ["It\\'s\\ late"]);
    assert.deepEqual(await inBash(house, 'add', '--room', 'Liv'), ['Living\\ room']);
    assert.deepEqual(await inBash(house, 'add', '--room', '=', 'Kit'), ['Kitchen']);
    assert.deepEqual(await inBash(house, 'add', '--screen', 'T'), ['Tablet', 'Television']);
    assert.deepEqual(await inBash(house, 'add', '--sound', 'ch'), ['chime.wav']);
    assert.deepEqual(await inBash(house, 'variables', 'set', ''), ['Outside']);
    assert.deepEqual(await inBash(house, 'completion', 'z'), ['zsh']);
    assert.deepEqual(await inBash(house, 'media', 'add', `${house.folder}/hou`), [`${house.folder}/house.yaml`]);
    const [scheme, rest] = house.base.split('://');
    assert.deepEqual(
      await inBash(house, '-a', scheme, ':', `//${rest.split(':')[0]}`, ':', rest.split(':')[1], 'play', 'Di'),
      ['Dinner'],
    );
  }));

test('without a controller there are still commands, and no messages', () =>
  withHouse(async (house) => {
    house.base = 'http://127.0.0.1:1';
    assert.deepEqual(await inBash(house, 'pl'), ['play']);
    assert.deepEqual(await inBash(house, 'play', ''), ['']);
    const { status, output, errors } = await run(house, ['complete', 'play', '']);
    assert.deepEqual({ status, output, errors }, { status: 0, output: '', errors: '' });
  }));

test('zsh hands the same names to its own completion', { skip: !hasShell('zsh') && 'there is no zsh' }, () =>
  withNames(async (house) => {
    const script = `compdef() { }; compadd() { print -l -- $values }; _files() { print files }
            source <(announce completion zsh); words=(announce "$@"); CURRENT=$#words; _announce`;
    const inZsh = (...words) =>
      execFileSync('zsh', ['-fc', script, 'zsh', ...words], { env: environment(house), encoding: 'utf8' })
        .trimEnd()
        .split('\n');
    assert.deepEqual(inZsh('play', 'D'), ['Dinner', 'Door bell']);
    assert.deepEqual(inZsh('rooms', 'volume', 'Living\\ r'), ['Living room']);
    assert.deepEqual(inZsh('import', ''), ['files']);
  }),
);

test('fish completes at its prompt', { skip: !hasShell('fish') && 'there is no fish' }, () =>
  withNames(async (house) => {
    const inFish = (line) =>
      execFileSync('fish', ['-c', `announce completion fish | source; complete -C '${line}'`], {
        env: environment(house),
        encoding: 'utf8',
      })
        .trimEnd()
        .split('\n')
        .map((one) => one.split('\t')[0]);
    assert.deepEqual(inFish('announce play D'), ['Dinner', 'Door bell']);
    assert.deepEqual(inFish('announce reh'), ['rehearse']);
    assert.deepEqual(inFish('announce add --screen Ta'), ['Tablet']);
  }),
);
