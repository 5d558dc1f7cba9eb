// Pages that are loudspeakers go, say nothing, lie or come again at random moments of an announcement, or the controller
// is killed: the room beside them hears it whole, each trouble is its own room's, and every volume is as it was.
// ROUNDS=1000 for a longer run.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { clip, rate } from '../system/harness/sounds.mjs';
import { allow } from '../system/harness/waits.mjs';
import { AttackedHouse, checkCounts, inLanes, lanes, pause, rounds } from './lanes.mjs';

const screens = 'navigators:\n  - {id: 11, name: One, room: 1}\n  - {id: 12, name: Other, room: 2}\n';
const sound = clip(rate / 2);

// A page without a browser: does what it is told, unless `mood` says otherwise.
class Page {
  static async open(house, id, mood = '') {
    const page = new Page();
    page.house = house;
    page.mood = mood;
    const watcher = await house.watch(`/api/navigators/${id}/events`);
    page.socket = watcher.socket;
    page.socket.on('message', (text) => {
      const { type, data } = JSON.parse(text);
      if (type === 'sound_play') page.play(data).catch(() => {});
    });
    await watcher.until('state');
    page.say({ armed: true });
    // Before this page is the loudspeaker, and the one before it is seen to be gone, a play is another matter.
    const isArmed = async () => {
      const { navigators } = await house.get('/api/navigators');
      return navigators.some((one) => one.id === id && one.pages === 1 && one.armed);
    };
    const look = async () => {
      while (!(await isArmed())) await pause(10);
    };
    await house.program.within(`page ${id} to be the loudspeaker`, look());
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

class AttackOnPages {
  pages = [];
  house = new AttackedHouse([{ output: 'page' }, { output: 'page' }, {}], '', screens);

  async begin() {
    this.house.sound('clip', sound);
    await this.house.start();
    this.volumes = await this.house.volumes();
    const rooms = [1, 2, 3].map((id) => ({ id, volume: 100 }));
    this.id = await this.house.add({ audio: { file: 'clip', delay_ms: 100 }, rooms });
  }

  async round(random) {
    const mood = random.one(['', 'dumb', 'lying']);
    const who = random.one(['ours', 'theirs']);
    const moment = random.below(1200);
    const comesAgain = random.below(2) === 0;
    this.pages = [await Page.open(this.house, 11), await Page.open(this.house, 12, mood)];
    const playing = this.house.playToItsEnd(this.id);
    playing.catch(() => {}); // of a controller that is gone
    await pause(moment);
    let was = [];
    if (who === 'ours') {
      await this.house.kill();
      await this.house.startAgain();
    } else {
      was = await this.#leave(playing, mood, comesAgain);
    }
    assert.deepEqual(await this.house.volumes(), this.volumes);
    this.#closePages();
    return [who, ...was];
  }

  async #leave(playing, mood, comesAgain) {
    this.pages[0].socket.terminate();
    if (comesAgain) this.pages[0] = await Page.open(this.house, 11);
    const seen = await playing;
    assert.equal(seen.find(({ type }) => type === 'sound_ended').data.error, null);
    const was = await this.house.checkHeard(3, sound);
    const troubles = seen.filter(({ type, data }) => type === 'room_output_failed' && !/beginning/.test(data.reason));
    const troubled = troubles.map(({ data }) => data.room);
    assert.equal(new Set(troubled).size, troubled.length, `${troubled}`);
    assert.ok(!troubled.includes(3));
    assert.equal(troubled.includes(2), mood !== '', mood);
    return was;
  }

  #closePages() {
    for (const { socket } of this.pages) socket.terminate();
  }

  async end() {
    assert.equal(await this.house.stop(), 0);
  }

  async remove() {
    this.#closePages();
    await this.house.remove();
  }
}

test(`pages go, or the controller, in ${rounds} announcements, and the others hear them whole`, async (t) => {
  allow(60000 + 20000 * Math.ceil(rounds / lanes), t.name);
  checkCounts(await inLanes(() => new AttackOnPages()), t);
});
