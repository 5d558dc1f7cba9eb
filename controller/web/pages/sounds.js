// Listening to a sound here, in this browser.

import { fetchFile, mediaPath } from './api.js';
import { attempt } from './dialogs.js';
import { button, icon, setText } from './dom.js';

const audio = new Audio();
let current = null; // the button whose sound is heard

/** `nameOf()`: the file to hear, or '' for none. */
export function listenButton(nameOf, label = 'Listen') {
  const node = button('play', label, () => (current === node ? stop() : listen(node, nameOf())), { class: 'plain' });
  node.dataset.label = label;
  return node;
}

async function listen(node, name) {
  stop();
  if (!name) return;
  await attempt(async () => {
    const source = URL.createObjectURL(await fetchFile(mediaPath(name)));
    audio.src = source;
    audio.onended = stop;
    mark(node, true);
    current = node;
    try {
      await audio.play();
    } catch (error) {
      stop();
      if (error.name !== 'AbortError') throw new Error(`This browser cannot play ${name}.`);
    }
  });
}

function stop() {
  audio.pause();
  if (audio.src) URL.revokeObjectURL(audio.src);
  audio.removeAttribute('src');
  if (current) mark(current, false);
  current = null;
}

function mark(node, isOn) {
  node.replaceChild(icon(isOn ? 'stop' : 'play'), node.firstChild);
  setText(node.lastChild, isOn ? 'Stop' : node.dataset.label);
}
