// Pages that are loudspeakers go, say nothing, lie or come again at random moments of an announcement, and the controller
// is killed: the room beside them hears it whole, each trouble is its own room's, and every volume is as it was.
// ROUNDS=50 for a longer run.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { House } from '../system/harness/house.mjs';
import { clip, heard, rate } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { randomFrom, seed } from './random.mjs';

const rounds = Number(process.env.ROUNDS ?? 4);
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// A page without a browser: does what it is told, unless `mood` says otherwise.
class Page {
  mood = '';

  static async open(house, id) {
    const page = new Page();
    page.house = house;
    const watcher = await house.watch(`/api/navigators/${id}/events`);
    page.socket = watcher.socket;
    page.socket.on('message', (text) => {
      const { type, data } = JSON.parse(text);
      if (type === 'sound_play') page.play(data).catch(() => {});
    });
    await watcher.until('state');
    page.say({ armed: true });
    return page;
  }

  say(words) {
    if (this.socket.readyState === this.socket.OPEN) this.socket.send(JSON.stringify(words));
  }

  async play({ play, address }) {
    const reply = await fetch(this.house.base + address);
    assert.equal(reply.status, 200);
    await reply.arrayBuffer();
    if (this.mood === 'dumb') return;
    for (const news of this.mood === 'lying' ? ['failed', 'started'] : ['started']) this.say({ play: { play, news } });
  }
}

test(`pages go at random moments of ${rounds} announcements, and the others hear them whole`, async (t) => {
  allow(20000 * Math.max(rounds, 5), t.name);
  const random = randomFrom(seed);
  const house = new House(
    [{ output: 'page' }, { output: 'page' }, {}],
    '',
    'navigators:\n  - {id: 11, name: One, room: 1}\n  - {id: 12, name: Other, room: 2}\n',
  );
  const sound = clip(rate / 2);
  let pages = [];
  const openAll = async () => {
    pages = [await Page.open(house, 11), await Page.open(house, 12)];
  };
  try {
    house.sound('clip', sound);
    await house.start();
    const volumes = await house.volumes();
    const rooms = [1, 2, 3].map((id) => ({ id, volume: 100 }));
    const id = await house.add({ audio: { file: 'clip', delay_ms: 100 }, rooms });
    let plays = 0;
    for (let round = 1; round <= rounds; ++round) {
      const what = `SEED=${seed}, round ${round}`;
      await openAll();
      pages[1].mood = ['', 'dumb', 'lying'][random.below(3)];
      const ended = house.playToItsEnd(id).catch(() => null); // null: the controller is gone
      await pause(random.below(1200));
      if (round % 4 === 0) {
        house.process.kill('SIGKILL');
        await Promise.all([house.ended, ended]);
        await house.start();
        plays = 0;
      } else {
        pages[0].socket.terminate();
        if (random.below(2) === 0) pages[0] = await Page.open(house, 11);
        const seen = await ended;
        plays += 1;
        assert.equal(seen.find(({ type }) => type === 'sound_ended').data.error, null, what);
        assert.ok(heard(house.recording(3, plays), sound, 100).isWhole, what);
        const troubled = seen.filter(({ type }) => type === 'room_output_failed').map(({ data }) => data.room);
        assert.equal(new Set(troubled).size, troubled.length, `${what}: ${troubled}`);
        assert.ok(!troubled.includes(3), what);
        assert.equal(troubled.includes(2), pages[1].mood !== '', `${what}: ${pages[1].mood}`);
      }
      assert.deepEqual(await house.volumes(), volumes, what);
      for (const { socket } of pages) socket.terminate();
    }
    assert.equal(await house.stop(), 0);
  } finally {
    for (const { socket } of pages) socket.terminate();
    await house.remove();
  }
});
