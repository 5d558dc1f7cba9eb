import { defineConfig } from 'vitest/config';

// Flat names, as the program serves them: `/` gives index.html, `/assets/NAME` every other file.
export default defineConfig({
  base: '/assets/',
  build: {
    target: 'es2020',
    assetsDir: '',
    assetsInlineLimit: 0, // the pages' policy lets no script or style stand in the page
    modulePreload: { polyfill: false },
    reportCompressedSize: false,
    chunkSizeWarningLimit: 1000, // tests/budget.mjs has the say
    rollupOptions: {
      output: {
        entryFileNames: 'page.js',
        chunkFileNames: 'page-[name].js',
        assetFileNames: 'page[extname]',
      },
    },
  },
  test: { include: ['tests/**/*.test.ts'] },
});
