// What playing an announcement would do, drawn over time and told step by step.

import { h, icon } from './dom.js';
import { seconds, volumeWords } from './words.js';

/** `rehearsal`: the reply of `/api/rehearsal`. */
export function timeline(store, rehearsal) {
  if (rehearsal.timeline.length <= 2) {
    return h('p', { class: 'hint' }, 'Nothing would happen: choose a sound and a room, or write a message and choose a screen.');
  }
  const length = Math.max(1000, rehearsal.length_ms);
  return h('div', { class: 'timeline' },
    h('p', { class: 'hint' }, rehearsal.complete ? `Takes ${seconds(rehearsal.length_ms)}.` : 'Does not come to an end within ten minutes.'),
    h('div', { class: 'chart', 'aria-hidden': 'true' }, lanes(store, rehearsal.timeline, length), axis(length)),
    h('details', {}, h('summary', {}, 'Step by step'), steps(store, rehearsal.timeline)));
}

function lanes(store, events, length) {
  const found = new Map(); // by name, in order of appearance
  const lane = (key, name, kind) => {
    if (!found.has(key)) found.set(key, { name, kind, spans: [] });
    return found.get(key);
  };
  const close = (key, at) => {
    const open = found.has(key) && found.get(key).spans.find((span) => span.end === null);
    if (open) open.end = at;
  };
  for (const event of events) {
    const at = event.at_ms;
    if (event.what === 'sound_started') lane('sound', 'Sound', 'sound').spans.push({ start: at, end: null, text: event.file });
    if (event.what === 'sound_ended') close('sound', at);
    if (event.what === 'room_set_up') lane(`room ${event.room}`, store.roomName(event.room), 'room').spans.push({ start: at, end: null, text: '' });
    if (event.what === 'volume_set' && found.has(`room ${event.room}`)) {
      found.get(`room ${event.room}`).spans.forEach((span) => { span.text = volumeWords(event.volume); });
    }
    if (event.what === 'room_restored') close(`room ${event.room}`, at);
    if (event.what === 'popup_shown') {
      close(`screen ${event.navigator}`, at);
      lane(`screen ${event.navigator}`, store.navigatorName(event.navigator), 'screen').spans.push({ start: at, end: null, text: popupText(store, event) });
    }
    if (event.what === 'popup_hidden') close(`screen ${event.navigator}`, at);
  }
  return [...found.values()].map((one) => h('div', { class: `lane ${one.kind}` },
    h('span', { class: 'lane-name' }, icon({ sound: 'note', room: 'house', screen: 'screen' }[one.kind]), h('span', { dir: 'auto' }, one.name)),
    h('div', { class: 'lane-track' }, one.spans.map((span) => bar(span, length)))));
}

function bar(span, length) {
  const end = span.end === null ? length : span.end;
  const node = h('span', { class: 'span', dir: 'auto' }, span.text);
  node.style.left = `${(100 * span.start) / length}%`;
  node.style.width = `${Math.max(0.8, (100 * (end - span.start)) / length)}%`;
  return node;
}

function axis(length) {
  const step = [1000, 2000, 5000, 10000, 30000, 60000].find((one) => length / one <= 8) || 120000;
  const ticks = [];
  for (let at = 0; at <= length; at += step) {
    const tick = h('span', {}, `${at / 1000} s`);
    tick.style.left = `${(100 * at) / length}%`;
    ticks.push(tick);
  }
  return h('div', { class: 'axis' }, ticks);
}

function popupText(store, event) {
  if (!event.variable) return event.message || 'picture';
  const { device, variable } = event.variable;
  const bound = store.variables.find((one) => one.device === device && one.variable === variable);
  return bound ? `value of ${bound.name}` : `value of variable ${variable} of device ${device}`;
}

function steps(store, events) {
  return h('ol', { class: 'steps' }, events.map((event) => h('li', {}, h('time', {}, seconds(event.at_ms)), h('span', {}, sentence(store, event)))));
}

const SENTENCES = {
  started: () => 'It starts.',
  ended: () => 'It has ended; the next one may start.',
  stream_opened: () => 'The way for the sound is open.',
  stream_closed: () => 'The way for the sound is closed.',
  sound_started: (store, event) => `The sound “${event.file}” begins.`,
  sound_ended: () => 'The sound has ended.',
  room_set_up: (store, event) => `${store.roomName(event.room)} gets ready; its volume is kept for later.`,
  volume_set: (store, event) => `${store.roomName(event.room)} is set to ${event.volume} %.`,
  room_restored: (store, event) => `${store.roomName(event.room)} is as it was before.`,
  screens_woken: (store, event) => `The screens in ${store.roomName(event.room)} wake up.`,
  screens_rested: (store, event) => `The screens in ${store.roomName(event.room)} go back to rest.`,
  popup_shown: (store, event) => `${store.navigatorName(event.navigator)} shows “${popupText(store, event)}”${event.ok_button ? ', with an OK button' : ''}.`,
  popup_hidden: (store, event) => `${store.navigatorName(event.navigator)} no longer shows it.`,
  log: (store, event) => `Log: ${event.text}`,
};

function sentence(store, event) {
  return SENTENCES[event.what] ? SENTENCES[event.what](store, event) : event.what.replace(/_/g, ' ');
}
