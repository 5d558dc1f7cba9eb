import tseslint from 'typescript-eslint';

export default tseslint.config(
  { ignores: ['**/*.mjs', 'src/api/types.ts'] },
  ...tseslint.configs.strictTypeChecked,
  {
    languageOptions: {
      parserOptions: {
        project: './tsconfig.json',
        tsconfigRootDir: import.meta.dirname ?? new URL('.', import.meta.url).pathname,
      },
    },
    rules: {
      // Numbers stand in texts and addresses everywhere; templates of Lit take methods as listeners, bound by Lit.
      '@typescript-eslint/restrict-template-expressions': ['error', { allowNumber: true }],
      '@typescript-eslint/unbound-method': 'off',
      '@typescript-eslint/no-confusing-void-expression': ['error', { ignoreArrowShorthand: true }],
      '@typescript-eslint/no-unused-vars': ['error', { argsIgnorePattern: '^_' }],
      // What prettier leaves as it is: texts may be longer, markup may not.
      'max-len': ['error', { code: 120, ignoreStrings: true }],
      'max-lines': ['error', 300],
      'max-lines-per-function': ['error', 60],
    },
  },
  // A suite is as long as its tests.
  { files: ['tests/**'], rules: { 'max-lines-per-function': 'off' } },
);
