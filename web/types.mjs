// Writes src/api/types.ts, the types of the API, from the controller's own description of it:
//     announcement-controller openapi > FILE && npm run types -- FILE
// With --check it writes nothing, and fails where the file is not what it would write.

import { readFileSync, writeFileSync } from 'node:fs';
import openapiTS, { astToString } from 'openapi-typescript';
import { format, resolveConfig } from 'prettier';

const TARGET = new URL('src/api/types.ts', import.meta.url).pathname;
const HEADER = `// The types of the API. Made by types.mjs from the controller's description of it: not to be changed by hand.\n\n`;

async function typesOf(document) {
  const tree = await openapiTS(document, {
    defaultNonNullable: false, // what has a default may be left out
    alphabetize: true, // the order of the description has no meaning here, and may change
    rootTypes: true,
    rootTypesNoSchemaPrefix: true,
  });
  const options = await resolveConfig(TARGET);
  return format(HEADER + astToString(tree), { ...options, filepath: TARGET });
}

const [file, mode] = process.argv.slice(2);
if (!file || (mode && mode !== '--check')) {
  console.error('usage: node types.mjs FILE [--check]: FILE is what `announcement-controller openapi` prints');
  process.exit(2);
}
const wanted = await typesOf(JSON.parse(readFileSync(file, 'utf8')));
if (!mode) {
  writeFileSync(TARGET, wanted);
} else if (readFileSync(TARGET, 'utf8') !== wanted) {
  console.error(`web/src/api/types.ts is not what ${file} describes: run \`npm run types -- ${file}\` in web/`);
  process.exit(1);
}
