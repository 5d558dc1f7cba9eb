// The largest text that a popup has room for.

const SMALLEST = 22; // CSS pixels: the least that can be read at arm's length; longer texts scroll
const LONG = 600; // characters: always scrolled, at a size made for reading

/** Sizes `message` so that it fits into `frame`; false when it does not, and scrolls at a readable size. */
export function fitText(message: HTMLElement, frame: HTMLElement): boolean {
  const view = message.ownerDocument.defaultView ?? window;
  const edge = Math.min(view.innerWidth, view.innerHeight);
  const reading = Math.max(SMALLEST, Math.round(edge * 0.042));
  if (message.textContent.length > LONG) return fits(message, frame, reading);

  let low = reading;
  let high = Math.max(reading + 1, Math.round(edge * 0.19));
  if (!fits(message, frame, low)) return false;
  // A word that is too long for the line anyway must not make all the others small.
  const mayBreak = breaksWords(message);
  while (high - low > 1) {
    const middle = (low + high) >> 1;
    if (fits(message, frame, middle) && (mayBreak || !breaksWords(message))) low = middle;
    else high = middle;
  }
  return fits(message, frame, low);
}

function fits(message: HTMLElement, frame: HTMLElement, size: number): boolean {
  message.style.setProperty('--size', `${size}px`);
  return frame.scrollHeight <= frame.clientHeight + 1;
}

/** Whether a word is wider than the line, and would be broken. */
function breaksWords(message: HTMLElement): boolean {
  message.classList.add('unbroken');
  const isWide = message.scrollWidth > message.clientWidth + 1;
  message.classList.remove('unbroken');
  return isWide;
}
