// The texts of a screen's page, which loads no others but those of a request that went wrong.

import { screen as english } from './english/screen';
import { screen as german } from './german/screen';
import { language } from './language';

export const screenText: typeof english = { en: english, de: german }[language];
