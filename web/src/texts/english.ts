// Every text of the page, in English.

import { announcements } from './english/announcements';
import { common } from './english/common';
import { editing } from './english/editor';
import { live } from './english/log';
import { finding } from './english/outputs';
import { now } from './english/now';
import { sounds } from './english/sounds';
import { views } from './english/views';

export const english = { ...common, ...now, ...announcements, ...editing, ...views, ...sounds, ...live, ...finding };
