// A question over the page, answered by one of a few buttons.

import type SlDialog from '@shoelace-style/shoelace/dist/components/dialog/dialog.js';
import { html, render } from 'lit';
import { t } from '../texts/page';

export interface Choice {
  key: string;
  text: string;
  variant?: 'primary' | 'danger' | 'default';
}

/** Gives the key of the chosen button; '' when the question was closed. */
export function ask(title: string, content: unknown, choices: Choice[]): Promise<string> {
  const place = document.createElement('div');
  document.body.append(place);
  return new Promise((resolve) => {
    let chosen = '';
    const choose = (key: string): void => {
      chosen = key;
      void place.querySelector<SlDialog>('sl-dialog')?.hide();
    };
    const end = (event: Event): void => {
      if (event.target !== place.querySelector('sl-dialog')) return;
      place.remove();
      resolve(chosen);
    };
    render(
      html`<sl-dialog label=${title} @sl-after-hide=${end}
        >${content}
        <sl-button slot="footer" @click=${() => choose('')}>${t.cancel}</sl-button>
        ${choices.map(
          (one) =>
            html`<sl-button slot="footer" variant=${one.variant ?? 'primary'} @click=${() => choose(one.key)}
              >${one.text}</sl-button
            >`,
        )}
      </sl-dialog>`,
      place,
    );
    void customElements.whenDefined('sl-dialog').then(() => place.querySelector<SlDialog>('sl-dialog')?.show());
  });
}
