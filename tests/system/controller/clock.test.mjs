// Announcements run on a clock that nobody can set.
import assert from 'node:assert/strict';
import { renameSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../harness/house.mjs';
import { clip, heard, rate } from '../harness/sounds.mjs';

const isSanitized = process.env.SANITIZERS !== undefined && process.env.SANITIZERS !== '';

for (const [direction, shift] of [
  ['back', -86400],
  ['forward', 86400],
])
  test(
    `a clock that is set ${direction} by a day changes no announcement and no popup`,
    { skip: isSanitized && 'the sanitizer must be loaded before the shifted clock' },
    async () => {
      const house = new House([{}]);
      try {
        const file = join(house.folder, 'clock');
        const setClock = (seconds) => {
          writeFileSync(`${file}.new`, `${seconds}\n`);
          renameSync(`${file}.new`, file);
        };
        setClock(0);
        house.sound('clip', clip(2 * rate));
        await house.start({ env: { LD_PRELOAD: process.env.SHIFTED_CLOCK, CLOCK_SHIFT: file } });
        const day = async () => Date.parse((await house.get('/api/history?limit=1')).history[0].started);
        const id = await house.add({
          audio: { file: 'clip' },
          rooms: [{ id: 1, volume: 100 }],
          navigators: [{ id: 11, room: 1 }],
          video: { text: 'Hello', timeout_ms: 3000 },
        });
        const events = await house.watch();
        await house.play(id);
        await events.until('sound_started');
        const start = process.hrtime.bigint();
        setClock(shift);
        await events.until('popup_hidden');
        const stood = Number(process.hrtime.bigint() - start) / 1e6;
        assert.ok(stood > 1000 && stood < 20000, `the popup stood for ${stood} ms more`);
        await events.until('announcement_ended');
        const taken = Number(process.hrtime.bigint() - start) / 1e6;
        assert.ok(taken < 60000, `it took ${taken} ms`);
        assert.deepEqual(await house.volumes(), [40]);
        await house.playToItsEnd(id);
        assert.ok(Math.abs((await day()) - Date.now() - shift * 1000) < 3600000, 'the clock was set');
        assert.equal(await house.stop(), 0);
        assert.ok(heard(house.recording(1), clip(2 * rate), 100).isWhole);
      } finally {
        await house.remove();
      }
    },
  );
