// Making and changing an announcement.

import { request } from './api.js';
import { toast } from './dialogs.js';
import { h, icon } from './dom.js';
import { choice, field, number, problemAt, section, tick, volumeRow } from './fields.js';
import { listenButton } from './sounds.js';
import { timeline } from './timeline.js';
import { seconds } from './words.js';

const PREVIEW_PAUSE = 500;

const BLANK = {
  name: '',
  audio: { file: '', delay_ms: 0 },
  video: { image: '', text: '', delay_ms: 0, timeout_ms: 10000, ok_button: true, variable: null },
  rooms: [],
  navigators: [],
};

/** `id`: null for a new one. */
export function editorView(store, id) {
  const stored = id === null ? BLANK : store.announcements.get(id);
  if (!stored) return { title: 'Not found', node: h('section', {}, h('h1', {}, 'This announcement is gone'), back()), update() {} };
  const draft = JSON.parse(JSON.stringify(stored));
  if (id === null && store.rooms.size === 1) draft.rooms = [...store.rooms.keys()].map((room) => ({ id: room, volume: -1 }));
  return new Editor(store, id, draft).view();
}

function back() {
  return h('a', { class: 'action plain', href: '#/announcements' }, icon('back'), h('span', {}, 'All announcements'));
}

class Editor {
  constructor(store, id, draft) {
    this.store = store;
    this.id = id;
    this.draft = draft;
    this.saved = JSON.stringify(draft);
    this.asked = 0; // previews
    this.timer = 0;
    this.preview = h('div', { class: 'preview', 'aria-live': 'polite' });
    this.problem = h('p', { class: 'problem', role: 'alert', hidden: true });
    this.save = h('button', { type: 'submit', class: 'primary' }, 'Save');
  }

  view() {
    this.form = h('form', { class: 'editor', novalidate: true, on: { submit: (event) => this.submit(event), input: () => this.edited() } },
      h('div', { class: 'columns' },
        h('div', {}, this.basics(), this.soundPart(), this.screenPart()),
        h('div', {}, this.roomPart(), this.navigatorPart(),
          section('What playing it does', this.preview))),
      this.problem,
      h('footer', { class: 'form-end' }, h('a', { class: 'action plain', href: '#/announcements' }, 'Cancel'), this.save));
    const title = this.id === null ? 'New announcement' : 'Change announcement';
    this.loadMedia();
    this.refreshPreview();
    const leave = (event) => this.isDirty() && event.preventDefault();
    window.addEventListener('beforeunload', leave);
    return {
      title,
      node: h('section', {}, h('header', { class: 'head' }, h('h1', {}, title), back()), this.form),
      update() {},
      isDirty: () => this.isDirty(),
      unmount: () => {
        clearTimeout(this.timer);
        window.removeEventListener('beforeunload', leave);
      },
    };
  }

  isDirty() {
    return JSON.stringify(this.draft) !== this.saved;
  }

  basics() {
    const name = h('input', { type: 'text', value: this.draft.name, required: true, maxlength: 200, dir: 'auto', autocomplete: 'off', placeholder: 'Dinner is ready', on: { input: () => { this.draft.name = name.value; } } });
    return section(null, field('name', 'Name', name, 'How you find it in the list.'));
  }

  soundPart() {
    const { audio } = this.draft;
    this.sound = choice([['', 'No sound'], ...(audio.file ? [[audio.file, audio.file]] : [])], audio.file, (value) => { audio.file = value; });
    const listen = listenButton(() => audio.file && `${audio.file}.wav`);
    return section('Sound',
      field('audio.file', 'Sound', h('div', { class: 'joined' }, this.sound, listen), 'Bring your own under “Sounds & pictures”.', this.sound),
      field('audio.delay_ms', 'Wait before it (seconds)', number(audio.delay_ms, (value) => { audio.delay_ms = value; }), '0 waits one second.'));
  }

  screenPart() {
    const { video } = this.draft;
    const text = h('textarea', { rows: 3, dir: 'auto', value: video.text, placeholder: 'Dinner is ready', on: { input: () => { video.text = text.value; } } });
    this.pictures = h('datalist', { id: 'pictures' });
    const image = h('input', { type: 'text', list: 'pictures', value: video.image, autocomplete: 'off', spellcheck: 'false', placeholder: 'No picture', on: { input: () => { video.image = image.value.trim(); } } });
    return section('Message',
      field('video.text', 'Text', text),
      this.variableField(),
      field('video.image', 'Picture', h('div', {}, image, this.pictures), 'A picture of this house, or an address that begins with http:// or https://.', image),
      h('div', { class: 'pair' },
        field('video.timeout_ms', 'Show for (seconds)', number(video.timeout_ms, (value) => { video.timeout_ms = value; }), '0 shows it for 30 seconds.'),
        field('video.delay_ms', 'Wait before it (seconds)', number(video.delay_ms, (value) => { video.delay_ms = value; }))),
      tick('OK button, which closes the message on every screen', video.ok_button, (value) => { video.ok_button = value; }));
  }

