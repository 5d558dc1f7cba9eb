// The controller, its Snapcast server and one of that server's clients are killed at random moments of an announcement:
// who hears what, and how loud, is as before each time, and a room of another kind plays whole. In some rounds the
// controller's guard is killed with it; then the next start gives back. ROUNDS=1000 for a longer run.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { children } from '../system/harness/program.mjs';
import { isInstalled, SnapcastServer } from '../system/harness/snapcast.mjs';
import { clip, heard, rate } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { randomFrom, seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 50);
const skip = isInstalled ? false : 'Snapcast is not installed; script/bootstrap installs it';
const before = 'bath=80+kitchen=100:music';
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// What is killed in a round: ours mostly, for it takes least time to be back.
function victim(random) {
  const chance = random.below(20);
  if (chance === 0) return 'server';
  if (chance === 1) return 'client';
  return chance < 8 ? 'controller with its guard' : 'controller';
}

class Attack {
  changed = 0;
  sound = clip(rate / 5);

  async begin() {
    this.server = new SnapcastServer({ buffer: 200 });
    await this.server.start();
    this.clients = { kitchen: await this.server.client('kitchen'), bath: await this.server.client('bath') };
    await this.server.arrange({ kitchen: 100, bath: 80 });
    // It writes down what it has when it is ended, else some seconds later.
    await this.server.kill('SIGTERM');
    await this.restartServer();
    this.house = new House([{ output: this.server.room('kitchen') }, {}]);
    this.house.sound('clip', this.sound);
    await this.startController();
    const volumes = [1, 2].map((id) => ({ id, volume: 100 - 50 * (id % 2) }));
    this.id = await this.house.add({ audio: { file: 'clip', delay_ms: 100 }, rooms: volumes });
  }

  async restartServer() {
    await this.server.start();
    // One in twenty clients does not outlive its server, or does not come back to it.
    for (const id of ['kitchen', 'bath']) {
      this.clients[id].program.process.kill('SIGKILL');
      await this.clients[id].program.end();
      this.clients[id] = await this.server.client(id);
    }
  }

  async startController() {
    await this.house.start();
    this.takes = 0; // Recordings are counted from the start.
  }

  async #killController(withGuard) {
    const guards = withGuard ? children(this.house.process.pid, 'guard-borrowed') : [];
    this.house.process.kill('SIGKILL');
    guards.forEach((guard) => process.kill(Number(guard), 'SIGKILL'));
    await this.house.ended;
    if (!withGuard) await this.server.untilText(before);
    await this.startController();
  }

  // The rest of the announcement goes on in the other room.
  async #endAnnouncement(events) {
    await events.until('announcement_ended', (data) => data.announcement === this.id);
    assert.ok(heard(this.house.recording(2, this.takes), this.sound, 100).isWhole, 'the other room');
  }

  async round(what, moment) {
    const events = what.startsWith('controller') ? undefined : await this.house.watch();
    await this.house.play(this.id);
    ++this.takes;
    await pause(moment);
    this.changed += (await this.server.text()) === before ? 0 : 1;
    if (what === 'server') {
      await this.server.kill();
      await this.#endAnnouncement(events);
      await this.restartServer();
    } else if (what === 'client') {
      this.clients.kitchen.program.process.kill('SIGKILL');
      await this.#endAnnouncement(events);
      this.clients.kitchen = await this.server.client('kitchen');
    } else {
      await this.#killController(what !== 'controller');
    }
    events?.socket.terminate();
    await this.server.untilText(before);
  }

  async end() {
    await this.house?.remove();
    await this.server.remove();
  }
}

test(`killed ${rounds} times, everybody's music is as it was`, { skip }, async (t) => {
  allow(30000 * Math.max(rounds, 10), t.name);
  const random = randomFrom(seed);
  const attack = new Attack();
  try {
    await attack.begin();
    for (let round = 1; round <= rounds; ++round) {
      const what = victim(random);
      try {
        await attack.round(what, random.below(500));
      } catch (error) {
        error.message = `SEED=${seed}, round ${round}, the ${what}: ${error.message}`;
        throw error;
      }
    }
    t.diagnostic(`something was changed in ${attack.changed} rounds`);
    assert.ok(attack.changed > 0 || rounds < 10, 'no kill hit anything that was changed');
    assert.equal(await attack.house.stop(), 0);
  } finally {
    await attack.end();
  }
});
