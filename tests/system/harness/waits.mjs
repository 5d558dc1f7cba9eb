// Every wait has an end, and says what it waited for; so has every test, and every file of tests.
import { after, afterEach, beforeEach } from 'node:test';

// For slow machines and sanitizers; a good run waits for what it waits for and no longer.
const patience = 60000;
const longestTest = 5 * patience;
const waiting = new Set();

const later = (milliseconds, act) => setTimeout(act, milliseconds);

// `promise`, or an error that says what was waited for. `end` is a promise that is broken when what is waited for cannot
// come any more; `sofar` says what there was until then.
export async function within(what, promise, { end, sofar = () => '' } = {}) {
  let timer;
  const late = new Promise((_, reject) => {
    timer = later(patience, () => reject(new Error(`waited in vain for ${what}${sofar()}`)));
  });
  waiting.add(what);
  try {
    return await Promise.race([promise, late, ...(end === undefined ? [] : [end])]);
  } finally {
    waiting.delete(what);
    clearTimeout(timer);
  }
}

function giveUp(complaint) {
  const waited = waiting.size === 0 ? '' : `; it waits for ${[...waiting].join(', ')}`;
  process.stderr.write(`${complaint}${waited}\n`);
  process.exit(1);
}

let limit;

// For a test that takes longer than others.
export function allow(milliseconds, name) {
  clearTimeout(limit);
  limit = later(milliseconds, () => giveUp(`"${name}" takes more than ${milliseconds / 1000} s`));
}

beforeEach(({ name }) => allow(longestTest, name));
afterEach(() => clearTimeout(limit));
// A server or program that a test has left behind would keep the file from ending.
after(() => {
  clearTimeout(limit);
  later(patience / 2, () =>
    giveUp(`all tests are over, but this was left behind: ${process.getActiveResourcesInfo().join(', ')}`),
  ).unref();
});
