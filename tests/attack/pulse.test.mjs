// The controller is killed at random moments of an announcement over which music plays: the music is as loud as before
// within two seconds, and so is that program's next piece. In some rounds its guard is killed with it; then the next
// start does that. ROUNDS=50 for a longer run.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { children } from '../system/harness/program.mjs';
import { announcement, kinds, SoundServer, tone } from '../system/harness/sound-server.mjs';
import { allow } from '../system/harness/waits.mjs';
import { randomFrom, seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 4);
const full = 65536;
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

for (const [kind, isInstalled] of Object.entries(kinds)) {
  const skip = isInstalled ? false : `${kind} is not installed; script/bootstrap installs it`;
  test(`${kind}: killed ${rounds} times while music is lowered, it is back within 2 s`, { skip }, async (t) => {
    allow(30000 * Math.max(rounds, 10), t.name);
    const random = randomFrom(seed);
    const server = new SoundServer(kind);
    const house = new House([{ output: 'pulse: heard' }]);
    const start = () => house.start({ env: { PULSE_SERVER: server.address } });
    let slowest = 0;
    let lowered = 0;
    const isBack = () => Math.abs((server.volume('music') ?? 0) - full) <= 65;
    try {
      house.sound('clip', tone(announcement, 1));
      await server.start();
      await start();
      const id = await house.add({ audio: { file: 'clip', delay_ms: 300 }, rooms: [{ id: 1, volume: 50 }] });
      for (let round = 1; round <= rounds; ++round) {
        const player = await server.play('music', 400, { seconds: 30 });
        await house.play(id);
        await pause(random.below(1500));
        const withGuard = random.below(3) === 0;
        const guards = withGuard ? children(house.process.pid, 'guard-borrowed') : [];
        lowered += isBack() ? 0 : 1;
        house.process.kill('SIGKILL');
        guards.forEach((guard) => process.kill(Number(guard), 'SIGKILL'));
        await house.ended;
        if (withGuard) await start();
        const killed = performance.now();
        while (!isBack()) {
          const passed = performance.now() - killed;
          assert.ok(passed < 2000, `SEED=${seed}, round ${round}${withGuard ? ', with its guard' : ''}: ${passed} ms`);
          await pause(10);
        }
        slowest = Math.max(slowest, performance.now() - killed);
        await player.stop();
        const next = await server.play();
        assert.ok(isBack(), `SEED=${seed}, round ${round}: the program's next piece is at ${server.volume('music')}`);
        await next.stop();
        if (!withGuard) await start();
        await house.ask('POST', '/api/stop');
        while ((await house.get('/api/status')).playing !== null) await pause(20);
      }
      t.diagnostic(`music was back after ${Math.round(slowest)} ms at most; it was lowered in ${lowered} rounds`);
      assert.ok(lowered > 0 || rounds < 4, 'no kill hit music that was lowered');
      assert.equal(await house.stop(), 0);
    } finally {
      await house.remove();
      await server.remove();
    }
  });
}
