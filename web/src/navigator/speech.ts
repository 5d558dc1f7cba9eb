// The page in its language: what navigator.html says in English, and the switch.

import { keepLanguage, language, LANGUAGES, nextLanguage } from '../texts/language';
import { screenText } from '../texts/screen';
import { elements } from './elements';

export function speak(): void {
  document.documentElement.lang = language;
  const fixed: Record<string, string> = screenText.fixed;
  for (const node of Array.from(document.querySelectorAll<HTMLElement>('[data-text]'))) {
    node.textContent = fixed[node.dataset.text ?? ''] ?? node.textContent;
  }
  elements.dialog.setAttribute('aria-label', screenText.labels.dialog);
  elements.left.setAttribute('aria-label', screenText.labels.left);
  offer();
}

/** Named in its own tongue: whoever looks for it does not read the other one. */
function offer(): void {
  const next = nextLanguage();
  elements.language.textContent = LANGUAGES[next];
  elements.language.lang = next;
  elements.language.addEventListener('click', () => {
    keepLanguage(next);
    // Not by a reload, after which the browser would let the page play nothing.
    location.assign(location.pathname + location.search);
  });
}
