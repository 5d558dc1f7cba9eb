// The texts of a screen's page, which loads no others but those of a request that went wrong.

import { screen } from './english/screen';

export const screenText: typeof screen = screen;
