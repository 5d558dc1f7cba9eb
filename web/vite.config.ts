import { defineConfig } from 'vitest/config';
import { buildOf } from './vite.shared';

// The page of the people who run the house's announcements: `/`.
export default defineConfig({
  base: '/assets/',
  build: { ...buildOf('page', 'index.html'), target: 'es2020' },
  test: { include: ['tests/**/*.test.ts'], setupFiles: 'tests/setup.ts' },
});
