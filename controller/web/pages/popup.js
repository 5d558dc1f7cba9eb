// The popup: its message, picture, remaining time and OK button.

import { AutoScroll } from './autoscroll.js';
import { fitText } from './fit.js';
import { imageKind, loadImage } from './images.js';
import { PopupClock } from './popup-clock.js';

const element = (name) => document.getElementById(name);

/** The same popup, told again. Numbers alone begin anew with a controller that was started again. */
const identity = (popup) => `${popup.number} ${popup.ends}`;

export class PopupView {
  /** `listeners`: onShown(), onHidden(), onOk(number), onClockJumped(). */
  constructor(listeners) {
    this.listeners = listeners;
    this.shown = null;
    this.confirmed = ''; // the popup whose OK the controller may not have had yet
    this.image = null;
    this.formerFocus = null;
    this.clock = new PopupClock({
      onTick: (left, part) => this.tellRemaining(left, part),
      onEnd: () => this.hide(),
      onJump: listeners.onClockJumped,
    });
    this.autoScroll = new AutoScroll(element('scroll'), () => this.clock.remaining());
    element('ok').addEventListener('click', () => this.ok());
    element('dialog').addEventListener('keydown', (event) => this.onKey(event));
    element('scroll').addEventListener('scroll', () => this.markEnd());
    element('image').addEventListener('load', () => this.layOut());
    element('image').addEventListener('error', () => this.dropImage());
    window.addEventListener('resize', () => this.layOut());
    document.addEventListener('focusin', (event) => this.keepFocus(event.target));
  }

  show(popup) {
    const isSame = this.shown !== null && identity(this.shown) === identity(popup);
    if (!isSame) {
      this.clear();
      this.shown = popup;
      this.confirmed = '';
      this.fill(popup);
      this.open();
    }
    this.change(popup.number, popup.message);
    this.clock.start(popup.remaining_ms, !isSame);
  }

  change(number, message) {
    if (!this.shown || this.shown.number !== number || element('message').textContent === message) return;
    element('message').textContent = message;
    element('dialog').classList.toggle('without-text', message === '');
    this.layOut();
  }

  hideNumber(number) {
    if (this.shown && this.shown.number === number) this.hide();
  }

  hide() {
    if (!this.shown) return;
    this.clear();
    element('popup').hidden = true;
    this.listeners.onHidden();
    const former = this.formerFocus;
    this.formerFocus = null;
    if (former && document.contains(former)) former.focus();
  }

  /** Whether this popup was closed here, which the controller does not know yet. */
  isConfirmed(popup) {
    return popup !== null && this.confirmed === identity(popup);
  }

  forgetConfirmed() {
    this.confirmed = '';
  }

  ok() {
    if (!this.shown || !this.shown.ok_button) return;
    const popup = this.shown;
    this.confirmed = identity(popup);
    this.hide();
    this.listeners.onOk(popup.number);
  }

  fill(popup) {
    element('message').textContent = popup.message;
    element('dialog').classList.toggle('without-text', popup.message === '');
    element('ok').hidden = !popup.ok_button;
    if (!imageKind(popup.image)) return;
    loadImage(popup.image).then((image) => {
      if (this.shown !== popup) {
        if (image) image.release();
        return;
      }
      this.image = image;
      if (!image) return;
      element('image').src = image.source;
      element('image').hidden = false;
      element('dialog').classList.add('with-image');
      this.layOut();
    });
  }

  open() {
    if (!this.formerFocus && !element('popup').contains(document.activeElement)) {
      this.formerFocus = document.activeElement;
    }
    element('popup').hidden = false;
    element('scroll').scrollTop = 0;
    this.layOut();
    this.listeners.onShown();
    this.focus();
    this.autoScroll.start();
  }

  focus() {
    const target = this.shown.ok_button ? element('ok') : element('dialog');
    target.focus({ preventScroll: true });
  }

  clear() {
    this.shown = null;
    this.clock.stop();
    this.autoScroll.stop();
    this.dropImage();
    element('message').textContent = '';
  }

  dropImage() {
    if (this.image) this.image.release();
    this.image = null;
    element('image').hidden = true;
    element('image').removeAttribute('src');
    element('dialog').classList.remove('with-image');
    this.layOut();
  }

  layOut() {
    if (!this.shown) return;
    const dialog = element('dialog');
    dialog.classList.remove('overflowing', 'at-end');
    dialog.classList.add('fitting');
    const fits = fitText(element('message'), element('scroll'));
    dialog.classList.toggle('fitting', fits);
    dialog.classList.toggle('overflowing', !fits);
    // The keyboard reaches what it must scroll.
    if (fits) element('scroll').removeAttribute('tabindex');
    else element('scroll').tabIndex = 0;
    this.markEnd();
  }

  markEnd() {
    const scroll = element('scroll');
    const isAtEnd = scroll.scrollTop + scroll.clientHeight >= scroll.scrollHeight - 4;
    element('dialog').classList.toggle('at-end', isAtEnd);
  }

  tellRemaining(left, part) {
    element('bar').style.setProperty('--part', part.toFixed(4));
    const seconds = Math.ceil(left / 1000);
    const text = seconds < 60 ? `${seconds} s` : `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
    if (element('left').textContent !== text) element('left').textContent = text;
  }

  /** An alert keeps the focus until it is answered. */
  keepFocus(target) {
    if (this.shown && !element('popup').contains(target)) this.focus();
  }

  onKey(event) {
    if (event.key === 'Escape') this.ok();
    else if (event.key === 'Tab') this.moveFocus(event);
    else this.scrollBy(event);
  }

  moveFocus(event) {
    event.preventDefault();
    const stops = [element('scroll'), element('ok')].filter((stop) => !stop.hidden && stop.tabIndex >= 0);
    if (stops.length === 0) return;
    const step = event.shiftKey ? stops.length - 1 : 1;
    stops[(stops.indexOf(document.activeElement) + step) % stops.length].focus({ preventScroll: true });
  }

  scrollBy(event) {
    const scroll = element('scroll');
    const page = scroll.clientHeight * 0.85;
    const distance = {
      ArrowDown: 80, ArrowUp: -80, PageDown: page, PageUp: -page, Home: -scroll.scrollHeight, End: scroll.scrollHeight,
    }[event.key];
    if (!distance) return;
    event.preventDefault();
    this.autoScroll.stop();
    scroll.scrollTop += distance;
  }
}
