// What both pages say of a request that went wrong; apart, so that the screens' page loads no other text of the page.

import { problem } from './english/problem';

export const problemText: typeof problem = problem;
