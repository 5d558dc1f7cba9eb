import tseslint from 'typescript-eslint';

export default tseslint.config(
  { ignores: ['**/*.mjs'] },
  ...tseslint.configs.strictTypeChecked,
  {
    languageOptions: { parserOptions: { project: './tsconfig.json', tsconfigRootDir: import.meta.dirname ?? new URL('.', import.meta.url).pathname } },
    rules: {
      // Numbers stand in texts and addresses everywhere; templates of Lit take methods as listeners, bound by Lit.
      '@typescript-eslint/restrict-template-expressions': ['error', { allowNumber: true }],
      '@typescript-eslint/unbound-method': 'off',
      '@typescript-eslint/no-confusing-void-expression': ['error', { ignoreArrowShorthand: true }],
      '@typescript-eslint/no-unused-vars': ['error', { argsIgnorePattern: '^_' }],
    },
  },
);
