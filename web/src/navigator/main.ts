// The page of a screen: shows the announcements of its navigator, and the time when there is none.

import './base.css';
import './idle.css';
import './popup.css';
import { adoptTokenFromAddress } from '../api/access';
import { EventStream } from '../api/EventStream';
import { handle, type Handlers, type ScreenEvents } from '../api/events';
import { Problem, request } from '../api/request';
import { IdleView } from './IdleView';
import { PopupView } from './PopupView';
import { ServerClock } from './ServerClock';
import { Speaker } from './Speaker';
import { screenText } from '../texts/screen';
import { speak } from './speech';
import { Update } from './Update';
import { Wakefulness } from './Wakefulness';

const id = location.pathname.split('/').pop() ?? '';

adoptTokenFromAddress();
speak();

const idle = new IdleView(id, () => void stream.reconnect());
const wakefulness = new Wakefulness();
const popup = new PopupView({
  onShown: () => {
    idle.cover(true);
    wakefulness.set('popup', true);
  },
  onHidden: () => {
    idle.cover(false);
    wakefulness.set('popup', false);
  },
  onOk: (number) => void confirm(number),
  onClockJumped: () => void stream.reconnect(),
});

const clock = new ServerClock((ping) => stream.tell({ ping }));
const speaker = new Speaker({
  onArmed: (isArmed) => {
    idle.askForTap(!isArmed);
    stream.tell({ armed: isArmed });
  },
  onNews: (play, news) => stream.tell({ play: { play, news } }),
  pageTime: (moment) => clock.pageTime(moment),
});
const update = new Update(() => !popup.isShown && !speaker.isPlaying);

/** The first news of a connection: the controller knows of none before. */
function beHeard(): void {
  speaker.begin();
  idle.askForTap(!speaker.armed);
  stream.tell({ armed: speaker.armed });
  clock.restart();
}

/** Tells the controller, which closes the popup on every screen. Lost on the way: told again with the next state. */
async function confirm(number: number): Promise<void> {
  try {
    await request('post', '/api/navigators/{id}/popups/{number}/ok', { path: { id: Number(id), number } });
  } catch (problem) {
    const isRefused = problem instanceof Problem && problem.status !== 0;
    if (isRefused) popup.forgetConfirmed(); // it will be shown again if it still stands
    setTimeout(() => void stream.reconnect(), isRefused ? 0 : 2000);
  }
}

function wake(isAwake: boolean): void {
  wakefulness.set('room', isAwake);
  idle.rest(!isAwake);
}

const handlers: Handlers<ScreenEvents, []> = {
  state(state) {
    tellSize();
    idle.showHouse(state);
    wake(state.awake);
    if (!state.popup) popup.hide();
    else if (popup.isConfirmed(state.popup)) void confirm(state.popup.number);
    else popup.show(state.popup);
    if (state.speaker) beHeard();
    void update.check();
  },
  pong: ({ ping, now }) => clock.hear(ping, now),
  sound_fetch: ({ sound, address }) => speaker.fetch(sound, address),
  sound_play: (order) => void speaker.play(order),
  sound_gain: ({ play, gain }) => speaker.setGain(play, gain),
  sound_stop: ({ play }) => speaker.stop(play),
  wake: () => wake(true),
  rest: () => wake(false),
  popup_shown: (data) => popup.show(data.popup),
  popup_changed: (data) => popup.change(data.number, data.message),
  popup_hidden: (data) => popup.hideNumber(data.number),
};

/** A browser is not told why a socket is refused: so what would be is said before. */
function refusalOf(rights: string[]): Problem | null {
  if (rights.some((right) => ['admin', 'play', `navigator:${id}`].includes(right))) return null;
  const others = rights.map((right) => right.replace('navigator:', '')).join(', ');
  return new Problem(403, screenText.otherScreens(others, id));
}

const stream = new EventStream<ScreenEvents>(`/api/navigators/${id}/events`, {
  onEvent: (event) => handle(handlers, event),
  onLink: (link) => idle.showLink(link),
  onRights: refusalOf,
});

/** For those who write what is shown here: they see it as it will be. */
function tellSize(): void {
  stream.tell({ size: { width: window.innerWidth, height: window.innerHeight } });
}

let settling = 0;
window.addEventListener('resize', () => {
  clearTimeout(settling);
  settling = window.setTimeout(tellSize, 200);
});

void stream.reconnect();
