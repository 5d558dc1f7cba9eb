// Short messages, questions, and the way to enter a token.

import { setToken, token } from './access.js';
import { button, h, icon } from './dom.js';

const TOAST = 6000;

/** A message that goes by itself; `kind`: 'good' or 'bad'. */
export function toast(text, kind = 'good') {
  const place = document.getElementById('toasts');
  const remove = () => node.remove();
  const node = h('div', { class: `toast ${kind}`, role: kind === 'bad' ? 'alert' : 'status' }, h('p', {}, text),
    h('button', { type: 'button', class: 'quiet', 'aria-label': 'Close message', on: { click: remove } }, icon('close')));
  place.append(node);
  while (place.children.length > 3) place.firstElementChild.remove();
  setTimeout(remove, kind === 'bad' ? 2 * TOAST : TOAST);
}

/** Runs `work`; what the controller refuses is said in a message. Gives the result, or undefined. */
export async function attempt(work) {
  try {
    return await work();
  } catch (problem) {
    toast(problem.text || problem.message, 'bad');
    return undefined;
  }
}

/** A modal dialog with a heading; `close()` removes it. */
export function openDialog(title, ...content) {
  const heading = h('h2', { id: 'dialog-title' }, title);
  const dialog = h('dialog', { class: 'dialog', 'aria-labelledby': 'dialog-title' },
    h('header', {}, heading, h('button', { type: 'button', class: 'quiet', 'aria-label': 'Close', on: { click: () => dialog.close() } }, icon('close'))),
    ...content);
  dialog.addEventListener('close', () => dialog.remove());
  dialog.addEventListener('click', (event) => event.target === dialog && dialog.close());
  document.body.append(dialog);
  dialog.showModal();
  return dialog;
}

/** Asks; true for yes. */
export function ask(title, text, yes) {
  return new Promise((resolve) => {
    let answer = false;
    const agree = h('button', { type: 'button', class: 'danger', on: { click: () => { answer = true; dialog.close(); } } }, yes);
    const cancel = h('button', { type: 'button', class: 'plain', on: { click: () => dialog.close() } }, 'Cancel');
    const dialog = openDialog(title, h('p', {}, text), h('footer', {}, cancel, agree));
    dialog.addEventListener('close', () => resolve(answer));
    cancel.focus();
  });
}

/** The place of everything else while the controller wants a token. */
export function tokenForm(problem, onToken) {
  const input = h('input', { id: 'token', type: 'password', autocomplete: 'off', required: true, 'aria-describedby': 'token-help' });
  const submit = (event) => {
    event.preventDefault();
    setToken(input.value);
    onToken();
  };
  const forget = () => {
    setToken('');
    onToken();
  };
  return h('form', { class: 'card token', on: { submit } },
    h('h1', {}, 'Who are you?'),
    h('p', { id: 'token-help' }, 'This house lets in those who have a token. Make one on the machine that runs the controller:'),
    h('code', {}, 'announcement-controller token add my-phone --right admin'),
    h('label', { for: 'token' }, 'Token'),
    input,
    token() ? h('p', { class: 'problem', role: 'alert' }, problem.text) : null,
    h('footer', {}, token() ? button('close', 'Forget the token', forget, { class: 'plain' }) : null,
      h('button', { type: 'submit', class: 'primary' }, 'Come in')));
}