  variableField() {
    const { video } = this.draft;
    const key = (one) => `${one.device} ${one.variable}`;
    const known = [...this.store.variables];
    if (video.variable && !known.some((one) => key(one) === key(video.variable))) known.push({ name: 'unknown to this house', ...video.variable });
    if (known.length === 0) return null;
    const options = [['', 'Show the text above'], ...known.map((one) => [key(one), `Show the value of ${one.name}`])];
    const select = choice(options, video.variable ? key(video.variable) : '', (value) => {
      const one = known.find((candidate) => key(candidate) === value);
      video.variable = one ? { device: one.device, variable: one.variable, name: one.name } : null;
    });
    return field('video.variable', 'Or a value that changes', select, 'The message follows the value while it is shown.');
  }

  roomPart() {
    const known = [...this.store.rooms.values()];
    const strange = this.draft.rooms.filter((room) => !this.store.rooms.has(room.id)).map(({ id }) => ({ id, name: `Room ${id}, not in this house` }));
    const rows = [...known, ...strange].map((room) => volumeRow(room, this.draft.rooms, () => this.edited()));
    return section('Rooms that hear it', rows.length ? h('div', { class: 'rows' }, rows) : h('p', { class: 'hint' }, 'The house file names no room yet.'));
  }

  navigatorPart() {
    const known = [...this.store.navigators.values()];
    const strange = this.draft.navigators.filter(({ id }) => !this.store.navigators.has(id)).map((one) => ({ ...one, name: `Screen ${one.id}, not in this house` }));
    const rows = [...known, ...strange].map((navigator) => tick(navigator.name, this.draft.navigators.some(({ id }) => id === navigator.id), (isOn) => {
      const others = this.draft.navigators.filter(({ id }) => id !== navigator.id);
      this.draft.navigators = isOn ? [...others, { id: navigator.id, room: navigator.room, onscreen: true }] : others;
    }));
    return section('Screens that show it', rows.length ? h('div', { class: 'rows' }, rows) : h('p', { class: 'hint' }, 'The house file names no screen yet.'));
  }

  async loadMedia() {
    try {
      const { media } = await request('GET', '/api/media');
      for (const file of media) {
        const base = file.name.replace(/\.wav$/, '');
        if (file.kind === 'image') this.pictures.append(h('option', { value: file.name }));
        else if (base !== this.draft.audio.file) this.sound.append(h('option', { value: base }, `${base}, ${seconds(file.duration_ms)}`));
      }
    } catch (problem) {
      this.show(problem);
    }
  }

  edited() {
    clearTimeout(this.timer);
    this.timer = setTimeout(() => this.refreshPreview(), PREVIEW_PAUSE);
  }

  async refreshPreview() {
    const asked = ++this.asked;
    const announcement = { ...this.body(), name: this.draft.name || 'Unnamed' };
    let content;
    try {
      content = timeline(this.store, await request('POST', '/api/rehearsal', { announcement }));
    } catch (problem) {
      content = h('p', { class: 'hint' }, problem.text);
    }
    if (asked === this.asked) {
      this.preview.textContent = '';
      this.preview.append(content);
    }
  }

  body() {
    const { id, ...body } = this.draft;
    return body;
  }

  async submit(event) {
    event.preventDefault();
    this.clearProblems();
    if (!this.draft.name.trim()) return this.show({ message: 'name: is missing', text: 'Give it a name, so that you find it in the list.' });
    this.save.disabled = true;
    try {
      if (this.id === null) await request('POST', '/api/announcements', this.body());
      else await request('PUT', `/api/announcements/${this.id}`, this.body());
      this.saved = JSON.stringify(this.draft);
      toast(`“${this.draft.name}” is saved`);
      location.hash = '#/announcements';
    } catch (problem) {
      this.show(problem);
    }
    this.save.disabled = false;
    return undefined;
  }

  clearProblems() {
    this.problem.hidden = true;
    for (const one of this.form.querySelectorAll('.field.wrong')) one.classList.remove('wrong');
    for (const one of this.form.querySelectorAll('[aria-invalid]')) one.removeAttribute('aria-invalid');
  }

  show(problem) {
    if (problemAt(this.form, problem)) return;
    this.problem.textContent = problem.text;
    this.problem.hidden = false;
  }
}
