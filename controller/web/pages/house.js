// Rooms with their volumes, screens, and values that popups can follow.

import { request } from './api.js';
import { attempt, toast } from './dialogs.js';
import { h, icon, setText, syncList } from './dom.js';
import { count } from './words.js';

const HELD = 1500; // after a touch, news must not move the slider under the finger
const REFRESH = 4000;

export function houseView(store) {
  const rooms = h('ul', { class: 'cards tiles' });
  const screens = h('ul', { class: 'cards tiles' });
  const values = h('ul', { class: 'cards tiles' });
  const part = (title, list, none) => h('div', { class: 'group' }, h('h2', {}, title), list, h('p', { class: 'hint none' }, none));
  const valuePart = part('Values', values, 'The house file names no variable. Messages can follow one: the outside temperature, who is at the door.');
  const update = () => {
    syncList(rooms, [...store.rooms.values()], (one) => one.id, (one) => roomCard(one));
    syncList(screens, [...store.navigators.values()], (one) => one.id, (one) => screenCard(store, one));
    syncList(values, store.variables, (one) => `${one.device} ${one.variable}`, (one) => valueCard(one));
  };
  store.refresh();
  const timer = setInterval(() => document.hidden || store.refresh(), REFRESH);
  return {
    title: 'Rooms & screens',
    node: h('section', {}, h('header', { class: 'head' }, h('h1', {}, 'Rooms & screens')),
      part('Rooms', rooms, 'The house file names no room yet. Rooms are where announcements are heard; add them there.'),
      part('Screens', screens, 'The house file names no screen yet. Any tablet or television with a browser can be one.'), valuePart),
    update,
    unmount: () => clearInterval(timer),
  };
}

function roomCard({ id }) {
  const name = h('h3', { dir: 'auto' });
  const words = h('output', { class: 'big' });
  const badge = h('span', { class: 'badge' }, 'Announcement');
  const slider = h('input', { type: 'range', min: 0, step: 1 });
  const limit = h('p', { class: 'hint' });
  const trouble = h('p', { class: 'problem' });
  let touched = -HELD;
  let wanted = null; // the volume to send next
  let isSending = false;
  const show = (volume) => {
    setText(words, `${volume} %`);
    slider.style.setProperty('--part', `${(100 * volume) / Number(slider.max)}%`);
  };
  const send = async () => {
    if (isSending) return;
    isSending = true;
    while (wanted !== null) {
      const volume = wanted;
      wanted = null;
      await attempt(() => request('PUT', `/api/rooms/${id}/volume`, { volume }));
    }
    isSending = false;
  };
  slider.addEventListener('input', () => {
    touched = performance.now();
    wanted = Number(slider.value);
    show(wanted);
    send();
  });
  const node = h('li', { class: 'card room' }, h('div', { class: 'title' }, name, badge, words), slider, limit, trouble);
  const update = (room) => {
    setText(name, room.name);
    slider.max = String(room.max_volume);
    slider.setAttribute('aria-label', `Volume of ${room.name}`);
    if (performance.now() - touched > HELD) {
      slider.value = String(room.volume);
      show(room.volume);
    }
    badge.hidden = !room.in_announcement;
    setText(limit, room.max_volume < 100 ? `At most ${room.max_volume} %` : '');
    setText(trouble, room.trouble ? `Cannot be heard: ${room.trouble}` : '');
    trouble.hidden = !room.trouble;
  };
  return { node, update };
}

function screenCard(store, { id }) {
  const name = h('h3', { dir: 'auto' });
  const where = h('p', { class: 'hint', dir: 'auto' });
  const badge = h('span', { class: 'badge' });
  const popup = h('p', { class: 'quote', dir: 'auto' });
  const open = h('a', { class: 'action plain', href: `/navigator/${id}`, target: '_blank', rel: 'noopener' }, icon('screen'), h('span', {}, 'Open its page'));
  const node = h('li', { class: 'card screen' }, h('div', { class: 'title' }, name, badge), where, popup, open);
  const update = (navigator) => {
    setText(name, navigator.name);
    open.setAttribute('aria-label', `Open the page of ${navigator.name}`);
    setText(where, navigator.room ? store.roomName(navigator.room) : '');
    setText(badge, navigator.pages > 0 ? (navigator.pages === 1 ? 'Connected' : `${count(navigator.pages, 'page', 'pages')} connected`) : 'Not connected');
    badge.classList.toggle('good', navigator.pages > 0);
    badge.classList.toggle('dull', navigator.pages === 0);
    setText(popup, navigator.popup ? navigator.popup.message || 'A picture' : '');
    popup.hidden = !navigator.popup;
  };
  return { node, update };
}

function valueCard({ device, variable }) {
  const label = h('label', { for: `value-${device}-${variable}`, dir: 'auto' });
  const input = h('input', { id: `value-${device}-${variable}`, type: 'text', maxlength: 1000, dir: 'auto', autocomplete: 'off' });
  const submit = async (event) => {
    event.preventDefault();
    isEdited = false;
    await attempt(async () => {
      await request('PUT', `/api/variables/${device}/${variable}`, { value: input.value });
      toast(`${label.textContent} is set`);
    });
  };
  let isEdited = false;
  input.addEventListener('input', () => { isEdited = true; });
  const node = h('li', { class: 'card value' }, h('form', { on: { submit } }, label,
    h('div', { class: 'joined' }, input, h('button', { type: 'submit', class: 'plain' }, 'Set'))));
  const update = (one) => {
    setText(label, one.name);
    if (!isEdited && input.value !== one.value) input.value = one.value;
  };
  return { node, update };
}
