// What a popup looks like, on a screen and where the editor shows what a screen would show.

import type { Popup } from '../api/objects';
import { screenText } from '../texts/screen';
import { fitText } from './fit';
import { loadPicture, type Picture } from './picture';

const NAMES = ['popup', 'dialog', 'scroll', 'image', 'message', 'bar', 'left', 'ok'] as const;

export type PopupElements = Record<(typeof NAMES)[number], HTMLElement>;

/** Those of navigator.html, wherever its popup stands. */
export function popupIn(document: Document): PopupElements {
  const found = {} as PopupElements;
  for (const name of NAMES) {
    const element = document.getElementById(name);
    if (!element) throw new Error(`navigator.html has no such element: ${name}`);
    found[name] = element;
  }
  return found;
}

/** Writes the text where it is another one: what does not change is not told again by a screen reader. */
export function setText(node: HTMLElement, text: string): void {
  if (node.textContent !== text) node.textContent = text;
}

export class PopupFace {
  private shown: Popup | null = null;
  private picture: Picture | null = null;

  constructor(private readonly elements: PopupElements) {
    elements.scroll.addEventListener('scroll', () => this.markEnd());
    elements.image.addEventListener('load', () => this.layOut());
    elements.image.addEventListener('error', () => this.dropPicture());
    elements.popup.ownerDocument.defaultView?.addEventListener('resize', () => this.layOut());
  }

  show(popup: Popup): void {
    const { ok, popup: whole, scroll } = this.elements;
    this.shown = popup;
    this.write(popup.message);
    ok.hidden = !popup.ok_button;
    whole.hidden = false;
    scroll.scrollTop = 0;
    this.layOut();
    void loadPicture(popup.image).then((picture) => {
      if (this.shown === popup) this.showPicture(picture);
      else picture?.release();
    });
  }

  change(message: string): void {
    if (this.elements.message.textContent === message) return;
    this.write(message);
    this.layOut();
  }

  clear(): void {
    this.shown = null;
    this.dropPicture();
    this.elements.message.textContent = '';
  }

  hide(): void {
    this.clear();
    this.elements.popup.hidden = true;
  }

  tellRemaining(left: number, part: number): void {
    this.elements.bar.style.setProperty('--part', part.toFixed(4));
    const seconds = Math.ceil(left / 1000);
    const minutes = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
    setText(this.elements.left, seconds < 60 ? screenText.seconds(seconds) : minutes);
  }

  layOut(): void {
    if (!this.shown) return;
    const { dialog, message, scroll } = this.elements;
    dialog.classList.remove('overflowing', 'at-end');
    dialog.classList.add('fitting');
    const fits = fitText(message, scroll);
    dialog.classList.toggle('fitting', fits);
    dialog.classList.toggle('overflowing', !fits);
    // The keyboard reaches what it must scroll.
    if (fits) scroll.removeAttribute('tabindex');
    else scroll.tabIndex = 0;
    this.markEnd();
  }

  private write(message: string): void {
    this.elements.message.textContent = message;
    this.elements.dialog.classList.toggle('without-text', message === '');
  }

  private showPicture(picture: Picture | null): void {
    this.picture?.release();
    this.picture = picture;
    if (!picture) return;
    const image = this.elements.image as HTMLImageElement;
    image.src = picture.source;
    image.hidden = false;
    this.elements.dialog.classList.add('with-image');
    this.layOut();
  }

  private dropPicture(): void {
    const { image, dialog } = this.elements;
    this.picture?.release();
    this.picture = null;
    image.hidden = true;
    image.removeAttribute('src');
    dialog.classList.remove('with-image');
    this.layOut();
  }

  private markEnd(): void {
    const { dialog, scroll } = this.elements;
    dialog.classList.toggle('at-end', scroll.scrollTop + scroll.clientHeight >= scroll.scrollHeight - 4);
  }
}
