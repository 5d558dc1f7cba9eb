// The words of a button: few for those who see what it stands beside, more for those who hear it alone.

import { html } from 'lit';

export const named = (seen: string, heard: string): unknown =>
  html`<span aria-hidden="true">${seen}</span><span class="unseen">${heard}</span>`;
