// The house of the pages' tests: two rooms with a screen each, in the words of somebody who looks at a page.
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { eventually } from './browser.mjs';
import { House as Program } from './house.mjs';
import { wavFile } from './sounds.mjs';

/** The largest sample, whatever its sign; 0 of none. */
export const loudest = (samples) => (samples ?? []).reduce((most, one) => Math.max(most, Math.abs(one)), 0);

const ROOMS = [
  { name: 'Kitchen', start_volume: 40, max_volume: 80 },
  { name: 'Bedroom', start_volume: 30, max_volume: 100 },
];

const SCREENS_AND_VARIABLES = `navigators:
  - {id: 11, name: Kitchen screen, room: 1}
  - {id: 12, name: Bedroom screen, room: 2}
variables:
  - {device: 9, variable: 4, name: Outside, value: "21 °C"}
`;

export class House extends Program {
  /** `isRecording`: what the rooms hear is kept, for `heard`. `output`: that of the kitchen. */
  static async open({ tokens = [], isRecording = false, loudness = 'as_it_is', output = 'silent', env } = {}) {
    const outputs = [output, 'silent'];
    const rooms = ROOMS.map((room, index) => (isRecording ? room : { ...room, output: outputs[index] }));
    const house = new House(rooms, '', SCREENS_AND_VARIABLES);
    house.loudness = loudness;
    house.write();
    house.tokens = {};
    for (const right of tokens) house.tokens[right] = await house.addToken(right);
    return house.start({ env });
  }

  async close() {
    await this.stop();
    await this.remove();
  }

  get url() {
    return this.base;
  }

  /** Makes a token with this right in the house file; gives the token. */
  async addToken(right) {
    const words = ['token', 'add', right.replace(':', '-'), '--right', right, '--house', this.file];
    const { output } = await this.run(words);
    const token = output.split(/\s+/).find((word) => word.length >= 24 && !word.includes('/'));
    if (!token) throw new Error(`no token in: ${output}`);
    return token;
  }

  /** Starts the program; again on the same port, when it was started before. */
  start(options = {}) {
    return super.start({ ...options, port: this.base ? new URL(this.base).port : 0 });
  }

  kill() {
    return this.stop('SIGKILL');
  }

  /** Asks with all rights; gives what is answered, and throws when it is refused. */
  async request(method, path, body) {
    const headers = this.tokens.admin ? { Authorization: `Bearer ${this.tokens.admin}` } : {};
    if (body instanceof Uint8Array) headers['Content-Type'] = 'application/octet-stream';
    const reply = await this.ask(method, path, body, headers);
    if (reply.status >= 400) throw new Error(`${method} ${path}: ${reply.status} ${reply.text}`);
    return reply.body ?? reply.text;
  }

  add(announcement) {
    return this.request('POST', '/api/announcements', announcement);
  }

  /** Plays a popup that stands for `timeout_ms` on both screens, or on those given; gives the announcement. */
  async pop(video, screens = [11, 12]) {
    const navigators = screens.map((id) => ({ id, room: id - 10, onscreen: true }));
    const rooms = screens.map((id) => ({ id: id - 10, volume: -1 }));
    const announcement = await this.add({ name: 'Popup', video: { timeout_ms: 20000, ...video }, rooms, navigators });
    await this.play(announcement.id);
    return announcement;
  }

  /** Waits until something is heard in the kitchen in the announcement with this number, from 1. */
  untilHeard(number) {
    return eventually(async () => loudest(await this.heard(1, number)) > 0.005, `the kitchen hears number ${number}`);
  }

  /**
   * The samples, -1 to 1, that the room has heard so far in the announcement with this number, from 1; null until there
   * are any.
   */
  async heard(room, number) {
    const bytes = await readFile(join(this.folder, 'takes', `${room}-${number}.wav`)).catch(() => null);
    if (!bytes || bytes.length <= 44) return null;
    const samples = new Int16Array(
      bytes.buffer.slice(bytes.byteOffset + 44, bytes.byteOffset + bytes.length - ((bytes.length - 44) % 2)),
    );
    return Array.from(samples, (sample) => sample / 32768);
  }

  play(id) {
    return this.request('POST', `/api/announcements/${id}/play`);
  }

  dismiss() {
    return this.request('POST', '/api/dismiss');
  }
}

/** A whole WAV file: mono, 16 bits, of this length, a soft tone. */
export function wav(milliseconds, rate = 8000) {
  const samples = new Int16Array(Math.round((rate * milliseconds) / 1000));
  for (let frame = 0; frame < samples.length; ++frame)
    samples[frame] = Math.round(3000 * Math.sin((2 * Math.PI * 440 * frame) / rate));
  return wavFile(samples, rate);
}

