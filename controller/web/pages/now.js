// What is playing and waiting now.

import { request } from './api.js';
import { attempt } from './dialogs.js';
import { button, h, setText } from './dom.js';
import { listing } from './words.js';

const REFRESH = 3000;

export function nowBar(store) {
  const name = h('strong', { dir: 'auto' });
  const details = h('span', { class: 'details', dir: 'auto' });
  const dismiss = button('close', 'Close popups', () => attempt(() => request('POST', '/api/dismiss')), { class: 'light' });
  const node = h('div', { class: 'now', role: 'status', hidden: true },
    h('span', { class: 'wave', 'aria-hidden': 'true' }, h('i'), h('i'), h('i'), h('i')),
    h('div', { class: 'now-text' }, name, details), dismiss);
  const update = () => {
    const { status } = store;
    const playing = status && status.playing;
    node.hidden = !playing;
    if (!playing) return;
    setText(name, store.announcementName(playing.announcement));
    const popups = [...store.navigators.values()].filter((one) => one.popup);
    setText(details, detailsOf(store, status, popups));
    dismiss.hidden = popups.length === 0;
  };
  // Nobody tells who waits; a queue only grows while something plays.
  setInterval(() => document.hidden || node.hidden || store.refresh(), REFRESH);
  return { node, update };
}

function detailsOf(store, status, popups) {
  const parts = [];
  const rooms = [...store.rooms.values()].filter((room) => room.in_announcement);
  if (status.sound) parts.push(`♪ ${status.sound.file}${rooms.length ? ` in ${listing(rooms.map((room) => room.name))}` : ''}`);
  if (popups.length) parts.push(`on ${listing(popups.map((one) => one.name))}`);
  if (status.waiting.length) parts.push(`then ${listing(status.waiting.map((id) => store.announcementName(id)))}`);
  return parts.join('  ·  ') || 'Playing';
}
