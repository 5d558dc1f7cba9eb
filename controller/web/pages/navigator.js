// The page of a navigator: shows the announcements of its screen, and the time when there is none.

import { adoptTokenFromAddress } from './access.js';
import { request } from './api.js';
import { EventStream } from './events.js';
import { IdleView } from './idle.js';
import { PopupView } from './popup.js';
import { Wakefulness } from './wake.js';

const id = location.pathname.split('/').pop();
const api = `/api/navigators/${id}`;

adoptTokenFromAddress();

const idle = new IdleView(id, () => stream.reconnect());
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
  onOk: (number) => confirm(number),
  onClockJumped: () => stream.reconnect(),
});

/** Tells the controller, which closes the popup on every screen. Lost on the way: told again with the next state. */
async function confirm(number) {
  try {
    await request('POST', `${api}/popups/${number}/ok`);
  } catch (problem) {
    if (problem.status) popup.forgetConfirmed(); // refused: it will be shown again if it still stands
    setTimeout(() => stream.reconnect(), problem.status ? 0 : 2000);
  }
}

const handlers = {
  state(state) {
    idle.showHouse(state);
    wakefulness.set('room', state.awake);
    idle.rest(!state.awake);
    if (popup.isConfirmed(state.popup)) confirm(state.popup.number);
    else if (state.popup) popup.show(state.popup);
    else popup.hide();
  },
  wake() {
    wakefulness.set('room', true);
    idle.rest(false);
  },
  rest() {
    wakefulness.set('room', false);
    idle.rest(true);
  },
  popup_shown: (data) => popup.show(data.popup),
  popup_changed: (data) => popup.change(data.number, data.message),
  popup_hidden: (data) => popup.hideNumber(data.number),
};

const stream = new EventStream(`${api}/events`, {
  onEvent: (event) => {
    const handler = handlers[event.type];
    if (handler) handler(event.data);
  },
  onLink: (link) => idle.showLink(link),
});

stream.reconnect();
