// Above the excerpt of a long list: a field that narrows it down, and how much of it is shown.

import type SlInput from '@shoelace-style/shoelace/dist/components/input/input.js';
import { html, nothing } from 'lit';
import { MOST } from '../model/excerpt';
import { t } from '../texts/page';

export function excerptSearch(
  { label, all, shown }: { label: string; all: unknown[]; shown: unknown[] },
  words: string,
  onWords: (words: string) => void,
): unknown {
  if (all.length <= MOST) return nothing;
  return html`<sl-input
      class="unlabelled"
      type="search"
      size="small"
      label=${t.excerpt.search(label)}
      placeholder=${t.excerpt.search(label)}
      clearable
      .value=${words}
      @sl-input=${(event: Event) => onWords((event.target as SlInput).value)}
      ><ui-icon slot="prefix" name="search"></ui-icon
    ></sl-input>
    <p class="soft small" role="status">${t.excerpt.shown(shown.length, all.length)}</p>`;
}
