// The power is cut at any moment, and the disk has lost, torn or reordered what no sync had followed: what was
// acknowledged is there at the next start. ROUNDS=250 for a longer run.
import assert from 'node:assert/strict';
import { mkdirSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { clip, rate } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { cutBehind, fateNames, readRecording } from './power-cut.mjs';
import { randomFrom, seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 30);
const changes = 60 + 2 * rounds;

// All that the house keeps, as a text.
async function stateOf(house) {
  const list = (await house.get('/api/announcements')).announcements;
  return JSON.stringify({
    announcements: list.map(({ id, name, video }) => [id, name, video.text]).sort(([one], [other]) => one - other),
    variable: (await house.get('/api/variables/9/4')).value,
    volumes: await house.volumes(),
  });
}

// Changes a house, and remembers its state behind each change, with the place in the recording where it was acknowledged.
class Recorder {
  states = [];

  constructor(house, random) {
    Object.assign(this, { house, random, recording: join(house.folder, 'recording') });
  }

  async start() {
    await this.house.start({
      env: {
        LD_PRELOAD: process.env.POWER_CUT,
        RECORDING: this.recording,
        RECORDED: join(this.house.folder, 'data'),
      },
    });
    await this.#remember();
  }

  async #remember() {
    const end = statSync(this.recording).size;
    this.states.push({ end, state: await stateOf(this.house) });
  }

  async change(number) {
    const { announcements } = await this.house.get('/api/announcements');
    const known = announcements.map(({ id }) => id);
    const described = {
      name: `Name ${number}`,
      audio: { file: 'clip' },
      video: { text: 'x'.repeat(this.random.below(4000)) },
    };
    const id = this.random.one(known);
    const kinds = [
      () => this.#ask('POST', '/api/announcements', { ...described, rooms: [{ id: 1, volume: 90 }] }),
      () => this.#ask('PUT', `/api/announcements/${id}`, described),
      () => this.#ask('DELETE', `/api/announcements/${id}`),
      () => this.#ask('PUT', '/api/variables/9/4', { value: `value ${number}` }),
      () => this.#ask('PUT', '/api/rooms/2/volume', { volume: this.random.below(101) }),
      () => this.#ask('POST', `/api/announcements/${id}/play`),
    ];
    await (known.length < 5 ? kinds[0] : this.random.one(kinds))();
    await this.#remember();
  }

  async #ask(method, path, body) {
    const reply = await this.house.ask(method, path, body);
    assert.ok(reply.status < 300, `${method} ${path}: ${reply.text}`);
  }
}

async function record(house, random) {
  const recorder = new Recorder(house, random);
  await recorder.start();
  for (let number = 0; number < changes; ++number) {
    await recorder.change(number);
    // What an orderly end leaves, and a start behind it.
    if (number === Math.floor(changes / 2)) {
      assert.equal(await house.stop(), 0);
      await recorder.start();
    }
  }
  await house.stop('SIGKILL');
  return { states: recorder.states, entries: readRecording(recorder.recording) };
}

// The last state that was acknowledged by then, or that of the change that was under way.
function statesAt(states, end) {
  const last = states.findLastIndex((one) => one.end <= end);
  return [...new Set(states.slice(Math.max(last, 0), last + 2).map(({ state }) => unplayed(state)))];
}

// A room that plays has its own volume back at the next start.
const unplayed = (state) => state.replace(/"volumes":\[\d+/, '"volumes":[40');

test(
  `the power cut ${rounds} times, all that was acknowledged is there, and nothing else`,
  { skip: process.env.SANITIZERS && 'the sanitizer must be loaded before the recorder' },
  async (t) => {
    allow(60000 + 20000 * rounds, t.name);
    const random = randomFrom(seed);
    const house = new House([{ output: 'silent' }, { output: 'silent' }]);
    try {
      house.sound('clip', clip(rate / 8));
      const { states, entries } = await record(house, random.branch());
      assert.ok(entries.length > changes, 'nothing was recorded');
      const data = join(house.folder, 'data');
      for (let round = 1; round <= rounds; ++round) {
        const count = round === 1 ? entries.length : 1 + random.below(entries.length);
        const fate = random.one(fateNames);
        const files = cutBehind(entries.slice(0, count), fate, random.branch());
        rmSync(data, { recursive: true });
        mkdirSync(data, { mode: 0o700 });
        for (const [name, content] of files) writeFileSync(join(data, name), content, { mode: 0o600 });
        try {
          await house.start();
          const due = statesAt(states, entries[count - 1].end);
          const found = unplayed(await stateOf(house));
          assert.ok(due.length === 0 || due.includes(found), `${found}\nis none of\n${due.join('\n')}`);
          assert.equal(await house.stop('SIGKILL'), 'SIGKILL');
        } catch (error) {
          const where = `behind entry ${count} of ${entries.length}, ${JSON.stringify({ ...entries[count - 1], bytes: 0, file: 0 })}`;
          error.message = `SEED=${seed}, round ${round}, cut ${where}, writes ${fate}: ${error.message}`;
          throw error;
        }
      }
    } finally {
      await house.remove();
    }
  },
);
