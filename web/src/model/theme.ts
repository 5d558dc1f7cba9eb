// Light or dark: as the system has it, or as this browser was told.

const KEY = 'announcement-theme';
const system = window.matchMedia('(prefers-color-scheme: dark)');

export type Theme = 'auto' | 'light' | 'dark';
export const THEMES: Theme[] = ['auto', 'light', 'dark'];

export function theme(): Theme {
  try {
    return THEMES.find((one) => one === localStorage.getItem(KEY)) ?? 'auto';
  } catch {
    return 'auto';
  }
}

export function setTheme(wanted: Theme): void {
  try {
    localStorage.setItem(KEY, wanted);
  } catch {
    // Until the page is closed, then.
  }
  show(wanted);
}

export function followTheme(): void {
  show(theme());
  system.addEventListener('change', () => show(theme()));
}

function show(wanted: Theme): void {
  const isDark = wanted === 'dark' || (wanted === 'auto' && system.matches);
  document.documentElement.classList.toggle('sl-theme-dark', isDark);
}
