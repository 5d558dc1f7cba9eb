// The page of the people who run a house's announcements.

import './kit';
import './styles/page.css'; // after the kit's own, whose colours it changes
import './page-shell';
import { adoptTokenFromAddress } from './api/access';
import { followTheme } from './model/theme';
import { stream } from './store/live';

adoptTokenFromAddress();
followTheme();
void stream.reconnect();
