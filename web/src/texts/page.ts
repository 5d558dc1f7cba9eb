// The texts of the page. Another language is a folder beside `english`, and a line at the end.

import { english } from './english/page';

export type Texts = typeof english;

export const t: Texts = english;
