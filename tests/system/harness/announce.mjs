// The command line in a test: a house, and the program run against it.
import { mkdirSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { House } from './house.mjs';
import { Program } from './program.mjs';
import { clip, rate } from './sounds.mjs';

// The environment of somebody who has set up nothing: no settings, no colour, a zone of its own.
export function environment(house, more = {}) {
  const env = {
    ...process.env,
    PATH: `${dirname(process.env.ANNOUNCE)}:${process.env.PATH}`,
    TZ: 'UTC',
    XDG_CONFIG_HOME: join(house.folder, 'config'),
    HOME: house.folder,
    TMPDIR: house.folder,
    LC_ALL: 'C.UTF-8',
    ANNOUNCE_ADDRESS: house.base ?? '',
  };
  for (const name of ['ANNOUNCE_TOKEN', 'VISUAL', 'EDITOR', 'NO_COLOR', 'COLUMNS']) delete env[name];
  return { ...env, ...more };
}

// The command line, running: `output` and `errors` are what it printed so far on each.
export class Running {
  constructor(command, words, env, input) {
    this.program = new Program(command, words, {
      env,
      stdio: [input === undefined ? 'ignore' : 'pipe', 'pipe', 'pipe'],
    });
    this.process = this.program.process;
    this.process.stdin?.end(input);
  }

  get output() {
    return this.program.printed;
  }

  get errors() {
    return this.program.errors;
  }

  // Waits until what has been printed says yes.
  until(what, holds) {
    return this.program.until(what, () => holds(this.output, this.errors));
  }

  async end() {
    const [status, signal] = await this.program.end();
    return { status, signal, output: this.output, errors: this.errors };
  }
}

export function start(house, words, env = {}, input = undefined) {
  return new Running(process.env.ANNOUNCE, words, environment(house, env), input);
}

export const run = (house, words, env = {}, input = undefined) => start(house, words, env, input).end();

// Runs it on a terminal, of which the environment gives the width.
export function onTerminal(house, words, env = {}) {
  const line = [process.env.ANNOUNCE, ...words].map((word) => `'${word}'`).join(' ');
  return new Running('script', ['-qec', line, '/dev/null'], environment(house, { TERM: 'xterm', ...env })).end();
}

export async function json(house, words) {
  const { status, output, errors } = await run(house, ['--json', ...words]);
  if (status !== 0) throw new Error(`${words}: ${status} ${errors}`);
  return JSON.parse(output);
}

// A house with rooms, screens, a variable and the sound "chime", that is running.
export async function withHouse(
  body,
  { lines = '', rooms = [{ name: 'Kitchen', max_volume: 80 }, { name: 'Living room' }] } = {},
) {
  const house = new House(rooms, lines);
  house.sound('chime', clip(rate / 4));
  mkdirSync(join(house.folder, 'config'));
  try {
    await house.start();
    await body(house);
  } finally {
    await house.remove();
  }
}
