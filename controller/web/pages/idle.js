// What a navigator shows while there is no announcement: the time, the room, and whether it is connected.

import { setToken } from './access.js';

const element = (name) => document.getElementById(name);

export class IdleView {
  /** `onToken` is called when somebody has entered a token. */
  constructor(navigator, onToken) {
    this.time = new Intl.DateTimeFormat(undefined, { hour: 'numeric', minute: '2-digit' });
    this.date = new Intl.DateTimeFormat(undefined, { weekday: 'long', day: 'numeric', month: 'long' });
    this.link = { connected: false, retryAt: 0, problem: null };
    this.isFirst = true;
    this.hasTried = false; // entered a token
    element('token-command').textContent =
      `announcement-controller token add navigator-${navigator} --right navigator:${navigator}`;
    element('token-form').addEventListener('submit', (event) => {
      event.preventDefault();
      this.hasTried = true;
      setToken(element('token-input').value);
      element('token-input').value = '';
      onToken();
    });
    this.rest(true);
    this.tick();
    setInterval(() => this.tick(), 1000);
  }

  showHouse(state) {
    const room = state.room ? state.room.name : state.navigator.name;
    element('room').textContent = room;
    document.title = `${room} · ${state.house}`;
  }

  showLink(link) {
    this.link = link;
    this.isFirst = false;
    document.body.classList.toggle('connected', link.connected);
    document.body.classList.toggle('disconnected', !link.connected);
    const needsToken = link.problem !== null && [401, 403].includes(link.problem.status);
    element('token-form').hidden = !needsToken;
    element('token-problem').textContent = needsToken && this.hasTried ? link.problem.text : '';
    this.tellLink();
  }

  rest(isResting) {
    document.body.classList.toggle('resting', isResting);
  }

  /** A popup stands before it: assistive technology and the keyboard pass it by. */
  cover(isCovered) {
    const idle = element('idle');
    idle.inert = isCovered;
    if (isCovered) idle.setAttribute('aria-hidden', 'true');
    else idle.removeAttribute('aria-hidden');
  }

  tick() {
    const now = new Date();
    setText(element('clock'), this.time.format(now));
    setText(element('date'), this.date.format(now));
    // Not always on the same points of the screen, which would wear them out.
    const minute = now.getMinutes();
    element('face').style.transform = `translate(${(minute % 5) - 2}px, ${(minute % 7) - 3}px)`;
    this.tellLink();
  }

  tellLink() {
    setText(element('link-text'), this.linkText());
  }

  linkText() {
    const { connected, retryAt, problem } = this.link;
    if (this.isFirst) return 'Connecting …';
    if (connected) return 'Connected';
    if (problem && [401, 403].includes(problem.status)) return 'Not connected: this screen needs a token';
    const seconds = Math.ceil((retryAt - performance.now()) / 1000);
    // In steps, so that a screen reader is not told every second.
    if (seconds > 10) return 'Not connected. Trying again in a moment …';
    return 'Not connected. Trying again …';
  }
}

function setText(node, text) {
  if (node.textContent !== text) node.textContent = text;
}
