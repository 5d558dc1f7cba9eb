// The token that this browser shows to the controller.

const KEY = 'announcement-token';

/** Takes a token from the address (`#token=…`), keeps it, and removes it from the address and the history. */
export function adoptTokenFromAddress() {
  const match = /^#token=(.+)$/.exec(location.hash);
  if (!match) return;
  let token = match[1];
  try {
    token = decodeURIComponent(token);
  } catch (error) {
    // Not encoded, then: it is taken as it stands.
  }
  setToken(token);
  history.replaceState(null, '', location.pathname + location.search);
}

export function token() {
  try {
    return localStorage.getItem(KEY) || '';
  } catch (error) {
    return memory; // private windows of some browsers keep nothing
  }
}

export function setToken(value) {
  memory = value.trim();
  try {
    if (memory) localStorage.setItem(KEY, memory);
    else localStorage.removeItem(KEY);
  } catch (error) {
    // Kept until the page is closed.
  }
}

let memory = '';
