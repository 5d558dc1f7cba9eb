// The token that this browser shows to the controller. It stands in the browser's own storage and in the requests'
// header, never in an address or a cookie. The screens' pages read the same place.

const KEY = 'announcement-token';
let memory = '';

/** Takes a token from the address (`#token=…`), keeps it, and removes it from the address and the history. */
export function adoptTokenFromAddress(): void {
  const match = /^#token=(.+)$/.exec(location.hash);
  if (!match) return;
  setToken(decoded(match[1] ?? ''), true);
  history.replaceState(null, '', location.pathname + location.search);
}

function decoded(text: string): string {
  try {
    return decodeURIComponent(text);
  } catch {
    return text; // not encoded, then: it is taken as it stands
  }
}

export function token(): string {
  return read(sessionStorageOrNull()) || read(localStorageOrNull()) || memory;
}

/** `isKept`: also when the browser is closed; otherwise until then. An empty one signs out. */
export function setToken(value: string, isKept: boolean): void {
  memory = value.trim();
  write(sessionStorageOrNull(), isKept ? '' : memory);
  write(localStorageOrNull(), isKept ? memory : '');
}

// Private windows of some browsers refuse either.
function sessionStorageOrNull(): Storage | null {
  try {
    return window.sessionStorage;
  } catch {
    return null;
  }
}

function localStorageOrNull(): Storage | null {
  try {
    return window.localStorage;
  } catch {
    return null;
  }
}

function read(storage: Storage | null): string {
  try {
    return storage?.getItem(KEY) ?? '';
  } catch {
    return '';
  }
}

function write(storage: Storage | null, value: string): void {
  try {
    if (value) storage?.setItem(KEY, value);
    else storage?.removeItem(KEY);
  } catch {
    // Kept until the page is closed.
  }
}
