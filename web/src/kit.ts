// What the page uses of the component kit, and where the kit finds the few icons that it draws itself.

import '@shoelace-style/shoelace/dist/components/button/button.js';
import '@shoelace-style/shoelace/dist/components/dialog/dialog.js';
import '@shoelace-style/shoelace/dist/components/input/input.js';
import '@shoelace-style/shoelace/dist/components/range/range.js';
import '@shoelace-style/shoelace/dist/components/switch/switch.js';
import '@shoelace-style/shoelace/dist/components/textarea/textarea.js';
import '@shoelace-style/shoelace/dist/themes/light.css';
import '@shoelace-style/shoelace/dist/themes/dark.css';
import { registerIconLibrary } from '@shoelace-style/shoelace/dist/utilities/icon-library.js';
import icons from './images/kit-icons.svg';

// By default they would be data: addresses, which the pages' policy does not let scripts fetch.
const library = { resolver: (name: string) => `${icons}#${name}`, spriteSheet: true };
registerIconLibrary('system', library);
registerIconLibrary('default', library);
