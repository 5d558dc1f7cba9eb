// The controller, or Home Assistant, is killed at random moments of an announcement in a room of its player and in one
// beside it. That one is heard whole, the player's room says why it is not heard, and both are heard the next time.
// ROUNDS=50 for a longer run.
import assert from 'node:assert/strict';
import { statSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { House } from '../system/harness/house.mjs';
import { Program } from '../system/harness/program.mjs';
import { clip, heard, rate, readRecording } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { randomFrom, seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 6);
const token = 'eyJ.long.lived';
const samples = clip(rate / 2);
const standIn = fileURLToPath(new URL('../system/harness/home-assistant.mjs', import.meta.url));
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

class KilledAssistant {
  async start() {
    this.program = new Program(process.execPath, [standIn, token, this.port ?? '0']);
    const [url] = await this.program.until('its address', (output) => /^http\S+/.exec(output));
    this.url = url;
    this.port = new URL(url).port;
  }

  // How often its player has fetched the whole clip.
  get sounds() {
    return this.program.output.split(`play_media 200 ${44 + samples.length * 4}`).length - 1;
  }

  async kill() {
    this.program.process.kill('SIGKILL');
    await this.program.ended;
  }
}

test(`killed ${rounds} times, either of them, the rooms are heard, or say why, and are heard again`, async (t) => {
  allow(30000 * Math.max(rounds, 10), t.name);
  const random = randomFrom(seed);
  const assistant = new KilledAssistant();
  await assistant.start();
  const { url } = assistant;
  const output = { home_assistant: 'media_player.kitchen', url, token_file: 'token' };
  const house = new House([{ output }, {}]);
  // What waited when it was killed is played first.
  const idle = async () => {
    while ((await house.get('/api/status')).playing !== null) await pause(20);
  };
  // The room beside it is heard whole.
  const playWhole = async (id, round) => {
    await house.playToItsEnd(id);
    const takes = house.recordings(2).map((name) => join(house.folder, 'takes', name));
    const [newest] = takes.sort((one, other) => statSync(other).mtimeMs - statSync(one).mtimeMs);
    const { isWhole } = heard(readRecording(newest), samples, 100);
    assert.ok(isWhole, `SEED=${seed}, round ${round}: ${newest}`);
  };
  try {
    writeFileSync(join(house.folder, 'token'), token, { mode: 0o600 });
    house.sound('clip', samples);
    await house.start();
    const id = await house.add({
      audio: { file: 'clip', delay_ms: 100 },
      rooms: [
        { id: 1, volume: 50 },
        { id: 2, volume: 100 },
      ],
    });
    const killed = { ours: 0, theirs: 0 };
    for (let round = 1; round <= rounds; ++round) {
      const isOurs = random.below(2) === 0;
      killed[isOurs ? 'ours' : 'theirs'] += 1;
      const moment = random.below(900);
      if (isOurs) {
        await house.play(id);
        await pause(moment);
        house.process.kill('SIGKILL');
        await house.ended;
        await house.start();
        await house.ask('POST', '/api/stop');
        await idle();
      } else {
        const playing = playWhole(id, round);
        await pause(moment);
        await assistant.kill();
        await playing;
        const { trouble } = (await house.get('/api/rooms')).rooms[0];
        assert.ok(trouble === null || trouble.includes(url), `SEED=${seed}, round ${round}: ${trouble}`);
        await assistant.start();
      }
      const before = assistant.sounds;
      await playWhole(id, round);
      assert.equal(assistant.sounds, before + 1, `SEED=${seed}, round ${round}: ${assistant.program.output}`);
      assert.equal((await house.get('/api/rooms')).rooms[0].trouble, null, `SEED=${seed}, round ${round}`);
    }
    t.diagnostic(`killed: ours ${killed.ours} times, theirs ${killed.theirs} times`);
    assert.equal(await house.stop(), 0);
  } finally {
    await house.remove();
    await assistant.kill();
  }
});
