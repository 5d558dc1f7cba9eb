// The elements of navigator.html that change.

import { popupIn } from './PopupFace';

function find<E extends HTMLElement>(id: string, kind: new () => E): E {
  const found = document.getElementById(id);
  if (!(found instanceof kind)) throw new Error(`navigator.html has no such element: ${id}`);
  return found;
}

export const elements = {
  ...popupIn(document),
  idle: find('idle', HTMLElement),
  face: find('face', HTMLElement),
  clock: find('clock', HTMLElement),
  date: find('date', HTMLElement),
  room: find('room', HTMLElement),
  linkText: find('link-text', HTMLElement),
  tap: find('tap', HTMLButtonElement),
  language: find('language', HTMLButtonElement),
  tokenForm: find('token-form', HTMLFormElement),
  tokenCommand: find('token-command', HTMLElement),
  tokenInput: find('token-input', HTMLInputElement),
  tokenProblem: find('token-problem', HTMLElement),
};
