// What was played, what the controller says of itself, and how it is.

import { request } from './api.js';
import { attempt } from './dialogs.js';
import { h, setText, syncList } from './dom.js';
import { listing, moment, timeOfDay } from './words.js';

const PAGE = 50;

const OUTCOMES = { ended: 'Played', dismissed: 'Dismissed', interrupted: 'Interrupted', playing: 'Playing' };
const FAILED = 'failed: '; // before the reason

export function activityView(store) {
  const history = new HistoryPart(store);
  const log = h('ol', { class: 'log', tabindex: 0, 'aria-label': 'Log' });
  const quiet = h('p', { class: 'hint' }, 'Nothing has been said since this page was opened.');
  const facts = h('dl', { class: 'facts-list' });
  const sources = h('dl', { class: 'facts-list' });
  const update = () => {
    history.update();
    quiet.hidden = store.log.length > 0;
    log.hidden = store.log.length === 0;
    const isAtEnd = log.scrollTop + log.clientHeight >= log.scrollHeight - 8;
    syncList(log, store.log, numberOf, logLine);
    if (isAtEnd) log.scrollTop = log.scrollHeight;
    showPairs(facts, factsOf(store));
    showPairs(sources, SOURCES.map(([key, name]) => [name, store.status.known_from[key]]));
  };
  return {
    title: 'History & log',
    node: h('section', {}, h('header', { class: 'head' }, h('h1', {}, 'History & log')), history.node,
      h('div', { class: 'group' }, h('h2', {}, 'Log'), quiet, log),
      h('div', { class: 'group' }, h('h2', {}, 'Controller'), h('div', { class: 'card' }, facts),
        h('details', {}, h('summary', {}, 'How is it known what plays and waits?'), h('div', { class: 'card' }, sources)))),
    update,
  };
}

const numbers = new WeakMap();
let lines = 0;

function numberOf(line) {
  if (!numbers.has(line)) numbers.set(line, ++lines);
  return numbers.get(line);
}

function logLine({ level, text, time }) {
  const node = h('li', { class: level }, h('time', {}, timeOfDay(time)), h('span', { class: 'level' }, level), h('span', { dir: 'auto' }, text));
  return { node, update() {} };
}

const SOURCES = [['playing', 'Playing'], ['waiting', 'Waiting'], ['sound', 'Sound']];

function factsOf(store) {
  const { status } = store;
  return [
    ['House', status.house],
    ['Version', status.version],
    ['Running since', moment(status.started)],
    ['Agent', status.agent ? 'Running' : 'Not running: announcements cannot be played'],
    ['Everything on disk', status.state_saved ? 'Yes' : `No: ${status.state_error}`],
    ['This browser may', store.mayEdit ? 'do everything' : 'play, and set volumes and values'],
  ];
}

function showPairs(list, pairs) {
  const text = JSON.stringify(pairs);
  if (list.dataset.shown === text) return;
  list.dataset.shown = text;
  list.textContent = '';
  for (const [name, value] of pairs) list.append(h('dt', {}, name), h('dd', { dir: 'auto' }, value));
}

class HistoryPart {
  constructor(store) {
    this.store = store;
    this.entries = [];
    this.seen = -1; // endings that the list has
    this.isLoading = false;
    this.list = h('ul', { class: 'history' });
    this.none = h('p', { class: 'hint', hidden: true }, 'Nothing has been played yet. Press play at an announcement, and it appears here.');
    this.more = h('button', { type: 'button', class: 'plain', hidden: true, on: { click: () => this.load(true) } }, 'Show more');
    this.node = h('div', { class: 'group' }, h('h2', {}, 'Played'), this.list, this.none, this.more);
  }

  update() {
    if (this.seen !== this.store.endings && !this.isLoading) this.load(false);
  }

  async load(isMore) {
    this.isLoading = true;
    this.seen = this.store.endings;
    const last = this.entries[this.entries.length - 1];
    const before = isMore && last ? `&before=${last.id}` : '';
    await attempt(async () => {
      const { history } = await request('GET', `/api/history?limit=${PAGE}${before}`);
      this.entries = isMore ? [...this.entries, ...history] : history;
      this.more.hidden = history.length < PAGE;
      this.none.hidden = this.entries.length > 0;
      syncList(this.list, this.entries, (entry) => entry.id, () => this.row());
    });
    this.isLoading = false;
    this.update();
  }

  row() {
    const name = h('strong', { dir: 'auto' });
    const when = h('time', {});
    const where = h('span', { class: 'where', dir: 'auto' });
    const outcome = h('span', { class: 'badge' });
    const reason = h('p', { class: 'problem reason', dir: 'auto' });
    const node = h('li', { class: 'card entry' }, when, name, where, outcome, reason);
    const update = (entry) => {
      setText(name, entry.name);
      setText(when, moment(entry.started));
      when.dateTime = entry.started;
      setText(where, listing([...entry.rooms.map((id) => this.store.roomName(id)), ...entry.navigators.map((id) => this.store.navigatorName(id))]));
      const word = entry.ended === null ? 'playing' : entry.outcome;
      const hasFailed = word.startsWith(FAILED);
      setText(outcome, hasFailed ? 'Failed' : OUTCOMES[word] || word);
      setText(reason, hasFailed ? word.slice(FAILED.length) : '');
      reason.hidden = !hasFailed;
      outcome.classList.toggle('good', word === 'playing');
      outcome.classList.toggle('dull', word !== 'playing');
    };
    return { node, update };
  }
}
