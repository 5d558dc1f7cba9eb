// The parts that forms are made of.

import { h, setText } from './dom.js';
import { volumeWords } from './words.js';

let made = 0;

export function section(title, ...content) {
  return h('div', { class: 'card part', role: 'group', 'aria-label': title }, title ? h('h2', {}, title) : null, ...content);
}

/** A labelled control with room for its help and for what is wrong with it; `path` is its name in the API. */
export function field(path, label, control, help, labelled) {
  const id = `field-${++made}`;
  const target = labelled || control;
  target.id = id;
  target.setAttribute('aria-describedby', `${id}-wrong${help ? ` ${id}-help` : ''}`);
  return h('div', { class: 'field', 'data-path': path },
    h('label', { for: id }, label), control,
    h('p', { id: `${id}-wrong`, class: 'wrong-text' }),
    help ? h('p', { id: `${id}-help`, class: 'hint' }, help) : null);
}

/** Shows a problem at the field that it names first ("audio.delay_ms: …"); false when there is none. */
export function problemAt(form, problem) {
  const match = /^([a-z_.]+)(\[\d+\][a-z_.]*)?:/.exec(problem.message);
  const place = match && form.querySelector(`[data-path="${match[1]}"]`);
  if (!place) return false;
  const text = problem.text.startsWith(match[0]) ? problem.text.slice(match[0].length).trim() : problem.text;
  place.classList.add('wrong');
  place.querySelector('.wrong-text').textContent = text;
  const control = place.querySelector('input, select, textarea');
  control.setAttribute('aria-invalid', 'true');
  control.focus();
  return true;
}

/** Seconds for people, milliseconds for the API. */
export function number(milliseconds, onValue) {
  const input = h('input', { type: 'number', min: 0, max: 4294967, step: 0.1, inputmode: 'decimal', value: String(milliseconds / 1000) });
  input.addEventListener('input', () => onValue(Math.max(0, Math.round(Number(input.value) * 1000)) || 0));
  return input;
}

export function choice(options, value, onValue) {
  const select = h('select', {}, options.map(([key, text]) => h('option', { value: key }, text)));
  select.value = value;
  select.addEventListener('change', () => onValue(select.value));
  return select;
}

export function tick(label, isOn, onValue) {
  const input = h('input', { type: 'checkbox', checked: isOn, on: { change: () => onValue(input.checked) } });
  return h('label', { class: 'tick' }, input, h('span', { dir: 'auto' }, label));
}

/** A room with its tick and its volume in the announcement's `targets`, which are changed in place. */
export function volumeRow(room, targets, onChange) {
  const find = () => targets.find(({ id }) => id === room.id);
  const former = find();
  const slider = h('input', {
    type: 'range', min: 0, max: 100, step: 1, value: String(Math.max(0, former ? former.volume : 0)), 'aria-label': `Volume in ${room.name}`,
  });
  const words = h('output', {});
  const show = () => {
    setText(words, volumeWords(Number(slider.value)));
    slider.setAttribute('aria-valuetext', words.textContent);
    slider.style.setProperty('--part', `${slider.value}%`);
    row.classList.toggle('off', !find());
    slider.disabled = !find();
  };
  const toggle = tick(room.name, Boolean(former), (isOn) => {
    const index = targets.findIndex(({ id }) => id === room.id);
    if (isOn) targets.push({ id: room.id, volume: volume() });
    else targets.splice(index, 1);
    show();
    onChange();
  });
  // 0 and -1 both leave the room's volume as it is.
  const volume = () => Number(slider.value) || -1;
  slider.addEventListener('input', () => {
    find().volume = volume();
    show();
  });
  const row = h('div', { class: 'volume-row' }, toggle, slider, words);
  show();
  return row;
}
