// What a screen shows while there is no announcement: the time, the room, and whether it is connected.

import { setToken } from '../api/access';
import type { Link } from '../api/EventStream';
import type { ScreenEvents } from '../api/events';
import { locale } from '../texts/language';
import { screenText } from '../texts/screen';
import { elements } from './elements';
import { setText } from './PopupFace';

const REFUSED = [401, 403];

export class IdleView {
  private readonly time = new Intl.DateTimeFormat(locale, { hour: 'numeric', minute: '2-digit' });
  private readonly date = new Intl.DateTimeFormat(locale, { weekday: 'long', day: 'numeric', month: 'long' });
  private link: Link | null = null; // null until the first try has come to something
  private hasTried = false; // entered a token

  /** `onToken` is called when somebody has entered a token. */
  constructor(navigator: string, onToken: () => void) {
    elements.tokenCommand.textContent = screenText.tokenCommand(navigator);
    elements.tokenForm.addEventListener('submit', (event) => {
      event.preventDefault();
      this.hasTried = true;
      setToken(elements.tokenInput.value, true);
      elements.tokenInput.value = '';
      onToken();
    });
    this.rest(true);
    this.tick();
    setInterval(() => this.tick(), 1000);
  }

  showHouse(state: ScreenEvents['state']): void {
    const place = state.room.name;
    elements.room.textContent = place;
    document.title = screenText.title(place, state.house);
  }

  showLink(link: Link): void {
    this.link = link;
    document.body.classList.toggle('connected', link.isConnected);
    document.body.classList.toggle('disconnected', !link.isConnected);
    const { problem } = link;
    elements.tokenForm.hidden = !problem || !REFUSED.includes(problem.status);
    elements.tokenProblem.textContent = problem?.status === 401 && this.hasTried ? problem.text : '';
    this.tellLink();
  }

  /** The browser lets a page play only when somebody has touched it. */
  askForTap(isNeeded: boolean): void {
    elements.tap.hidden = !isNeeded;
  }

  rest(isResting: boolean): void {
    document.body.classList.toggle('resting', isResting);
  }

  /** A popup stands before it: assistive technology and the keyboard pass it by. */
  cover(isCovered: boolean): void {
    elements.idle.inert = isCovered;
    if (isCovered) elements.idle.setAttribute('aria-hidden', 'true');
    else elements.idle.removeAttribute('aria-hidden');
  }

  private tick(): void {
    const now = new Date();
    setText(elements.clock, this.time.format(now));
    setText(elements.date, this.date.format(now));
    // Not always on the same points of the screen, which would wear them out.
    const minute = now.getMinutes();
    elements.face.style.transform = `translate(${(minute % 5) - 2}px, ${(minute % 7) - 3}px)`;
    this.tellLink();
  }

  private tellLink(): void {
    setText(elements.linkText, linkText(this.link));
  }
}

function linkText(link: Link | null): string {
  if (!link) return screenText.connecting;
  if (link.isConnected) return screenText.connected;
  if (link.problem?.status === 401) return screenText.needsToken;
  if (link.problem) return screenText.refused(link.problem.text);
  // In steps, so that a screen reader is not told every second.
  const isFarOff = link.retryAt - performance.now() > 10000;
  return isFarOff ? screenText.inAMoment : screenText.tryingAgain;
}
