// A house in a folder of its own, and the real program that serves it, on a free port.
import assert from 'node:assert/strict';
import { chmodSync, existsSync, mkdirSync, mkdtempSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { Program } from './program.mjs';
import { readRecording, writeSound } from './sounds.mjs';
import { within } from './waits.mjs';
import { Watcher } from './watcher.mjs';

export { within };

const screensAndVariables = `navigators:
  - {id: 11, name: Tablet, room: 1}
  - {id: 12, name: Television, room: 1}
variables:
  - {device: 9, variable: 4, name: Outside, value: cold}
`;

export class House {
  // Where replies and messages are held against the description, if a test wants it.
  contract;

  // Sounds are compared with their recordings, sample for sample.
  loudness = 'as_it_is';

  // `rooms`: output and keys of each room in the house file; ids from 1. Two rooms that record, by default. `rest`:
  // its screens and variables.
  constructor(rooms = [{}, {}], lines = '', rest = screensAndVariables) {
    this.folder = mkdtempSync(join(tmpdir(), 'controller-system-'));
    chmodSync(this.folder, 0o755);
    mkdirSync(join(this.folder, 'media'));
    this.rooms = rooms;
    this.rest = rest;
    this.write(lines);
  }

  write(lines = '') {
    const rooms = this.rooms.map((room, index) => {
      const id = index + 1;
      const keys = { id, name: `Room ${id}`, output: { file: `takes/${id}-%n.wav` }, start_volume: 40, ...room };
      return `  - ${JSON.stringify(keys)}\n`;
    });
    this.file = join(this.folder, 'house.yaml');
    writeFileSync(
      this.file,
      'name: Test house\nmedia_folder: media\ndata_folder: data\n' +
        `loudness: ${this.loudness}\nrooms:\n` +
        rooms.join('') +
        this.rest +
        lines,
    );
  }

  sound(name, samples) {
    writeSound(join(this.folder, 'media', `${name}.wav`), samples);
  }

  // What room `id` recorded of the `number`th announcement.
  recording(id, number = 1) {
    return readRecording(join(this.folder, 'takes', `${id}-${number}.wav`));
  }

  recordings(id) {
    const takes = join(this.folder, 'takes');
    return existsSync(takes) ? readdirSync(takes).filter((name) => name.startsWith(`${id}-`)) : [];
  }

  // Runs the program to its end, and gives its status and everything it printed. `isBound` is it by permissions of
  // files, whoever runs the tests.
  async run(words, { isBound = false, ...options } = {}) {
    const wrapper = isBound && process.getuid() === 0 ? ['setpriv', '--bounding-set', '-dac_override', '--'] : [];
    const [command, ...all] = [...wrapper, process.env.CONTROLLER, ...words];
    const program = new Program(command, all, options);
    try {
      const [status, signal] = await program.end();
      return { status, signal, output: program.output };
    } finally {
      program.process.kill('SIGKILL');
    }
  }

  // `wrapper`: what takes the program and its words as its own last words, and becomes it.
  async start({ words = [], env = {}, port = 0, wrapper = [], ...options } = {}) {
    const file = this.file === undefined ? [] : [this.file];
    const [command, ...all] = [...wrapper, process.env.CONTROLLER, ...file, '--port', `${port}`, '--stay', ...words];
    this.program = new Program(command, all, {
      env: { ...process.env, ...env },
      ...options,
    });
    const found = await this.program.until('the address that it serves', (output) => /https?:\/\/\S+\//.exec(output));
    this.base = found[0].slice(0, -1);
    return this;
  }

  // Everything that it has printed since it was started last.
  get output() {
    return this.program?.output ?? '';
  }

  // What it has said against anything, but for its own waiting where the machine does too much at once.
  get complaints() {
    return this.output.match(/^.*(error|warning):(?! The driver thread was busy for ).*$/gm) ?? [];
  }

  get process() {
    return this.program?.process;
  }

  get ended() {
    return this.program?.ended;
  }

  async stop(signal = 'SIGTERM') {
    this.process.kill(signal);
    const [status, killed] = await this.program.end();
    // At its end it holds what it knows against what the agent has.
    assert.doesNotMatch(this.output, /mistake of this program/);
    return killed ?? status;
  }

  // For the end of a test, whatever became of it.
  async remove() {
    this.process?.kill('SIGKILL');
    await this.ended;
    rmSync(this.folder, { recursive: true, force: true });
  }

  // `body` is sent as JSON, but a text or bytes as they are.
  async ask(method, path, body, headers = {}) {
    const isRaw = body === undefined || typeof body === 'string' || body instanceof Uint8Array;
    const [reply, text] = await this.program.within(
      `${method} ${path}`,
      (async () => {
        const answer = await fetch(this.base + path, {
          method,
          headers: { ...(isRaw ? {} : { 'Content-Type': 'application/json' }), ...headers },
          body: isRaw ? body : JSON.stringify(body),
        });
        return [answer, await answer.text()];
      })(),
    );
    const isJson = /json/.test(reply.headers.get('content-type') ?? '');
    const read = { status: reply.status, headers: reply.headers, text, body: isJson ? JSON.parse(text) : undefined };
    this.contract?.reply(method, path, body, read);
    return read;
  }

  async askForBytes(path) {
    const reply = await this.program.within(`GET ${path}`, fetch(this.base + path));
    return { status: reply.status, bytes: Buffer.from(await reply.arrayBuffer()) };
  }

  async get(path) {
    return (await this.ask('GET', path)).body;
  }

  // Stores an announcement and gives its id.
  async add(changes = {}) {
    const reply = await this.ask('POST', '/api/announcements', { name: 'Test', ...changes });
    if (reply.status !== 201) throw new Error(reply.text);
    return reply.body.id;
  }

  async play(id) {
    const reply = await this.ask('POST', `/api/announcements/${id}/play`);
    if (reply.status !== 202) throw new Error(reply.text);
  }

  // A socket whose messages are kept: `next` takes one, `until` waits for one of a type and gives its data.
  async watch(path = '/api/events') {
    const watcher = new Watcher(this, path);
    await this.program.within(`a socket for ${path}`, watcher.open);
    return watcher;
  }

  // Plays an announcement and waits for its end; gives every event on the way.
  async playToItsEnd(id) {
    const events = await this.watch();
    await this.play(id);
    await events.until('announcement_ended', (data) => data.announcement === id);
    events.socket.terminate();
    return events.seen;
  }

  async volumes() {
    return (await this.get('/api/rooms')).rooms.map((room) => room.volume);
  }
}
