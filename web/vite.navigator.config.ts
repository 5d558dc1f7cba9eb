import { defineConfig } from 'vite';
import { buildOf } from './vite.shared';

/**
 * The page of a screen: `/navigator/ID`. What hangs on the wall was bought once and is not replaced: tablets of 2013
 * end at iOS 12, televisions at the engine that they were made with. All that know modules and async functions are
 * served, from 2017 on; older ones would need a second copy of every script.
 */
export default defineConfig({
  base: '/assets/',
  build: {
    ...buildOf('navigator', 'navigator.html'),
    target: ['es2017', 'safari11', 'chrome61', 'firefox60'],
    copyPublicDir: false, // the other page's build does
  },
});
