// Every text of the page, in German.

import type { Texts } from './page';
import { announcements } from './german/announcements';
import { common } from './german/common';
import { editing } from './german/editor';
import { live } from './german/log';
import { finding } from './german/outputs';
import { now } from './german/now';
import { said } from './german/said';
import { sounds } from './german/sounds';
import { views } from './german/views';

export { said };
export const german: Texts = {
  ...common,
  ...now,
  ...announcements,
  ...editing,
  ...views,
  ...sounds,
  ...live,
  ...finding,
};
