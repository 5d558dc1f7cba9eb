// A sound server of the test's own, PulseAudio or PipeWire, in a folder of its own, with one sink whose sound is read
// back; and music that plays there.
import { spawnSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { inTime, Program } from './program.mjs';
import { rate } from './sounds.mjs';
import { within } from './waits.mjs';

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
export const sink = 'heard';
export const music = 400;
export const announcement = 1000;

const isInstalled = (...programs) => programs.every((program) => spawnSync('which', [program]).status === 0);
export const kinds = {
  PulseAudio: isInstalled('pulseaudio', 'parec'),
  PipeWire: isInstalled('pipewire', 'pipewire-pulse', 'wireplumber', 'dbus-run-session', 'parec', 'pactl'),
};

const PIPEWIRE = `trap "kill 0" EXIT
  pipewire & until [ -S "$XDG_RUNTIME_DIR/pipewire-0" ]; do sleep 0.02; done
  wireplumber & pipewire-pulse & wait`;

// `seconds` of a tone, 16 bits, one channel.
export function tone(hertz, seconds, stroke = 12000) {
  const samples = new Int16Array(rate * seconds);
  for (let frame = 0; frame < samples.length; ++frame)
    samples[frame] = Math.round(stroke * Math.sin((2 * Math.PI * hertz * frame) / rate));
  return samples;
}

export class SoundServer {
  #programs = [];

  constructor(kind = 'PulseAudio') {
    this.kind = kind;
    this.folder = mkdtempSync(join(tmpdir(), 'sound-server-'));
    this.address = `unix:${this.folder}/pulse/native`;
    this.env = {
      ...process.env,
      HOME: this.folder,
      XDG_RUNTIME_DIR: this.folder,
      XDG_CONFIG_HOME: this.folder,
      XDG_STATE_HOME: this.folder,
      PULSE_RUNTIME_PATH: join(this.folder, 'pulse'),
      PULSE_STATE_PATH: this.folder,
      PULSE_SERVER: this.address,
      PIPEWIRE_REMOTE: 'pipewire-0',
    };
  }

  // Bluetooth asks who sits at the machine, and takes all the rest along where nobody knows.
  #leaveOutBluetooth() {
    const folder = join(this.folder, 'wireplumber', 'bluetooth.lua.d');
    mkdirSync(folder, { recursive: true });
    writeFileSync(join(folder, '50-bluez-config.lua'), 'bluez_monitor.enabled = false\n');
  }

  async start() {
    this.#leaveOutBluetooth();
    // With what a server has that people use: it remembers the volume of each program.
    this.server =
      this.kind === 'PulseAudio'
        ? this.#run('pulseaudio', [
            '-n',
            '--daemonize=no',
            '--use-pid-file=no',
            '--exit-idle-time=-1',
            '--disable-shm=yes',
            '--load=module-stream-restore restore_device=no',
            `--load=module-null-sink sink_name=${sink} rate=${rate} channels=2`,
            `--load=module-native-protocol-unix auth-anonymous=1 socket=${this.folder}/pulse/native`,
          ])
        : this.#run('dbus-run-session', ['--', 'sh', '-c', PIPEWIRE], { detached: true });
    await this.#until('the sound server', () => this.control('info') !== undefined);
    if (this.kind === 'PipeWire') {
      this.control('load-module', 'module-null-sink', `sink_name=${sink}`, `rate=${rate}`, 'channels=2');
      await this.#until('the sink', () => this.control('list', 'short', 'sinks')?.includes(sink));
      this.control('set-default-sink', sink);
    }
    return this;
  }

  #run(command, words, options = {}) {
    const program = new Program(...inTime(command, words), { env: this.env, ...options });
    this.#programs.push(program);
    return program;
  }

  async #until(what, holds) {
    const look = async () => {
      for (let held = holds(); ; held = holds()) {
        if (held) return held;
        await pause(20);
      }
    };
    return this.server.within(what, look());
  }

  until(what, holds) {
    return this.#until(what, holds);
  }

  // What pactl says, undefined when it fails.
  control(...words) {
    const { status, stdout } = spawnSync('pactl', words, { env: this.env, encoding: 'utf8' });
    return status === 0 ? stdout : undefined;
  }

  // A program of this name plays a tone; what comes back ends it with `stop`.
  async play(name = 'music', hertz = music, { seconds = 60 } = {}) {
    const program = this.#run(
      'pacat',
      [`--device=${sink}`, `--client-name=${name}`, '--raw', '--format=s16le', `--rate=${rate}`, '--channels=1'],
      { stdio: ['pipe', 'pipe', 'pipe'] },
    );
    program.process.stdin.on('error', () => {});
    program.process.stdin.end(Buffer.from(tone(hertz, seconds).buffer));
    await this.#until(`${name} to play`, () => this.volume(name) !== undefined);
    return {
      stop: async () => {
        program.process.kill('SIGTERM');
        await program.end();
        await this.#until(`${name} to end`, () => this.volume(name) === undefined);
      },
    };
  }

  streams() {
    return JSON.parse(this.control('--format=json', 'list', 'sink-inputs') || '[]');
  }

  // How loud the program's stream is set, in 65536ths; undefined when it plays nothing.
  volume(name) {
    const stream = this.streams().find((one) => one.properties['application.name'] === name);
    return stream && Object.values(stream.volume)[0].value;
  }

  setVolume(name, share) {
    const stream = this.streams().find((one) => one.properties['application.name'] === name);
    this.control('set-sink-input-volume', `${stream.index}`, `${Math.round(share * 65536)}`);
  }

  // Reads the sink back from now on; what comes back gives what was heard, when it is asked to.
  async listen() {
    const recorder = this.#run(
      'parec',
      [`--device=${sink}.monitor`, '--raw', '--format=s16le', `--rate=${rate}`, '--channels=1', '--latency-msec=20'],
      { stdio: ['ignore', 'pipe', 'pipe'] },
    );
    const pieces = [];
    recorder.process.stdout.removeAllListeners('data');
    recorder.process.stdout.setEncoding('latin1').on('data', (piece) => pieces.push(Buffer.from(piece, 'latin1')));
    const length = () => pieces.reduce((sum, piece) => sum + piece.length, 0);
    // What is read first is silence until the recorder is fully there.
    await this.#until('the recording', () => length() > 2 * rate * 0.3);
    return {
      length: () => length() / 2 / rate,
      end: async () => {
        recorder.process.kill('SIGTERM');
        await recorder.end();
        const bytes = Buffer.concat(pieces);
        return new Int16Array(bytes.buffer, bytes.byteOffset, bytes.length >> 1);
      },
    };
  }

  async kill() {
    const { process: server } = this.server;
    if (this.kind === 'PipeWire') process.kill(-server.pid, 'SIGKILL');
    else server.kill('SIGKILL');
    await this.server.end();
  }

  async remove() {
    for (const { process: one } of this.#programs) {
      try {
        if (one.spawnargs.includes('dbus-run-session')) process.kill(-one.pid, 'SIGKILL');
        one.kill('SIGKILL');
      } catch {
        // It has ended.
      }
    }
    await within('the sound programs to end', Promise.all(this.#programs.map((one) => one.ended)));
    rmSync(this.folder, { recursive: true, force: true });
  }
}

// How loud a tone is in each 20 ms of a recording, in decibels of a full stroke.
export function levels(samples, hertz) {
  const width = rate / 50;
  const found = [];
  for (let begin = 0; begin + width <= samples.length; begin += width) {
    let sine = 0;
    let cosine = 0;
    for (let frame = 0; frame < width; ++frame) {
      const angle = (2 * Math.PI * hertz * frame) / rate;
      sine += samples[begin + frame] * Math.sin(angle);
      cosine += samples[begin + frame] * Math.cos(angle);
    }
    found.push(20 * Math.log10(Math.max((2 * Math.hypot(sine, cosine)) / width / 32768, 1e-6)));
  }
  return found;
}
