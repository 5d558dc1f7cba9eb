// A program that a test has started: what it printed, and its end, which ends every wait for it.
import { spawn } from 'node:child_process';
import { readdirSync, readFileSync } from 'node:fs';
import { within } from './waits.mjs';

// Nothing outlives the tests, however they end.
const running = new Set();
process.on('exit', () => running.forEach((one) => one.kill('SIGKILL')));

// Printed by the thousand lines, it would hide what matters.
const last = (text) => (text.length > 4000 ? `…${text.slice(-4000)}` : text);

// The command and the words by which a program is begun that plays in real time: it comes before others, as such
// programs do at home, where that is allowed; else it is as any other.
export const inTime = (command, words) => ['nice', ['-n', '-10', command, ...words]];

export class Program {
  output = '';
  // Of `output`, what came on standard output, and on standard error.
  printed = '';
  errors = '';
  #wake = () => {};

  constructor(command, words, options = {}) {
    this.process = spawn(command, words, { stdio: ['ignore', 'pipe', 'pipe'], ...options });
    running.add(this.process);
    this.#keep(this.process.stdout, 'printed');
    this.#keep(this.process.stderr, 'errors');
    // Its status and its signal, when it has ended and all that it printed has been read.
    this.ended = new Promise((resolve, reject) => {
      this.process.once('close', (...end) => resolve((this.result = end)));
      this.process.once('error', reject);
    });
    this.ended.catch(() => {}).finally(() => running.delete(this.process));
  }

  // A test may have given an output a place of its own.
  #keep(stream, name) {
    stream?.setEncoding('utf8').on('data', (text) => {
      this.output += text;
      this[name] += text;
      this.#wake();
    });
  }

  // `promise`, or an error when it takes too long or the program ends first.
  async within(what, promise) {
    const end = this.ended.then(() => {
      throw new Error(`waited for ${what}, but ${this.state()}`);
    });
    end.catch(() => {});
    try {
      return await within(what, promise, { end, sofar: () => `: ${this.state()}` });
    } catch (error) {
      if (error.message !== 'fetch failed') throw error;
      await this.settled();
      throw new Error(`${what}: ${error.cause?.message ?? error.message}; ${this.state()}`, { cause: error });
    }
  }

  // Waits until what has been printed so far holds; gives what `holds` gave.
  until(what, holds) {
    const found = async () => {
      for (;;) {
        const held = holds(this.output, this.errors);
        if (held) return held;
        await new Promise((resolve) => {
          this.#wake = resolve;
        });
      }
    };
    return this.within(what, found());
  }

  // A connection breaks a little before its program is seen to have ended.
  async settled() {
    let timer;
    const briefly = new Promise((resolve) => {
      timer = setTimeout(resolve, 1000);
    });
    await Promise.race([this.ended, briefly]);
    clearTimeout(timer);
  }

  end() {
    return within('the end of the program', this.ended, { sofar: () => `: ${this.state()}` });
  }

  // For messages: whether it runs, and the last that it printed.
  state() {
    const [status, signal] = this.result ?? [];
    const how = this.result ? `the program has ended with ${signal ?? `status ${status}`}` : 'the program is running';
    return `${how}; it printed:\n${last(this.output)}`;
  }
}

// Processes of the program that have this word on their command line and were started by `parent`.
export function children(parent, word) {
  return readdirSync('/proc').filter((process) => {
    try {
      const of = readFileSync(`/proc/${process}/stat`, 'latin1')
        .replace(/^.*\) \S /, '')
        .split(' ')[0];
      return Number(of) === parent && readFileSync(`/proc/${process}/cmdline`, 'latin1').includes(word);
    } catch {
      return false; // no process, or none any more
    }
  });
}
