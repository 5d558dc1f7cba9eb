// Sounds and pictures: bringing them in, hearing and seeing them, throwing them away.

import { mediaPath, request } from './api.js';
import { ask, attempt, toast } from './dialogs.js';
import { button, h, icon, syncList } from './dom.js';
import { loadImage } from './images.js';
import { listenButton } from './sounds.js';
import { bytes, seconds } from './words.js';

const ENDINGS = /\.(wav|png|jpe?g|gif|webp)$/i;
const LARGEST = 32 * 1024 * 1024;

/** "Büro Gong (2).WAV" -> "Buro-Gong-2.wav": what the controller takes as a name. */
export function safeName(name) {
  const dot = name.lastIndexOf('.');
  const base = dot < 0 ? name : name.slice(0, dot);
  const ending = dot < 0 ? '' : name.slice(dot).toLowerCase();
  const plain = base.normalize('NFD').replace(/[\u0300-\u036f]/g, '').replace(/ß/g, 'ss');
  const safe = plain.replace(/[^A-Za-z0-9_-]+/g, '-').replace(/^[^A-Za-z0-9]+|-+$/g, '');
  return (safe || 'file').slice(0, 100 - ending.length) + ending;
}

export function mediaView(store) {
  return new MediaView(store).view();
}

class MediaView {
  constructor(store) {
    this.store = store;
    this.files = null; // null until they are known
    this.sounds = h('ul', { class: 'cards tiles' });
    this.images = h('ul', { class: 'cards tiles' });
    this.problems = h('div', { class: 'problems', role: 'alert' });
    this.busy = h('p', { class: 'hint', role: 'status' });
    this.empty = h('div', { class: 'empty', hidden: true }, icon('note'), h('h2', {}, 'No sounds and no pictures yet'),
      h('p', {}, 'Bring in the first: a chime for dinner, a dog’s bark for the door. Sounds are WAV files of at most 20 seconds.'));
  }

  view() {
    const input = h('input', { id: 'files', type: 'file', multiple: true, class: 'unseen', accept: '.wav,.png,.jpg,.jpeg,.gif,.webp,audio/wav,image/*', on: { change: () => this.take(input) } });
    this.drop = h('div', { class: 'drop' }, icon('upload'), h('p', {}, 'Drop sounds and pictures here, or'),
      input, h('label', { for: 'files', class: 'action primary' }, 'Choose files'),
      h('p', { class: 'hint' }, 'WAV sounds up to 20 seconds; PNG, JPEG, GIF and WebP pictures; up to 32 MB each.'));
    for (const name of ['dragenter', 'dragover']) this.drop.addEventListener(name, (event) => this.hover(event, true));
    for (const name of ['dragleave', 'drop']) this.drop.addEventListener(name, (event) => this.hover(event, false));
    this.drop.addEventListener('drop', (event) => this.upload([...event.dataTransfer.files]));
    this.load();
    const soundPart = h('div', { class: 'group' }, h('h2', {}, 'Sounds'), this.sounds);
    const imagePart = h('div', { class: 'group' }, h('h2', {}, 'Pictures'), this.images);
    this.parts = [soundPart, imagePart];
    return {
      title: 'Sounds & pictures',
      node: h('section', {}, h('header', { class: 'head' }, h('h1', {}, 'Sounds & pictures')), this.drop, this.busy, this.problems, ...this.parts, this.empty),
      update: () => this.update(),
    };
  }

  update() {
    this.drop.hidden = !this.store.mayEdit;
    const files = this.files || [];
    const sounds = files.filter((file) => file.kind === 'sound');
    const images = files.filter((file) => file.kind === 'image');
    this.empty.hidden = this.files === null || files.length > 0;
    this.parts[0].hidden = sounds.length === 0;
    this.parts[1].hidden = images.length === 0;
    const key = (file) => `${file.name} ${file.modified}`;
    syncList(this.sounds, sounds, key, (file) => this.soundCard(file));
    syncList(this.images, images, key, (file) => this.imageCard(file));
  }

  async load() {
    await attempt(async () => {
      this.files = (await request('GET', '/api/media')).media;
      this.update();
    });
  }

  hover(event, isOver) {
    event.preventDefault();
    this.drop.classList.toggle('over', isOver);
  }

  async take(input) {
    const files = [...input.files];
    input.value = '';
    await this.upload(files);
  }

  async upload(files) {
    this.problems.textContent = '';
    for (const file of files) {
      const name = safeName(file.name);
      this.busy.textContent = `Bringing in ${file.name} …`;
      await this.uploadOne(file, name);
    }
    this.busy.textContent = '';
    await this.load();
  }

  async uploadOne(file, name) {
    if (!ENDINGS.test(name)) return this.complain(file.name, 'only WAV sounds and PNG, JPEG, GIF or WebP pictures can be played and shown here.');
    if (file.size > LARGEST) return this.complain(file.name, `it has ${bytes(file.size)}; at most 32 MB are taken.`);
    const isThere = (this.files || []).some((one) => one.name === name);
    if (isThere && !(await ask(`Replace “${name}”?`, 'There is a file of this name already. Announcements that use it will use the new one.', 'Replace'))) return undefined;
    try {
      await request('PUT', mediaPath(name), file);
      toast(`“${name}” is here`);
    } catch (problem) {
      this.complain(file.name, problem.text);
    }
    return undefined;
  }

  complain(name, text) {
    this.problems.append(h('p', { class: 'problem' }, h('strong', { dir: 'auto' }, name), ` was not taken: ${text}`));
  }

  soundCard(file) {
    return this.card(file, `${seconds(file.duration_ms)}  ·  ${bytes(file.bytes)}`, listenButton(() => file.name), null);
  }

  imageCard(file) {
    const picture = h('img', { class: 'thumbnail', alt: '' });
    loadImage(mediaPath(file.name)).then((image) => {
      if (!image) return;
      picture.addEventListener('load', () => image.release());
      picture.src = image.source;
    });
    return this.card(file, bytes(file.bytes), null, picture);
  }

  card(file, facts, extra, picture) {
    const remove = button('trash', 'Delete', () => this.remove(file.name), { class: 'plain', 'aria-label': `Delete ${file.name}` });
    if (extra) extra.setAttribute('aria-label', `Listen to ${file.name}`);
    const node = h('li', { class: 'card file' }, picture, h('div', { class: 'body' }, h('h3', {}, file.name), h('p', { class: 'facts' }, facts)),
      h('div', { class: 'actions' }, extra, remove));
    return { node, update: () => { remove.hidden = !this.store.mayEdit; } };
  }

  async remove(name) {
    const base = name.replace(/\.wav$/, '');
    const users = [...this.store.announcements.values()].filter((one) => one.audio.file === base || one.video.image === name).length;
    const text = users ? `${users === 1 ? 'One announcement uses' : `${users} announcements use`} it and will go without.` : 'No announcement uses it.';
    if (!(await ask(`Delete “${name}”?`, text, 'Delete'))) return;
    await attempt(async () => {
      await request('DELETE', mediaPath(name));
      toast(`“${name}” is deleted`);
    });
    await this.load();
  }
}
