// What attacks share that mostly wait for sound in real time: several houses are attacked at a time, each in a lane with
// random numbers of its own, which depend on the seed and the lane alone. ROUNDS and LANES in the environment.
import assert from 'node:assert/strict';
import { statSync } from 'node:fs';
import { join } from 'node:path';
import { House } from '../system/harness/house.mjs';
import { heard, readRecording } from '../system/harness/sounds.mjs';
import { randomOfLane, seed } from './random.mjs';

export const rounds = Number(process.env.ROUNDS ?? 50);
export const lanes = Math.min(rounds, Number(process.env.LANES ?? 8));
export const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// `make` gives the attack of a lane: `begin`; `round`, which gives words for what there was, "ours" or "theirs" for who
// was killed among them; `end`, after the last round; `remove`, whatever became of it. When one has failed, the others
// end with their round. Gives how often there was what.
export async function inLanes(make, count = lanes) {
  const counts = {};
  let isOver = false;
  const run = async (lane) => {
    const attack = make();
    const random = randomOfLane(lane);
    let place = `SEED=${seed}, lane ${lane}`;
    try {
      await attack.begin();
      const last = Math.ceil((rounds - lane + 1) / count);
      for (let round = 1; round <= last && !isOver; ++round) {
        place = `SEED=${seed}, lane ${lane} of ${count}, round ${round}`;
        for (const word of await attack.round(random)) counts[word] = (counts[word] ?? 0) + 1;
      }
      if (!isOver) await attack.end();
    } catch (error) {
      isOver = true;
      error.message = `${place}: ${error.message}`;
      throw error;
    } finally {
      await attack.remove();
    }
  };
  const ends = await Promise.allSettled(Array.from({ length: count }, (_, index) => run(index + 1)));
  const failed = ends.find(({ status }) => status === 'rejected');
  if (failed) throw failed.reason;
  return counts;
}

// That both were killed, each time one of them, and that the room beside them mostly heard all of it.
export function checkCounts({ ours = 0, theirs = 0, whole = 0, late = 0 }, t) {
  t.diagnostic(
    `SEED=${seed}: killed ours ${ours} times, theirs ${theirs} times; the room beside whole ${whole} times, late ${late} times`,
  );
  assert.ok((ours > 0 && theirs > 0) || rounds < 50, 'only one of them was ever killed');
  assert.ok(whole >= late && (whole > 0 || rounds < 50), 'the machine was too slow for most rounds');
}

export class AttackedHouse extends House {
  async kill() {
    this.process.kill('SIGKILL');
    await this.ended;
  }

  async startAgain() {
    await this.start();
    await this.settle();
  }

  // What waited when it was killed is not played.
  async settle() {
    for (const { entry } of (await this.get('/api/queue')).queue) await this.ask('DELETE', `/api/queue/${entry}`);
    await this.ask('POST', '/api/stop');
    while ((await this.get('/api/status')).playing !== null) await pause(20);
  }

  // That the room heard all of the last announcement; ["whole"], or ["late"] when the machine was too slow, which the
  // room has said then.
  async checkHeard(room, samples) {
    const { trouble } = (await this.get('/api/rooms')).rooms[room - 1];
    if (/beginning/.test(trouble ?? '')) return ['late'];
    assert.equal(trouble, null, `room ${room}`);
    assert.ok(heard(this.newestRecording(room), samples, 100).isWhole, `room ${room}`);
    return ['whole'];
  }

  // Recordings are counted from each start.
  newestRecording(room) {
    const takes = this.recordings(room).map((name) => join(this.folder, 'takes', name));
    const [newest] = takes.sort((one, other) => statSync(other).mtimeMs - statSync(one).mtimeMs);
    return readRecording(newest);
  }
}
