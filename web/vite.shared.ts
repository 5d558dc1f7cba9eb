// What the builds of both pages have in common.

import type { UserConfig } from 'vite';

/**
 * Flat names, as the program serves them: `/assets/NAME`. A name with 16 hexadecimal digits changes with the content,
 * so that browsers may keep such a file for ever.
 */
export function buildOf(name: string, entry: string): NonNullable<UserConfig['build']> {
  return {
    assetsDir: '',
    assetsInlineLimit: 0, // the pages' policy lets no script or style stand in the page
    modulePreload: false,
    reportCompressedSize: false,
    chunkSizeWarningLimit: 1000, // tests/budget.mjs has the say
    rollupOptions: {
      input: { [name]: entry },
      output: {
        hashCharacters: 'hex',
        entryFileNames: '[name]-[hash:16].js',
        chunkFileNames: `${name}-[name]-[hash:16].js`,
        assetFileNames: '[name]-[hash:16][extname]',
      },
    },
  };
}
