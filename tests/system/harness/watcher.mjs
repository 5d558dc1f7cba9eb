// A socket of the house, whose messages are kept in the order in which they came.
import { once } from 'node:events';
import WebSocket from 'ws';
import { within } from './waits.mjs';

// What comes a thousand times in a row is one word, with how often.
const runs = (words) =>
  words.reduce((all, word) => {
    const [last, times] = all.at(-1)?.split(' × ') ?? [];
    return word === last ? [...all.slice(0, -1), `${word} × ${Number(times ?? 1) + 1}`] : [...all, word];
  }, []);

export class Watcher {
  seen = [];
  #messages = [];
  #wake = () => {};

  constructor(house, path) {
    this.program = house.program;
    this.path = path;
    this.socket = new WebSocket(house.base.replace('http', 'ws') + path);
    this.socket.on('message', (text) => {
      this.#messages.push(JSON.parse(text));
      house.contract?.message(path, this.#messages.at(-1));
      this.#wake();
    });
    this.socket.on('error', () => {});
    this.open = once(this.socket, 'open');
    this.closed = new Promise((resolve) => {
      this.socket.once('close', (code) => {
        this.isClosed = true;
        this.#wake();
        resolve(code);
      });
    });
  }

  next() {
    return this.#within('a message', this.#take());
  }

  until(type, matches = () => true) {
    const found = async () => {
      for (;;) {
        const message = await this.#take();
        if (message.type === type && matches(message.data)) return message.data;
      }
    };
    return this.#within(type, found());
  }

  untilClosed() {
    return this.#within('the end of the socket', this.closed);
  }

  async #within(what, promise) {
    try {
      return await within(what, promise);
    } catch (error) {
      if (this.isClosed) await this.program.settled();
      const types = runs(this.seen.map(({ type }) => type)).join(', ') || 'nothing';
      error.message += `, waiting for ${what} on ${this.path}, where ${types} came; ${this.program.state()}`;
      throw error;
    }
  }

  // What has come is taken, also when the socket has been closed since.
  async #take() {
    while (this.#messages.length === 0) {
      if (this.isClosed) throw new Error('the socket was closed');
      await new Promise((resolve) => {
        this.#wake = resolve;
      });
    }
    this.seen.push(this.#messages.shift());
    return this.seen.at(-1);
  }
}