/** A picture of one point. */
export const png = Buffer.from(
  'iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAAAABJRU5ErkJggg==',
  'base64',
);

/** A tone of a second, as a phone records it: AAC in an MP4. */
export const memo = Buffer.from(
  'AAAAIGZ0eXBtcDQyAAAAAG1wNDJtcDQxaXNvbWlzbzIAAAAIZnJlZQAABAhtZGF0AUhABvLAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAADgFImNqbUmBVWUQcCbSIOEVlUHDqHkW8VEJlgAQLKR+resGdq2dnOeeeeecLFV654X759bZe0OFB' +
    'JjpiI9SSdTssh2AZhMb+QlSwLIbJdFUMbVezbIRWt8fR6s4UvjEuASjxAPZQsgDup7EuNvWvz34L89/TJ1NyS8v9FIMiElHJFISGHHwPv3eWjqaW' +
    'i+ABNjEBNiC6g8S62xOMOC/AAbxAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAADgAEwMQE2FwhdyHESiVCfO97J5vON44AAAAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAABwBMjEBNiC7YQ5NwBDFcZnRRwADeOgAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAAHATQxATYguwIM6VyOO4JOpzoAG8dAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAOAEyMQE2ILsC' +
    '2TgyiXLNLJwb+ABvHAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAOABNjEBNiC6g8S62xOMOC/AAbx4AAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAOAATAxATYXCF3IcRKJUJ873snm843jgAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAAAAAAAHAEyMQE2ILthDk3AEMVxmdFHAAN46AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAcBNDEB' +
    'NiC7AgzpXI47gk6nOgAbx0AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA4ATIxATYguwLZODKJcs0snBv4AG8cAAAA' +
    'AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA4AE2MQE2ILqDxLrbE4w4L8ABvHgAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAAAAAAAAAAAA4ABMDEBNhcIXchxEolQnzveyebzjeOAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAc' +
    'ATIxATYgu2EOTcAQxXGZ0UcAA3joAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAABwAAAyxtb292AAAAbG12aGQAAAAA' +
    '5ygEHucoBB4AAAcIAAAHMwABAAABAAAAAAAAAAAAAAAAAQAAAAAAAAAAAAAAAAAAAAEAAAAAAAAAAAAAAAAAAEAAAAAAAAAAAAAAAAAAAAAAAAAA' +
    'AAAAAAAAAAAAAAACAAACe3RyYWsAAABcdGtoZAAAAAfnKAQe5ygEHgAAAAEAAAAAAAAHMwAAAAAAAAAAAAAAAAEAAAAAAQAAAAAAAAAAAAAAAAAA' +
    'AAEAAAAAAAAAAAAAAAAAAEAAAAAAAAAAAAAAAAAAACRlZHRzAAAAHGVsc3QAAAAAAAAAAQAABzMAAAAAAAEAAAAAAZBtZGlhAAAAIG1kaGQAAAAA' +
    '5ygEHucoBB4AAD6AAABAAFXEAAAAAAAtaGRscgAAAAAAAAAAc291bgAAAAAAAAAAAAAAAFNvdW5kSGFuZGxlcgAAAAE7bWluZgAAABBzbWhkAAAA' +
    'AAAAAAAAAAAkZGluZgAAABxkcmVmAAAAAAAAAAEAAAAMdXJsIAAAAAEAAAD/c3RibAAAAFtzdHNkAAAAAAAAAAEAAABLbXA0YQAAAAAAAAABAAAA' +
    'AAAAAAAAAQAQAAAAAD6AAAAAAAAnZXNkcwAAAAADGQABAAQRQBUAAAAAAAAAAAAfQAUCFAgGAQIAAAAYc3R0cwAAAAAAAAABAAAAEAAABAAAAAAc' +
    'c3RzYwAAAAAAAAABAAAAAQAAABAAAAABAAAAVHN0c3oAAAAAAAAAAAAAABAAAABAAAAAXwAAAC8AAAAyAAAAQAAAAEAAAABAAAAAQAAAAEAAAABA' +
    'AAAAQAAAAEAAAABAAAAAQAAAAEAAAABAAAAAFHN0Y28AAAAAAAAAAQAAADAAAABjdWR0YQAAAFttZXRhAAAAAAAAACFoZGxyAAAAAG1obHJtZGly' +
    'AAAAAAAAAAAAAAAAAAAAAC5pbHN0AAAAJqlkZXMAAAAeZGF0YQAAAAEAAAAAYXVkaW90ZXN0IHdhdmUAAAA9dWR0YQAAADVtZXRhAAAAAAAAACFo' +
    'ZGxyAAAAAG1obHJtZGlyAAAAAAAAAAAAAAAAAAAAAAhpbHN0',
  'base64',
);
