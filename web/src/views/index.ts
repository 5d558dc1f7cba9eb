// Every component that the frame shows.

import '../parts/link-state';
import '../parts/now-bar';
import '../parts/sign-in';
import '../parts/ui-icon';
import '../parts/ui-toasts';
import './announcement-editor';
import './announcements-view';
import './history-view';
import './house-view';
import './log-view';
import './media-view';
