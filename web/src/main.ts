// The page of the people who run a house's announcements.

import './kit';
import './styles/page.css'; // after the kit's own, whose colours it changes
import './page-shell';
import { adoptTokenFromAddress } from './api/access';
import { followTheme } from './model/theme';
import { stream } from './store/live';
import { language } from './texts/language';
import { loadTexts } from './texts/page';

adoptTokenFromAddress();
followTheme();
document.documentElement.lang = language;

async function begin(): Promise<void> {
  await loadTexts();
  document.body.prepend(document.createElement('page-shell'));
  void stream.reconnect();
}

// The connection was lost between this file and that of the texts.
const again = (): number => window.setTimeout(() => location.reload(), 3000);

begin().catch(again);
