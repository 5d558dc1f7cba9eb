// The controller is killed at random moments of an announcement over which music plays: the music is as loud as before
// within two seconds, and so is that program's next piece. In some rounds its guard is killed with it; then the next
// start does that. ROUNDS=1000 for a longer run.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { children } from '../system/harness/program.mjs';
import { announcement, kinds, SoundServer, tone } from '../system/harness/sound-server.mjs';
import { allow } from '../system/harness/waits.mjs';
import { AttackedHouse, inLanes, lanes, pause, rounds } from './lanes.mjs';

const full = 65536;
// Each has a sound server, which plays in real time.
const most = Math.min(lanes, 4);

class DuckingHouse extends AttackedHouse {
  start() {
    return super.start({ env: { PULSE_SERVER: this.address } });
  }
}

class KilledDucking {
  constructor(kind) {
    this.server = new SoundServer(kind);
    this.house = new DuckingHouse([{ output: 'pulse: heard' }]);
  }

  async begin() {
    this.house.sound('clip', tone(announcement, 1));
    await this.server.start();
    this.house.address = this.server.address;
    await this.house.start();
    const audio = { file: 'clip', delay_ms: 300 };
    this.id = await this.house.add({ audio, rooms: [{ id: 1, volume: 50 }] });
  }

  #isBack() {
    return Math.abs((this.server.volume('music') ?? 0) - full) <= 65;
  }

  async round(random) {
    const player = await this.server.play('music', 400, { seconds: 30 });
    await this.house.play(this.id);
    await pause(random.below(1500));
    const withGuard = random.below(3) === 0;
    const guards = withGuard ? children(this.house.process.pid, 'guard-borrowed') : [];
    const words = this.#isBack() ? [] : ['lowered'];
    const killed = performance.now();
    this.house.process.kill('SIGKILL');
    guards.forEach((guard) => process.kill(Number(guard), 'SIGKILL'));
    await this.house.ended;
    if (withGuard) await this.house.start();
    while (!this.#isBack()) {
      const passed = performance.now() - killed;
      assert.ok(passed < 2000, `${withGuard ? 'with its guard: ' : ''}not back after ${passed} ms`);
      await pause(10);
    }
    await player.stop();
    const next = await this.server.play();
    assert.ok(this.#isBack(), `the program's next piece is at ${this.server.volume('music')}`);
    await next.stop();
    if (withGuard) await this.house.settle();
    else await this.house.startAgain();
    return [withGuard ? 'with its guard' : 'alone', ...words];
  }

  async end() {
    assert.equal(await this.house.stop(), 0);
  }

  async remove() {
    await this.house.remove();
    await this.server.remove();
  }
}

for (const [kind, isInstalled] of Object.entries(kinds)) {
  const skip = isInstalled ? false : `${kind} is not installed; script/bootstrap installs it`;
  test(`${kind}: killed ${rounds} times while music is lowered, it is back within 2 s`, { skip }, async (t) => {
    allow(30000 * Math.max(rounds, 10), t.name);
    const counts = await inLanes(() => new KilledDucking(kind), most);
    t.diagnostic(`${JSON.stringify(counts)}`);
    assert.ok(counts.lowered > 0 || rounds < 4, 'no kill hit music that was lowered');
  });
}
