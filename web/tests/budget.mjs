// What the page loads must stay small: 90 KB of script, gzipped, in all. `node tests/budget.mjs FOLDER`: of a build.
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { gzipSync } from 'node:zlib';

const BUDGET = 90 * 1024;

const folder = process.argv[2];
const scripts = readdirSync(folder).filter((name) => name.endsWith('.js'));
const sizes = scripts.map((name) => [name, gzipSync(readFileSync(join(folder, name)), { level: 9 }).length]);
const total = sizes.reduce((sum, [, size]) => sum + size, 0);
for (const [name, size] of sizes) console.log(`${name}: ${size} bytes`);
console.log(`all scripts, gzipped: ${total} of ${BUDGET} bytes`);
if (scripts.length === 0 || total > BUDGET) {
  console.error(
    scripts.length === 0 ? `there is no script in ${folder}` : `the page loads ${total - BUDGET} bytes too many`,
  );
  process.exit(1);
}
