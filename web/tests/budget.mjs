// What the pages load must stay small: so much script, gzipped, in all, in any one language.
// `node tests/budget.mjs FOLDER`: of a build.
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { gzipSync } from 'node:zlib';

const BUDGETS = { page: 90 * 1024, navigator: 25 * 1024 }; // by what the names begin with
// What is loaded when it is asked for, and counts for itself: makers of sounds.
const LATER = { names: /^page-(sound-|new-)/, budget: 20 * 1024 };

const LANGUAGES = /^page-(english|german)-/; // of which a page loads one

const folder = process.argv[2];
const scripts = readdirSync(folder).filter((name) => name.endsWith('.js'));
const sizeOf = (name) => gzipSync(readFileSync(join(folder, name)), { level: 9 }).length;

const groups = Object.entries(BUDGETS).map(([page, budget]) => [
  page,
  budget,
  scripts.filter((name) => name.startsWith(`${page}-`) && !LATER.names.test(name)),
]);
groups.push(['later', LATER.budget, scripts.filter((name) => LATER.names.test(name))]);

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
