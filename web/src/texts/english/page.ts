// Every text of the page, in English.

import { announcements } from './announcements';
import { common } from './common';
import { editing } from './editor';
import { live } from './log';
import { views } from './views';

export const english = { ...common, ...announcements, ...editing, ...views, ...live };
