// The popup by the keyboard, or by the remote control of a television.

import { elements } from './elements';

export interface KeyListeners {
  onOk(): void;
  onScroll(): void;
}

export class PopupKeys {
  constructor(private readonly listeners: KeyListeners) {
    elements.dialog.addEventListener('keydown', (event) => this.take(event));
  }

  private take(event: KeyboardEvent): void {
    if (event.key === 'Escape') this.listeners.onOk();
    else if (event.key === 'Tab') this.moveFocus(event);
    else this.scroll(event);
  }

  private moveFocus(event: KeyboardEvent): void {
    event.preventDefault();
    const stops = [elements.scroll, elements.ok].filter((stop) => !stop.hidden && stop.tabIndex >= 0);
    const at = stops.findIndex((stop) => stop === document.activeElement);
    const step = event.shiftKey ? stops.length - 1 : 1;
    stops[(at + step) % stops.length]?.focus({ preventScroll: true });
  }

  private scroll(event: KeyboardEvent): void {
    const distance = distanceOf(event.key, elements.scroll);
    if (distance === 0) return;
    event.preventDefault();
    this.listeners.onScroll();
    elements.scroll.scrollTop += distance;
  }
}

function distanceOf(key: string, frame: HTMLElement): number {
  const page = frame.clientHeight * 0.85;
  const distances: Record<string, number> = {
    ArrowDown: 80,
    ArrowUp: -80,
    PageDown: page,
    PageUp: -page,
    Home: -frame.scrollHeight,
    End: frame.scrollHeight,
  };
  return distances[key] ?? 0;
}
