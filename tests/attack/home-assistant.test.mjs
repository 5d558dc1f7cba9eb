// The controller, or Home Assistant, is killed at random moments of an announcement in a room of its player and in one
// beside it. That one is heard whole, the player's room says why it is not heard, and both are heard the next time.
// ROUNDS=1000 for a longer run.
import assert from 'node:assert/strict';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Program } from '../system/harness/program.mjs';
import { clip, rate } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { AttackedHouse, checkCounts, inLanes, lanes, pause, rounds } from './lanes.mjs';

const token = 'eyJ.long.lived';
const samples = clip(rate / 2);
const standIn = fileURLToPath(new URL('../system/harness/home-assistant.mjs', import.meta.url));

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

class AttackOnHomeAssistant {
  assistant = new KilledAssistant();

  async begin() {
    await this.assistant.start();
    const output = { home_assistant: 'media_player.kitchen', url: this.assistant.url, token_file: 'token' };
    this.house = new AttackedHouse([{ output }, {}]);
    writeFileSync(join(this.house.folder, 'token'), token, { mode: 0o600 });
    this.house.sound('clip', samples);
    await this.house.start();
    this.volumes = await this.house.volumes();
    const rooms = [50, 100].map((volume, index) => ({ id: index + 1, volume }));
    this.id = await this.house.add({ audio: { file: 'clip', delay_ms: 100 }, rooms });
  }

  async round(random) {
    const who = random.one(['ours', 'theirs']);
    const moment = random.below(900);
    if (who === 'ours') {
      await this.house.play(this.id);
      await pause(moment);
      await this.house.kill();
      await this.house.startAgain();
    } else {
      await this.#killTheirs(moment);
    }
    const before = this.assistant.sounds;
    const was = await this.#playWhole();
    assert.equal(this.assistant.sounds, before + 1, this.assistant.program.output);
    assert.equal(await this.#trouble(), null);
    assert.deepEqual(await this.house.volumes(), this.volumes);
    return [who, ...was];
  }

  async #killTheirs(moment) {
    const playing = this.#playWhole();
    playing.catch(() => {}); // It is waited for below.
    await pause(moment);
    await this.assistant.kill();
    await playing;
    const trouble = await this.#trouble();
    assert.ok(trouble === null || trouble.includes(this.assistant.url), trouble);
    await this.assistant.start();
  }

  async #playWhole() {
    await this.house.playToItsEnd(this.id);
    return this.house.checkHeard(2, samples);
  }

  async #trouble() {
    return (await this.house.get('/api/rooms')).rooms[0].trouble;
  }

  async end() {
    assert.equal(await this.house.stop(), 0);
  }

  async remove() {
    await this.house?.remove();
    await this.assistant.kill();
  }
}

test(`killed ${rounds} times, either of them, the rooms are heard, or say why, and are heard again`, async (t) => {
  allow(60000 + 30000 * Math.ceil(rounds / lanes), t.name);
  checkCounts(await inLanes(() => new AttackOnHomeAssistant()), t);
});
