// The demo house, which the program makes itself, for tests of the API: all that it takes and gives is held against its description.
import assert from 'node:assert/strict';
import { Contract } from './contract.mjs';
import { House } from './house.mjs';

export const announcement = {
  name: 'Test',
  audio: { file: '', delay_ms: 0 },
  video: { image: '', text: '<b>hi</b>', delay_ms: 0, timeout_ms: 20000, ok_button: true, variable: null },
  rooms: [{ id: 1, volume: 20 }],
  navigators: [
    { id: 11, room: 1, onscreen: true },
    { id: 12, room: 2, onscreen: true },
  ],
};

export class DemoHouse extends House {
  static async open(env = {}) {
    const house = new DemoHouse();
    house.file = undefined;
    await house.start({ env: { XDG_STATE_HOME: house.folder, ...env } });
    house.contract = new Contract((await house.ask('GET', '/api/openapi.json')).body);
    return house;
  }

  async close() {
    try {
      assert.equal(await this.stop(), 0);
      assert.deepEqual(this.contract.faults, []);
    } finally {
      await this.remove();
    }
  }

  add(changes = {}) {
    return super.add({ ...announcement, ...changes });
  }

  async idle() {
    const events = await this.watch();
    while ((await this.get('/api/status')).playing !== null) await events.until('announcement_ended');
    events.socket.terminate();
  }
}
