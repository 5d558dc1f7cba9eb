// What the pages load at first must stay small: so much script, gzipped, in any one language; and what they load later.
// `node tests/budget.mjs FOLDER`: of a build.
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { gzipSync } from 'node:zlib';

const BUDGETS = { page: 90 * 1024, navigator: 25 * 1024 }; // by what the names begin with
const LATER = 60 * 1024; // of the page: views and makers of sounds, each loaded when it is first opened
const ALWAYS = /^page-flow-/; // asked for by the list itself, at once
const LANGUAGES = /^page-(english|german)-/; // of which a page loads one

const folder = process.argv[2];
const scripts = readdirSync(folder).filter((name) => name.endsWith('.js'));
const textOf = (name) => readFileSync(join(folder, name), 'utf8');
const sizeOf = (name) => gzipSync(readFileSync(join(folder, name)), { level: 9 }).length;

/** Those scripts, and what they cannot do without. */
function withImports(names, found = new Set()) {
  for (const name of names.filter((one) => !found.has(one))) {
    found.add(name);
    const imports = textOf(name).matchAll(/(?:from|import)\s*"\.\/([^"]+\.js)"/g);
    withImports(
      [...imports].map((match) => match[1]),
      found,
    );
  }
  return [...found];
}

const groups = Object.entries(BUDGETS).map(([page, budget]) => {
  const entries = scripts.filter((name) => new RegExp(`^${page}-[0-9a-f]{16}\\.js$`).test(name));
  const beside = scripts.filter((name) => page === 'page' && (ALWAYS.test(name) || LANGUAGES.test(name)));
  return [page, budget, withImports([...entries, ...beside])];
});
const first = groups.flatMap(([, , names]) => names);
groups.push(['page, later', LATER, scripts.filter((name) => !first.includes(name))]);

const complaints = scripts
  .filter((name) => !(name.split('-')[0] in BUDGETS))
  .map((name) => `${name} belongs to no page: its name begins with none of ${Object.keys(BUDGETS).join(', ')}`);

for (const [page, budget, own] of groups) {
  const [always, languages] = [(name) => !LANGUAGES.test(name), (name) => LANGUAGES.test(name)].map((one) =>
    own.filter(one).map(sizeOf),
  );
  const total = always.reduce((sum, size) => sum + size, 0) + Math.max(0, ...languages);
  console.log(`${page}: ${total} of ${budget} bytes, gzipped, in ${own.length} scripts`);
  if (own.length === 0) complaints.push(`there is no script of ${page} in ${folder}`);
  if (total > budget) complaints.push(`${page} loads ${total - budget} bytes too many`);
}

for (const complaint of complaints) console.error(complaint);
if (complaints.length > 0) process.exit(1);
