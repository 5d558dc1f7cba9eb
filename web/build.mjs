// Builds both pages into one folder: `node build.mjs FOLDER`. Two builds, since each is for browsers of its own age.

import { resolve } from 'node:path';
import { build } from 'vite';

const folder = process.argv[2];
if (!folder) throw new Error('into which folder? node build.mjs FOLDER');

const into = (configFile, emptyOutDir) =>
  build({ configFile, logLevel: 'warn', build: { outDir: resolve(folder), emptyOutDir } });

await into('vite.config.ts', true);
await into('vite.navigator.config.ts', false);
