// What both pages say of a request that went wrong; apart, so that the screens' page loads no other text of the page.

import { problem as english } from './english/problem';
import { problem as german } from './german/problem';
import { language } from './language';

export const problemText: typeof english = { en: english, de: german }[language];
