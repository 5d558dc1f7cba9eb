// Nobody reads what the program prints: it goes on, and ends when it is told to.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { closeSync, constants, openSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';
import { Program } from '../harness/program.mjs';
import { clip, rate } from '../harness/sounds.mjs';

// A pipe that holds 64 KiB, which this test opens and does not read.
function unread(house, name) {
  const file = join(house.folder, name);
  execFileSync('mkfifo', [file]);
  return openSync(file, constants.O_RDWR | constants.O_NONBLOCK);
}

test('a log that nobody reads stops nothing: requests are answered, a room is given back, SIGTERM ends it', async () => {
  const house = new House([{}]);
  const pipe = unread(house, 'log');
  try {
    house.sound('clip', clip(rate / 4));
    await house.start({ stdio: ['ignore', 'pipe', pipe] });
    // Each is two warnings in the log.
    for (let count = 0; count < 1500; ++count)
      await house.ask('POST', '/api/requests/modify_announcement', { id: '77', announcement: '<announcement/>' });
    const seen = await house.playToItsEnd(await house.add({ audio: { file: 'clip' }, rooms: [{ id: 1, volume: 90 }] }));
    assert.equal(seen.find((event) => event.type === 'sound_ended').data.error, null);
    assert.deepEqual(await house.volumes(), [40]);
    assert.equal(await house.stop(), 0);
  } finally {
    await house.remove();
    closeSync(pipe);
  }
});

test('answers of the console that nobody reads stop nothing', async () => {
  const house = new House([{}]);
  const pipe = unread(house, 'answers');
  const program = new Program(process.env.CONTROLLER, [house.file, '--port', '0', '--stay'], {
    stdio: ['pipe', pipe, 'pipe'],
  });
  const { stdin } = program.process;
  stdin.on('error', () => {});
  try {
    // The last one stands in the log when all before it have been answered.
    stdin.write('help\n'.repeat(500));
    stdin.write('request add_announcement announcement=<a\n');
    await program.until('the last command', (output) => /The agent failed in add_announcement/.test(output));
    program.process.kill('SIGTERM');
    assert.deepEqual(await program.end(), [0, null]);
  } finally {
    program.process.kill('SIGKILL');
    await program.ended;
    await house.remove();
    closeSync(pipe);
  }
});
