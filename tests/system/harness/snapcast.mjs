// A Snapcast server of the test's own on this machine's own network, with one source of music and one for
// announcements, and clients whose sound is read back.
import { spawnSync } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { connect, createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { inTime, Program } from './program.mjs';
import { announcement, music, tone } from './sound-server.mjs';
import { rate } from './sounds.mjs';
import { within } from './waits.mjs';

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
export const isInstalled = ['snapserver', 'snapclient'].every((name) => spawnSync('which', [name]).status === 0);
export { announcement, music };

const freePort = () =>
  new Promise((resolve) => {
    const server = createServer().listen(0, '127.0.0.1', () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });

export class SnapcastServer {
  #programs = [];
  #call = 0;

  constructor({ buffer = 400 } = {}) {
    this.buffer = buffer;
    this.folder = mkdtempSync(join(tmpdir(), 'snapcast-'));
  }

  async start() {
    this.ports ??= [await freePort(), await freePort(), await freePort(), await freePort()];
    const [control, stream, musicPort, said] = this.ports;
    const file = join(this.folder, 'snapserver.conf');
    const source = (name, port) => `source = tcp://127.0.0.1:${port}?name=${name}&sampleformat=${rate}:16:2\n`;
    writeFileSync(
      file,
      `[server]\ndatadir = ${this.folder}\n[http]\nenabled = false\n` +
        `[tcp]\nenabled = true\nbind_to_address = 127.0.0.1\nport = ${control}\n` +
        `[stream]\nbind_to_address = 127.0.0.1\nport = ${stream}\nbuffer = ${this.buffer}\ncodec = pcm\n` +
        source('music', musicPort) +
        source('announcements', said),
    );
    this.server = new Program(...inTime('snapserver', ['-c', file]));
    this.#programs.push(this.server);
    await this.until('the Snapcast server', () => this.ask('Server.GetRPCVersion'));
    return this;
  }

  // For the house file.
  room(client) {
    return { snapcast: client, server: `127.0.0.1:${this.ports[0]}`, buffer_ms: this.buffer };
  }

  // The result of one call; undefined where there is none.
  ask(method, params) {
    return new Promise((resolve) => {
      const socket = connect(this.ports[0], '127.0.0.1');
      const id = ++this.#call;
      let text = '';
      const end = (result) => {
        socket.destroy();
        resolve(result);
      };
      socket.on('error', () => end()).on('close', () => end());
      socket.on('data', (piece) => {
        text += piece;
        for (const line of text.split('\r\n').slice(0, -1)) {
          const answer = JSON.parse(line);
          if (answer.id === id) end(answer.result);
        }
      });
      socket.write(`${JSON.stringify({ jsonrpc: '2.0', id, method, params })}\r\n`);
    });
  }

  // "bath=80+kitchen=100:music": who hears what together, and how loud.
  async text() {
    const status = await this.ask('Server.GetStatus');
    return status?.server.groups
      .map(({ clients, stream_id }) => {
        const names = clients.map(
          ({ id, config }) => `${id}=${config.volume.percent}${config.volume.muted ? ' muted' : ''}`,
        );
        return `${names.sort().join('+')}:${stream_id}`;
      })
      .sort()
      .join(' ');
  }

  async until(what, holds) {
    const look = async () => {
      for (let held = await holds(); !held; held = await holds()) await pause(20);
    };
    await this.server.within(what, look());
  }

  async untilText(wanted) {
    let last;
    try {
      await this.until(wanted, async () => (last = await this.text()) === wanted);
    } catch (error) {
      throw new Error(`${error.message}\nat last it was: ${last}`, { cause: error });
    }
  }

  // A tone without an end, for those who hear the stream "music"; it goes on when the server is back.
  playMusic() {
    const sound = tone(music, 1);
    const stereo = Buffer.alloc(sound.length * 4);
    sound.forEach((sample, frame) => {
      stereo.writeInt16LE(sample, 4 * frame);
      stereo.writeInt16LE(sample, 4 * frame + 2);
    });
    let socket;
    const begin = () => {
      const mine = connect(this.ports[2], '127.0.0.1');
      const began = performance.now();
      let seconds = 0;
      mine.on('error', () => {});
      mine.on('connect', () => {
        mine.timer = setInterval(() => {
          // A second ahead, so that no test that is busy starves it.
          for (; seconds < (performance.now() - began) / 1000 + 1; ++seconds) mine.write(stereo);
        }, 100);
      });
      mine.on('close', () => {
        clearInterval(mine.timer);
        if (!this.isOver) setTimeout(begin, 100).unref();
      });
      socket = mine;
    };
    begin();
    this.stopMusic = () => socket.destroy();
  }

  // A client; `listen` gives what it plays from then on, `end` of that the samples.
  async client(id) {
    const words = ['-h', '127.0.0.1', '-p', `${this.ports[1]}`, '--hostID', id, '-i', '1', '--logsink', 'stderr'];
    const program = new Program(...inTime('snapclient', [...words, '--player', 'file:filename=stdout']));
    this.#programs.push(program);
    const pieces = [];
    let isListening = false;
    program.process.stdout.removeAllListeners('data');
    program.process.stdout.setEncoding('latin1').on('data', (piece) => {
      if (isListening) pieces.push(Buffer.from(piece, 'latin1'));
    });
    await this.until(`${id} to connect`, () => this.isConnected(id));
    return {
      program,
      listen: () => {
        pieces.length = 0;
        isListening = true;
      },
      // The left channel.
      end: () => {
        isListening = false;
        const bytes = Buffer.concat(pieces);
        const samples = new Int16Array(bytes.length >> 2);
        for (let frame = 0; frame < samples.length; ++frame) samples[frame] = bytes.readInt16LE(4 * frame);
        return samples;
      },
    };
  }

  async isConnected(id) {
    const status = await this.ask('Server.GetStatus');
    return status?.server.groups.some(({ clients }) => clients.some((one) => one.id === id && one.connected));
  }

  // These clients in one group, which hears this stream, at these volumes.
  async arrange(clients, stream = 'music') {
    const ids = Object.keys(clients);
    const { server } = await this.ask('Server.GetStatus');
    const { id } = server.groups.find((group) => group.clients.some((one) => one.id === ids[0]));
    await this.ask('Group.SetClients', { id, clients: ids });
    await this.ask('Group.SetStream', { id, stream_id: stream });
    for (const [client, percent] of Object.entries(clients))
      await this.ask('Client.SetVolume', { id: client, volume: { percent, muted: false } });
  }

  async kill(signal = 'SIGKILL') {
    this.server.process.kill(signal);
    await this.server.end();
  }

  async remove() {
    this.isOver = true;
    this.stopMusic?.();
    for (const { process: one } of this.#programs) one.kill('SIGKILL');
    await within('the Snapcast programs to end', Promise.all(this.#programs.map((one) => one.ended)));
    rmSync(this.folder, { recursive: true, force: true });
  }
}
