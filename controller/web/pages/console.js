// The console: what a family needs to run its announcements.

import { activityView } from './activity.js';
import { adoptTokenFromAddress } from './access.js';
import { announcementsView } from './announcements.js';
import { ask, tokenForm } from './dialogs.js';
import { h, icon, setText } from './dom.js';
import { editorView } from './editor.js';
import { EventStream } from './events.js';
import { houseView } from './house.js';
import { mediaView } from './media.js';
import { nowBar } from './now.js';
import { Store } from './store.js';

const PLACES = [
  ['#/announcements', 'bell', 'Announcements'],
  ['#/house', 'house', 'Rooms & screens'],
  ['#/media', 'note', 'Sounds & pictures'],
  ['#/activity', 'clock', 'History & log'],
];

const main = document.getElementById('main');
const banner = document.getElementById('banner');

adoptTokenFromAddress();

const store = new Store();
const now = nowBar(store);
const links = PLACES.map(([address, drawing, name]) => h('a', { href: address }, icon(drawing), h('span', {}, name)));
document.getElementById('places').append(...links);
document.getElementById('now').append(now.node);

document.querySelector('.skip').addEventListener('click', (event) => {
  event.preventDefault(); // the address names the view
  main.focus();
});

let view = null;
let shownAt = ''; // the address whose view is shown, or what stands in its place

function makeView(address) {
  const match = /^#\/announcements\/(new|\d+)$/.exec(address);
  if (match && store.mayEdit) return editorView(store, match[1] === 'new' ? null : Number(match[1]));
  if (address === '#/house') return houseView(store);
  if (address === '#/media') return mediaView(store);
  if (address === '#/activity') return activityView(store);
  return announcementsView(store);
}

function mount(next, address) {
  if (view && view.unmount) view.unmount();
  const isFirst = view === null;
  view = next;
  shownAt = address;
  main.textContent = '';
  main.append(next.node);
  window.scrollTo(0, 0);
  for (const link of links) {
    if (address.startsWith(link.getAttribute('href'))) link.setAttribute('aria-current', 'page');
    else link.removeAttribute('aria-current');
  }
  // A new page, to those who do not see it change.
  if (!isFirst) main.focus({ preventScroll: true });
}

const currentAddress = () => (PLACES.some(([address]) => location.hash.startsWith(address)) ? location.hash : '#/announcements');

function standIn() {
  const { problem } = store.link;
  if (problem && [401, 403].includes(problem.status)) return ['token', () => tokenForm(problem, () => { shownAt = ''; stream.reconnect(); })];
  if (store.isReady) return null;
  if (store.rights.length && !store.mayPlay) return ['screen', screensOnly];
  return ['wait', () => h('p', { class: 'empty hint' }, 'Connecting to the controller …')];
}

/** A token of a screen opens that screen's page, and not this one. */
function screensOnly() {
  const ids = store.rights.map((right) => /^navigator:(\d+)$/.exec(right)).filter(Boolean).map((match) => match[1]);
  return h('div', { class: 'card token' }, h('h1', {}, 'This token belongs to a screen'), ids.map((id) => h('p', {}, h('a', { href: `/navigator/${id}` }, `Open the page of screen ${id}`))));
}

function render() {
  const instead = standIn();
  if (instead) {
    const [name, make] = instead;
    if (shownAt !== name || (name === 'token' && view.problem !== store.link.problem)) mount({ title: 'Welcome', node: make(), update() {}, problem: store.link.problem }, name);
  } else if (shownAt !== currentAddress()) {
    mount(makeView(currentAddress()), currentAddress());
  }
  if (store.isReady) {
    setText(document.getElementById('house-name'), store.status.house);
    if (!instead) view.update();
  }
  now.update();
  renderBanner();
  document.title = store.isReady ? `${view.title} · ${store.status.house}` : 'Announcements';
}

function renderBanner() {
  const texts = [];
  const isAway = !store.link.connected && store.isReady && !store.link.problem;
  if (isAway) texts.push('Not connected. What you see may be out of date; trying again …');
  if (store.isReady && !store.status.agent) texts.push('The agent is not running: announcements cannot be played.');
  if (store.isReady && !store.status.state_saved) texts.push(`Changes are not on the disk yet: ${store.status.state_error}`);
  setText(banner, texts.join(' '));
  banner.hidden = texts.length === 0;
}

window.addEventListener('hashchange', async () => {
  const wanted = location.hash;
  if (wanted === shownAt) return;
  if (view && view.isDirty && view.isDirty()) {
    history.replaceState(null, '', shownAt);
    if (!(await ask('Leave without saving?', 'What you have changed here would be lost.', 'Leave'))) return;
    history.replaceState(null, '', wanted);
  }
  render();
});

const stream = new EventStream('/api/events', {
  onEvent: (event) => store.apply(event),
  onLink: (link) => store.setLink(link),
  onRights: (rights) => {
    store.setRights(rights);
    return store.mayPlay;
  },
});

store.subscribe(render);
render();
stream.reconnect();
