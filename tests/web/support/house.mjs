// A house of its own for each test, served by the real program.

import { spawn } from 'node:child_process';
import { mkdtemp, mkdir, readFile, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const PROGRAM = process.env.CONTROLLER_FILE;
const PATIENCE = 60000;

const HOUSE = `name: Test house
media_folder: media
data_folder: data
rooms:
  - {id: 1, name: Kitchen, output: OUTPUT, start_volume: 40, max_volume: 80}
  - {id: 2, name: Bedroom, output: OUTPUT, start_volume: 30, max_volume: 100}
navigators:
  - {id: 11, name: Kitchen screen, room: 1}
  - {id: 12, name: Bedroom screen, room: 2}
variables:
  - {device: 9, variable: 4, name: Outside, value: "21 °C"}
`;

export class House {
  /** `isRecording`: what the rooms hear is kept, for `heard`. */
  static async open({ tokens = [], isRecording = false } = {}) {
    if (!PROGRAM) throw new Error('CONTROLLER_FILE must name the program announcement-controller');
    const house = new House();
    house.folder = await mkdtemp(join(tmpdir(), 'web-test-'));
    house.file = join(house.folder, 'house.yaml');
    house.tokens = {};
    await mkdir(join(house.folder, 'media'));
    await writeFile(house.file, HOUSE.replace(/OUTPUT/g, isRecording ? '{file: takes/%r-%n.wav}' : 'silent'));
    for (const right of tokens) house.tokens[right] = await house.addToken(right);
    await house.start();
    return house;
  }

  async close() {
    await this.kill('SIGTERM');
    await rm(this.folder, { recursive: true, force: true });
  }

  /** Makes a token with this right in the house file; gives the token. */
  async addToken(right) {
    const name = right.replace(':', '-');
    const output = await run(['token', 'add', name, '--right', right, '--house', this.file]);
    const words = output.split(/\s+/).filter((word) => word.length >= 24 && !word.includes('/'));
    if (words.length === 0) throw new Error(`no token in: ${output}`);
    return words[0];
  }

  /** Starts the program; again on the same port, when it was started before. */
  async start() {
    const port = this.url ? new URL(this.url).port : '0';
    this.output = '';
    this.process = spawn(PROGRAM, [this.file, '--port', port, '--stay'], { stdio: ['ignore', 'pipe', 'pipe'] });
    this.ended = new Promise((resolve) => this.process.once('exit', resolve));
    const url = await new Promise((resolve, reject) => {
      const fail = (why) => reject(new Error(`${why}; the program said: ${this.output}`));
      const timer = setTimeout(() => fail('the program does not listen'), PATIENCE);
      const read = (text) => {
        this.output += text;
        const match = /(http:\/\/[^\s]+?)\/? /.exec(this.output);
        if (!match) return;
        clearTimeout(timer);
        resolve(match[1]);
      };
      this.process.stdout.on('data', read);
      this.process.stderr.on('data', read);
      this.process.once('exit', (code) => fail(`the program ended with ${code}`));
    });
    this.url = url.replace(/\/$/, '');
  }

  async kill(signal = 'SIGKILL') {
    this.process.kill(signal);
    await this.ended;
  }

  async request(method, path, body) {
    const headers = this.tokens.admin ? { Authorization: `Bearer ${this.tokens.admin}` } : {};
    const isFile = body instanceof Uint8Array;
    if (body !== undefined) headers['Content-Type'] = isFile ? 'application/octet-stream' : 'application/json';
    const content = isFile || body === undefined ? body : JSON.stringify(body);
    const response = await fetch(this.url + path, { method, headers, body: content });
    const text = await response.text();
    const value = text && /json/.test(response.headers.get('Content-Type')) ? JSON.parse(text) : text;
    if (!response.ok) throw new Error(`${method} ${path}: ${response.status} ${text}`);
    return value;
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

  /**
   * The samples, -1 to 1, that the room has heard in the announcement with this number, from 1; null until there are
   * any.
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

function run(args) {
  return new Promise((resolve, reject) => {
    const child = spawn(PROGRAM, args, { stdio: ['ignore', 'pipe', 'pipe'] });
    let output = '';
    child.stdout.on('data', (text) => {
      output += text;
    });
    child.stderr.on('data', (text) => {
      output += text;
    });
    child.once('exit', (code) =>
      code === 0 ? resolve(output) : reject(new Error(`${args.join(' ')}: ${code}: ${output}`)),
    );
  });
}

/** A whole WAV file: mono, 16 bits, of this length, a soft tone. */
export function wav(milliseconds, rate = 8000) {
  const frames = Math.round((rate * milliseconds) / 1000);
  const file = Buffer.alloc(44 + 2 * frames);
  file.write('RIFF', 0);
  file.writeUInt32LE(36 + 2 * frames, 4);
  file.write('WAVEfmt ', 8);
  file.writeUInt32LE(16, 16);
  file.writeUInt16LE(1, 20);
  file.writeUInt16LE(1, 22);
  file.writeUInt32LE(rate, 24);
  file.writeUInt32LE(2 * rate, 28);
  file.writeUInt16LE(2, 32);
  file.writeUInt16LE(16, 34);
  file.write('data', 36);
  file.writeUInt32LE(2 * frames, 40);
  for (let frame = 0; frame < frames; ++frame) {
    file.writeInt16LE(Math.round(3000 * Math.sin((2 * Math.PI * 440 * frame) / rate)), 44 + 2 * frame);
  }
  return file;
}

/** A picture of one point. */
export const png = Buffer.from(
  'iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAAAABJRU5ErkJggg==',
  'base64',
);
