// One of several that change a house at the same time, each what is its own: its announcements, a variable, a room that
// plays nothing, a sound. It knows what was acknowledged, and the one change that was under way when the program ended.
import assert from 'node:assert/strict';
import { isDeepStrictEqual } from 'node:util';
import { wavFile } from '../system/harness/sounds.mjs';

const [fewest, most] = [12, 60];

export class Writer {
  // What the house must hold; `underWay` may be there or not, but whole.
  #announcements = new Map();
  #variable = 'new';
  #volume = 40;
  #sound;
  #underWay;
  #count = 0;

  constructor(house, number, random) {
    Object.assign(this, { house, number, random });
    this.room = number + 2;
    this.soundName = `sound-${number}.wav`;
    this.variableNumber = number;
  }

  // Changes one thing after the other until the house does not answer any more.
  async work() {
    const kinds = [this.#replace, this.#remove, this.#set, this.#turn, this.#upload, this.#play, this.#test];
    const more = [...kinds, this.#add, this.#add, this.#addAsTheAgentDoes];
    for (;;) await this.random.one(this.#announcements.size < most ? more : kinds).call(this);
  }

  #newAnnouncement() {
    const { below } = this.random;
    return {
      name: `Writer ${this.number}, ${++this.#count}`,
      audio: { file: 'clip', delay_ms: below(300) },
      video: { text: 'x'.repeat(below(3000)), timeout_ms: 500 + below(500) },
      rooms: [1, 2].map((id) => ({ id, volume: 50 + below(50) })),
    };
  }

  // Sends a change; when it is acknowledged `keep` takes it over, and when it was under way to the end `settle` looks
  // whether it is there.
  async #change(method, path, body, keep, settle, headers) {
    this.#underWay = settle;
    const reply = await this.house.ask(method, path, body, headers);
    assert.ok(reply.status < 300, `${method} ${path}: ${reply.status} ${reply.text}`);
    this.#underWay = undefined;
    keep(reply);
  }

  #add() {
    const wanted = this.#newAnnouncement();
    return this.#change(
      'POST',
      '/api/announcements',
      wanted,
      ({ body }) => this.#announcements.set(body.id, wanted),
      (found) => this.#takeByName(found, wanted),
    );
  }

  async #addAsTheAgentDoes() {
    const name = `Writer ${this.number}, ${++this.#count}`;
    const wanted = { name, audio: { file: 'clip', delay_ms: 0 } };
    const announcement = `<announcement><name>${name}</name><audio><file>clip</file><delay>0</delay></audio></announcement>`;
    await this.#change(
      'POST',
      '/api/requests/add_announcement',
      { announcement },
      ({ text }) => this.#announcements.set(Number(/<success>(\d+)</.exec(text)[1]), wanted),
      (found) => this.#takeByName(found, wanted),
    );
  }

  #takeByName(found, wanted) {
    for (const [id, { name }] of found) if (name === wanted.name) this.#announcements.set(id, wanted);
  }

  async #replace() {
    const id = this.random.one([...this.#announcements.keys()]);
    if (id === undefined) return;
    const wanted = this.#newAnnouncement();
    const keep = () => this.#announcements.set(id, wanted);
    await this.#change('PUT', `/api/announcements/${id}`, wanted, keep, (found) => {
      if (found.get(id)?.name === wanted.name) keep();
    });
  }

  async #remove() {
    const ids = [...this.#announcements.keys()];
    if (ids.length < fewest) return;
    const id = this.random.one(ids);
    const keep = () => this.#announcements.delete(id);
    await this.#change('DELETE', `/api/announcements/${id}`, undefined, keep, (found) => {
      if (!found.has(id)) keep();
    });
  }

  #set() {
    const value = `value ${++this.#count}`;
    const keep = () => (this.#variable = value);
    return this.#change('PUT', `/api/variables/9/${this.variableNumber}`, { value }, keep, (_, { variables }) => {
      if (variables.get(this.variableNumber) === value) keep();
    });
  }

  #turn() {
    const volume = this.random.below(101);
    const keep = () => (this.#volume = volume);
    return this.#change('PUT', `/api/rooms/${this.room}/volume`, { volume }, keep, (_, { volumes }) => {
      if (volumes.get(this.room) === volume) keep();
    });
  }

  #upload() {
    const samples = new Int16Array(2000 + this.random.below(60000)).fill(++this.#count % 30000);
    const bytes = wavFile(samples, 8000);
    const keep = () => (this.#sound = bytes);
    return this.#change(
      'PUT',
      `/api/media/${this.soundName}`,
      bytes,
      keep,
      (_found, _settings, sound) => {
        if (sound?.equals(bytes)) keep();
      },
      { 'Content-Type': 'audio/wav' },
    );
  }

  async #play() {
    const id = this.random.one([...this.#announcements.keys()]);
    if (id === undefined) return;
    const { status, text } = await this.house.ask('POST', `/api/announcements/${id}/play`);
    assert.equal(status, 202, text);
  }

  // What a test plays is forgotten with it; while something plays there is none.
  async #test() {
    const { status, text } = await this.house.ask('POST', `/api/rooms/${this.room}/test`);
    assert.ok(status === 202 || status === 409, `${status} ${text}`);
  }

  // Holds what the house has after a start against what it has acknowledged to this writer.
  async check(all, settings) {
    const found = new Map([...all].filter(([, { name }]) => name.startsWith(`Writer ${this.number},`)));
    const sound = await this.#readSound();
    this.#underWay?.(found, settings, sound);
    this.#underWay = undefined;
    assert.deepEqual([...found.keys()].sort(), [...this.#announcements.keys()].sort(), `ids of writer ${this.number}`);
    for (const [id, wanted] of this.#announcements) assertHolds(found.get(id), wanted, `announcement ${id}`);
    assert.equal(settings.variables.get(this.variableNumber), this.#variable, `variable ${this.variableNumber}`);
    assert.equal(settings.volumes.get(this.room), this.#volume, `the volume of room ${this.room}`);
    assert.ok(isDeepStrictEqual(sound, this.#sound), `${this.soundName} is not what was acknowledged`);
    return this.#announcements.size;
  }

  async #readSound() {
    const reply = await this.house.askForBytes(`/api/media/${this.soundName}`);
    return reply.status === 404 ? undefined : reply.bytes;
  }
}

function assertHolds(found, wanted, what) {
  for (const [key, value] of Object.entries(wanted)) {
    const isGroup = typeof value === 'object' && !Array.isArray(value);
    if (isGroup) assertHolds(found[key], value, `${what}, ${key}`);
    else assert.deepEqual(found[key], value, `${what}, ${key}`);
  }
}
