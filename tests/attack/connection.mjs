// A connection that sends what a case says, byte by byte as it stands there, and keeps what comes back.
import { connect } from 'node:net';
import { within } from '../system/harness/waits.mjs';

// What `endless` is cut off at: a server that takes this much takes anything.
const endless = 64 * 1024 * 1024;

// A piece of a case: text, of which each character is a byte; `hex`; one of them so many `times`, or without end.
function bytesOf(piece) {
  if (typeof piece === 'string') return Buffer.from(piece, 'latin1');
  const once_ = piece.hex === undefined ? bytesOf(piece.text) : Buffer.from(piece.hex.replace(/ /g, ''), 'hex');
  const enough = Math.ceil(65536 / once_.length);
  return Buffer.concat(Array(piece.times ?? (piece.endless ? enough : 1)).fill(once_));
}

export class Connection {
  received = Buffer.alloc(0);
  #wake = () => {};

  constructor(house) {
    this.house = house;
    this.socket = connect(new URL(house.base).port, '127.0.0.1');
    this.socket.on('error', () => {}); // a connection that is reset has ended
    this.socket.on('data', (bytes) => {
      this.received = Buffer.concat([this.received, bytes]);
      this.#wake();
    });
    this.closed = new Promise((resolve) => {
      this.socket.once('close', () => {
        this.isClosed = true;
        this.#wake();
        resolve();
      });
    });
  }

  // Sends the pieces, as long as somebody takes them; whether everything was taken.
  async send(pieces) {
    for (const piece of pieces) {
      const bytes = bytesOf(piece);
      for (let sent = 0; sent < (piece.endless ? endless : bytes.length); sent += bytes.length) {
        if (this.isClosed) return false;
        if (this.socket.write(bytes)) continue;
        await this.#within(
          'the server to take what is sent',
          Promise.race([new Promise((resolve) => this.socket.once('drain', resolve)), this.closed]),
        );
      }
    }
    return !this.isClosed;
  }

  // Waits until `holds` of what has been received gives something, and gives that; null when the server closes first.
  until(what, holds) {
    const found = async () => {
      for (;;) {
        const held = holds(this.received);
        if (held) return held;
        if (this.isClosed) return null;
        await new Promise((resolve) => {
          this.#wake = resolve;
        });
      }
    };
    return this.#within(what, found());
  }

  async end() {
    await this.#within('the server to close the connection', this.closed);
  }

  #within(what, promise) {
    return within(what, promise, { sofar: () => `; it sent: ${this.received.toString('latin1').slice(0, 1000)}` });
  }
}
