// Into the clipboard, also where the browser lends it to no page: over HTTP, which is how most houses are served.

/** Gives whether it is there now. */
export async function copy(text: string): Promise<boolean> {
  if (window.isSecureContext) {
    await navigator.clipboard.writeText(text);
    return true;
  }
  const place = document.createElement('textarea');
  place.value = text;
  place.style.position = 'fixed';
  place.style.opacity = '0';
  document.body.append(place);
  place.select();
  // eslint-disable-next-line @typescript-eslint/no-deprecated -- nothing else copies there
  const isCopied = document.execCommand('copy');
  place.remove();
  return isCopied;
}
