// The popup of a screen: when it comes and goes, its time, its keys and its OK button.

import type { Popup } from '../api/objects';
import { AutoScroll } from './AutoScroll';
import { elements } from './elements';
import { PopupClock } from './PopupClock';
import { PopupFace } from './PopupFace';
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
  private formerFocus: Element | null = null;
  private readonly face = new PopupFace(elements);
  private readonly clock: PopupClock;
  private readonly autoScroll: AutoScroll;

  constructor(private readonly listeners: PopupListeners) {
    this.clock = new PopupClock({
      onTick: (left, part) => this.face.tellRemaining(left, part),
      onEnd: () => this.hide(),
      onJump: () => listeners.onClockJumped(),
    });
    this.autoScroll = new AutoScroll(elements.scroll, () => this.clock.remaining());
    new PopupKeys({ onOk: () => this.ok(), onScroll: () => this.autoScroll.stop() });
    elements.ok.addEventListener('click', () => this.ok());
    document.addEventListener('focusin', (event) => this.keepFocus(event.target));
  }

  show(popup: Popup): void {
    const isSame = this.shown !== null && identity(this.shown) === identity(popup);
    if (!isSame) {
      this.clear();
      this.shown = popup;
      this.confirmed = '';
      this.open(popup);
    }
    this.change(popup.number, popup.message);
    this.clock.start(popup.remaining_ms, !isSame);
  }

  get isShown(): boolean {
    return this.shown !== null;
  }

  change(number: number, message: string): void {
    if (this.shown?.number === number) this.face.change(message);
  }

  hideNumber(number: number): void {
    if (this.shown?.number === number) this.hide();
  }

  hide(): void {
    if (!this.shown) return;
    this.clear();
    this.face.hide();
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

  private open(popup: Popup): void {
    if (!this.formerFocus && !elements.popup.contains(document.activeElement)) {
      this.formerFocus = document.activeElement;
    }
    this.face.show(popup);
    this.listeners.onShown();
    focusOn(popup);
    this.autoScroll.start();
  }

  private clear(): void {
    this.shown = null;
    this.clock.stop();
    this.autoScroll.stop();
    this.face.clear();
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
