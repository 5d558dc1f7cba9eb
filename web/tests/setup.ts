// What the sources say is in English, whatever the machine speaks.

import { loadTexts } from '../src/texts/page';

await loadTexts('en');
