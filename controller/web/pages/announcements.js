// The list of announcements.

import { request } from './api.js';
import { ask, attempt, openDialog, toast } from './dialogs.js';
import { button, h, icon, setText, syncList } from './dom.js';
import { timeline } from './timeline.js';
import { count } from './words.js';

export function announcementsView(store) {
  const list = h('ul', { class: 'cards', 'aria-label': 'Announcements' });
  const empty = h('div', { class: 'empty' }, icon('bell'), h('h2', {}, 'No announcements yet'),
    h('p', {}, 'An announcement plays a sound in the rooms you choose and shows a message on their screens: “Dinner is ready”, “Somebody is at the door”.'),
    h('a', { class: 'action primary', href: '#/announcements/new' }, icon('plus'), h('span', {}, 'Make the first one')));
  const add = h('a', { class: 'action primary', href: '#/announcements/new' }, icon('plus'), h('span', {}, 'New announcement'));
  const update = () => {
    const all = [...store.announcements.values()].sort((one, other) => one.id - other.id);
    empty.hidden = all.length > 0;
    add.hidden = !store.mayEdit || all.length === 0;
    empty.querySelector('a').hidden = !store.mayEdit;
    syncList(list, all, (one) => one.id, (one) => card(store, one));
  };
  return { title: 'Announcements', node: h('section', {}, h('header', { class: 'head' }, h('h1', {}, 'Announcements'), add), list, empty), update };
}

function card(store, { id }) {
  const name = h('h2', { dir: 'auto' });
  const facts = h('p', { class: 'facts' });
  const text = h('p', { class: 'quote', dir: 'auto' });
  const state = h('span', { class: 'badge' });
  const start = button('play', 'Play', () => play(store, id), { class: 'round' });
  const edit = h('a', { class: 'action plain', href: `#/announcements/${id}` }, icon('edit'), h('span', {}, 'Edit'));
  const preview = button('eye', 'Preview', () => showPreview(store, id), { class: 'plain' });
  const remove = button('trash', 'Delete', () => removeAnnouncement(store, id), { class: 'plain' });
  const node = h('li', { class: 'card announcement' }, start,
    h('div', { class: 'body' }, h('div', { class: 'title' }, name, state), text, facts),
    h('div', { class: 'actions' }, preview, edit, remove));
  const update = (announcement) => {
    setText(name, announcement.name);
    setText(text, announcement.video.variable ? `Shows the value of ${announcement.video.variable.name || 'a variable'}` : announcement.video.text);
    text.hidden = text.textContent === '';
    setText(facts, describe(announcement));
    start.setAttribute('aria-label', `Play ${announcement.name}`);
    for (const [one, word] of [[edit, 'Edit'], [preview, 'Preview'], [remove, 'Delete']]) one.setAttribute('aria-label', `${word} ${announcement.name}`);
    const isPlaying = store.status.playing !== null && store.status.playing.announcement === id;
    const place = store.status.waiting.indexOf(id);
    node.classList.toggle('playing', isPlaying);
    setText(state, isPlaying ? 'Playing' : place >= 0 ? `Waiting, ${place === 0 ? 'next' : `number ${place + 1}`}` : '');
    state.hidden = state.textContent === '';
    edit.hidden = remove.hidden = !store.mayEdit;
  };
  return { node, update };
}

function describe(announcement) {
  const facts = [];
  if (announcement.audio.file) facts.push(`♪ ${announcement.audio.file}`);
  facts.push(announcement.rooms.length ? count(announcement.rooms.length, 'room', 'rooms') : 'no room');
  facts.push(announcement.navigators.length ? count(announcement.navigators.length, 'screen', 'screens') : 'no screen');
  return facts.join('  ·  ');
}

async function play(store, id) {
  const reply = await attempt(() => request('POST', `/api/announcements/${id}/play`));
  if (!reply) return;
  const name = store.announcementName(id);
  toast(reply.state === 'waiting' ? `“${name}” waits for its turn` : `Playing “${name}”`);
  store.refresh();
}

async function showPreview(store, id) {
  const rehearsal = await attempt(() => request('POST', '/api/rehearsal', { announcement: id }));
  if (rehearsal) openDialog(`If “${store.announcementName(id)}” were played`, timeline(store, rehearsal));
}

async function removeAnnouncement(store, id) {
  const name = store.announcementName(id);
  if (!(await ask(`Delete “${name}”?`, 'It is gone for good. If it is playing, it plays to its end.', 'Delete'))) return;
  await attempt(async () => {
    await request('DELETE', `/api/announcements/${id}`);
    toast(`“${name}” is deleted`);
  });
}
