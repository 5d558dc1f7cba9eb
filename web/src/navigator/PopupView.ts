// The popup: its message, picture, remaining time and OK button.

import type { Popup } from '../api/objects';
import { screenText } from '../texts/screen';
import { AutoScroll } from './AutoScroll';
import { elements, setText } from './elements';
import { fitText } from './fit';
import { loadPicture, type Picture } from './picture';
import { PopupClock } from './PopupClock';
import { PopupKeys } from './PopupKeys';

export interface PopupListeners {
  onShown(): void;
  onHidden(): void;
  onOk(number: number): void;
  onClockJumped(): void;
}

/** The same popup, told again. Numbers alone begin anew with a controller that was started again. */
const identity = (popup: Popup): string => `${popup.number} ${popup.ends}`;

export class PopupView {
  private shown: Popup | null = null;
  private confirmed = ''; // the popup whose OK the controller may not have had yet
  private picture: Picture | null = null;
  private formerFocus: Element | null = null;
  private readonly clock: PopupClock;
  private readonly autoScroll: AutoScroll;

  constructor(private readonly listeners: PopupListeners) {
    this.clock = new PopupClock({
      onTick: (left, part) => this.tellRemaining(left, part),
      onEnd: () => this.hide(),
      onJump: () => listeners.onClockJumped(),
    });
    this.autoScroll = new AutoScroll(elements.scroll, () => this.clock.remaining());
    new PopupKeys({ onOk: () => this.ok(), onScroll: () => this.autoScroll.stop() });
    elements.ok.addEventListener('click', () => this.ok());
    elements.scroll.addEventListener('scroll', () => this.markEnd());
    elements.image.addEventListener('load', () => this.layOut());
    elements.image.addEventListener('error', () => this.dropPicture());
    window.addEventListener('resize', () => this.layOut());
    document.addEventListener('focusin', (event) => this.keepFocus(event.target));
  }

  show(popup: Popup): void {
    const isSame = this.shown !== null && identity(this.shown) === identity(popup);
    if (!isSame) {
      this.clear();
      this.shown = popup;
      this.confirmed = '';
      this.fill(popup);
      this.open(popup);
    }
    this.change(popup.number, popup.message);
    this.clock.start(popup.remaining_ms, !isSame);
  }

  change(number: number, message: string): void {
    if (this.shown?.number !== number || elements.message.textContent === message) return;
    this.write(message);
    this.layOut();
  }

  hideNumber(number: number): void {
    if (this.shown?.number === number) this.hide();
  }

  hide(): void {
    if (!this.shown) return;
    this.clear();
    elements.popup.hidden = true;
    this.listeners.onHidden();
    const former = this.formerFocus;
    this.formerFocus = null;
    if (former instanceof HTMLElement && document.contains(former)) former.focus();
  }

  /** Whether this popup was closed here, which the controller does not know yet. */
  isConfirmed(popup: Popup): boolean {
    return this.confirmed === identity(popup);
  }

  forgetConfirmed(): void {
    this.confirmed = '';
  }

  private ok(): void {
    if (!this.shown?.ok_button) return;
    const popup = this.shown;
    this.confirmed = identity(popup);
    this.hide();
    this.listeners.onOk(popup.number);
  }

  private fill(popup: Popup): void {
    this.write(popup.message);
    elements.ok.hidden = !popup.ok_button;
    void loadPicture(popup.image).then((picture) => {
      if (this.shown === popup) this.showPicture(picture);
      else picture?.release();
    });
  }

  private write(message: string): void {
    elements.message.textContent = message;
    elements.dialog.classList.toggle('without-text', message === '');
  }

  private showPicture(picture: Picture | null): void {
    this.picture = picture;
    if (!picture) return;
    elements.image.src = picture.source;
    elements.image.hidden = false;
    elements.dialog.classList.add('with-image');
    this.layOut();
  }

  private open(popup: Popup): void {
    if (!this.formerFocus && !elements.popup.contains(document.activeElement)) {
      this.formerFocus = document.activeElement;
    }
    elements.popup.hidden = false;
    elements.scroll.scrollTop = 0;
    this.layOut();
    this.listeners.onShown();
    focusOn(popup);
    this.autoScroll.start();
  }

  private clear(): void {
    this.shown = null;
    this.clock.stop();
    this.autoScroll.stop();
    this.dropPicture();
    elements.message.textContent = '';
  }

  private dropPicture(): void {
    this.picture?.release();
    this.picture = null;
    elements.image.hidden = true;
    elements.image.removeAttribute('src');
    elements.dialog.classList.remove('with-image');
    this.layOut();
  }

  private layOut(): void {
    if (!this.shown) return;
    const { dialog, message, scroll } = elements;
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

  private markEnd(): void {
    const { dialog, scroll } = elements;
    dialog.classList.toggle('at-end', scroll.scrollTop + scroll.clientHeight >= scroll.scrollHeight - 4);
  }

  private tellRemaining(left: number, part: number): void {
    elements.bar.style.setProperty('--part', part.toFixed(4));
    const seconds = Math.ceil(left / 1000);
    const minutes = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
    setText(elements.left, seconds < 60 ? screenText.seconds(seconds) : minutes);
  }

  /** An alert keeps the focus until it is answered. */
  private keepFocus(target: EventTarget | null): void {
    if (this.shown && !(target instanceof Node && elements.popup.contains(target))) focusOn(this.shown);
  }
}

function focusOn(popup: Popup): void {
  const target = popup.ok_button ? elements.ok : elements.dialog;
  target.focus({ preventScroll: true });
}
