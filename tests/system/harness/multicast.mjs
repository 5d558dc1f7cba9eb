// What leaves the controller for multicast zones, as loudspeakers take it: RTP on this machine's own network.
import { createSocket } from 'node:dgram';
import { within } from './waits.mjs';

const lo = '127.0.0.1';

// A sample of G.711 u-law, 16 bits.
function fromMuLaw(code) {
  const bits = ~code & 0xff;
  const magnitude = ((((bits & 0x0f) << 3) + 132) << ((bits >> 4) & 7)) - 132;
  return bits & 0x80 ? -magnitude : magnitude;
}

export function read(packet) {
  const type = packet[1] & 0x7f;
  const samples = [];
  if (type === 0) for (const code of packet.subarray(12)) samples.push(fromMuLaw(code));
  else for (let at = 12; at < packet.length; at += 2) samples.push(packet.readInt16BE(at));
  return {
    hasMarker: (packet[1] & 0x80) !== 0,
    type,
    sequence: packet.readUInt16BE(2),
    timestamp: packet.readUInt32BE(4),
    source: packet.readUInt32BE(8),
    samples,
  };
}

// Listens to a group at a free port. `take` is told of each packet; without it they are kept, each with the moment when
// it came.
export class Zone {
  packets = [];

  static async open(group, take) {
    const zone = new Zone();
    zone.socket = createSocket('udp4'); // Its port is its own.
    zone.socket.on('message', take ?? ((bytes) => zone.packets.push({ at: performance.now(), ...read(bytes) })));
    await within('a socket', new Promise((resolve) => zone.socket.bind(0, group, resolve)));
    zone.socket.addMembership(group, lo);
    zone.address = `${group}:${zone.socket.address().port}`;
    return zone;
  }

  close() {
    this.socket.close();
  }
}

// A network between the controller and one loudspeaker of a group, which passes each packet on by its turn in `fates`: so
// many milliseconds late, or null: never. `heard` is what reached it, `passed` what reached the loudspeaker, as it came.
export class Relay {
  passed = [];
  heard = [];
  #wake = () => {};

  static async open(group, fates) {
    const relay = new Relay();
    relay.speaker = createSocket('udp4');
    await within('a socket', new Promise((resolve) => relay.speaker.bind(0, lo, resolve)));
    relay.speaker.on('message', (bytes) => {
      relay.passed.push(read(bytes));
      relay.#wake();
    });
    relay.zone = await Zone.open(group, (bytes) => relay.#take(bytes, fates[relay.heard.length]));
    relay.address = relay.zone.address;
    return relay;
  }

  #take(bytes, fate) {
    this.heard.push(read(bytes));
    const { port } = this.speaker.address();
    if (fate !== null) setTimeout(() => this.speaker.send(bytes, port, lo), fate);
  }

  // Waits until the loudspeaker has got so many.
  async until(count) {
    const got = new Promise((resolve) => {
      this.#wake = () => this.passed.length >= count && resolve();
    });
    this.#wake();
    await within(`${count} packets`, got, { sofar: () => `: ${this.heard.length} came, ${this.passed.length} passed` });
  }

  close() {
    this.zone.close();
    this.speaker.close();
  }
}

// Whether this machine sends multicast to itself; a container may not.
export async function isHeardHere() {
  let hear;
  const heard = new Promise((resolve) => {
    hear = resolve;
  });
  const sender = createSocket('udp4');
  let zone;
  try {
    zone = await Zone.open('239.255.84.9', () => hear(true));
    await new Promise((resolve) => sender.bind(0, resolve));
    sender.setMulticastInterface(lo);
    sender.send('?', zone.socket.address().port, '239.255.84.9', (error) => error && hear(false));
    const timer = setTimeout(() => hear(false), 5000);
    const answer = await heard;
    clearTimeout(timer);
    return answer;
  } catch {
    return false;
  } finally {
    sender.close();
    zone?.close();
  }
}
