// Places where rooms are heard, and what can happen to them: each has its output, its faults, each a list of things to
// do, and `heal`, after which it is as at the start.
import { execFileSync, spawn } from 'node:child_process';
import { existsSync, mkdirSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';

const run = (command, ...words) => execFileSync(command, words, { stdio: 'ignore' });

// A multicast zone whose network can go.
export class LostZone {
  constructor(number) {
    this.group = `239.255.86.${number}`;
    this.output = { multicast: `${this.group}:5004` };
    this.isLost = false;
    this.faults = { gone: [() => this.lose()], back: [() => this.lose(), () => this.heal()] };
  }

  lose() {
    if (!this.isLost) run('ip', 'route', 'add', 'unreachable', `${this.group}/32`);
    this.isLost = true;
  }

  heal() {
    if (this.isLost) run('ip', 'route', 'del', 'unreachable', `${this.group}/32`);
    this.isLost = false;
  }

  end() {}
}

// A GStreamer bin whose sound somebody reads from a pipe.
export class ReadPipe {
  constructor(number, folder) {
    this.pipe = join(folder, `pipe-${number}`);
    this.output = { gstreamer: `filesink sync=true location=${this.pipe}` };
    this.heal();
    this.faults = {
      gone: [() => this.kill()],
      back: [() => this.kill(), () => this.heal()],
      hangs: [() => this.reader.kill('SIGSTOP')],
      stutters: [() => this.reader.kill('SIGSTOP'), () => this.reader.kill('SIGCONT')],
      refuses: [() => this.refuse()],
    };
  }

  kill() {
    this.reader?.kill('SIGKILL');
    this.reader = undefined;
  }

  refuse() {
    this.kill();
    rmSync(this.pipe, { force: true, recursive: true });
    mkdirSync(this.pipe);
  }

  heal() {
    if (existsSync(this.pipe) && readdirSafely(this.pipe)) rmSync(this.pipe, { recursive: true });
    if (!existsSync(this.pipe)) run('mkfifo', this.pipe);
    // It keeps the pipe open for writing as well, so that it never sees its end.
    this.reader ??= spawn('sh', ['-c', 'exec cat <>"$0" >/dev/null', this.pipe], { stdio: 'ignore' });
    this.reader.kill('SIGCONT');
  }

  end() {
    this.kill();
  }
}

function readdirSafely(path) {
  try {
    readdirSync(path);
    return true;
  } catch {
    return false; // no folder
  }
}

// A recording on a small disk of its own.
export class SmallDisk {
  constructor(number, folder) {
    this.disk = join(folder, `disk-${number}`);
    this.place = join(this.disk, 'takes');
    this.output = { file: join(this.place, '%n.wav') };
    mkdirSync(this.disk);
    run('mount', '-t', 'tmpfs', '-o', 'size=1m', 'tmpfs', this.disk);
    this.faults = {
      gone: [() => this.block()],
      removed: [() => this.empty()],
      full: [() => this.fill()],
      back: [() => this.fill(), () => this.heal()],
    };
  }

  empty() {
    rmSync(this.place, { recursive: true, force: true, maxRetries: 5 });
  }

  // There is a file where the folder should be, unless the controller makes that in the same moment.
  block() {
    this.empty();
    try {
      writeFileSync(this.place, '');
    } catch (error) {
      if (error.code !== 'EISDIR') throw error;
    }
  }

  fill() {
    try {
      writeFileSync(join(this.disk, 'filler'), Buffer.alloc(2 ** 20));
    } catch {
      // It is full.
    }
  }

  heal() {
    rmSync(join(this.disk, 'filler'), { force: true });
    this.empty();
  }

  end() {
    run('umount', '--lazy', this.disk);
  }
}
