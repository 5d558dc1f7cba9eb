// The elements of navigator.html that change.

function find<E extends HTMLElement>(id: string, kind: new () => E): E {
  const found = document.getElementById(id);
  if (!(found instanceof kind)) throw new Error(`navigator.html has no such element: ${id}`);
  return found;
}

export const elements = {
  idle: find('idle', HTMLElement),
  face: find('face', HTMLElement),
  clock: find('clock', HTMLElement),
  date: find('date', HTMLElement),
  room: find('room', HTMLElement),
  linkText: find('link-text', HTMLElement),
  language: find('language', HTMLButtonElement),
  tokenForm: find('token-form', HTMLFormElement),
  tokenCommand: find('token-command', HTMLElement),
  tokenInput: find('token-input', HTMLInputElement),
  tokenProblem: find('token-problem', HTMLElement),
  popup: find('popup', HTMLElement),
  dialog: find('dialog', HTMLElement),
  scroll: find('scroll', HTMLElement),
  image: find('image', HTMLImageElement),
  message: find('message', HTMLElement),
  bar: find('bar', HTMLElement),
  left: find('left', HTMLElement),
  ok: find('ok', HTMLButtonElement),
};

/** Writes the text where it is another one: what does not change is not told again by a screen reader. */
export function setText(node: HTMLElement, text: string): void {
  if (node.textContent !== text) node.textContent = text;
}
