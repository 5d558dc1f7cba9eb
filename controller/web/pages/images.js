// Pictures of popups: from the media folder or the web, and nothing else.

import { fetchFile } from './api.js';

const MEDIA = /^\/api\/media\/[A-Za-z0-9][A-Za-z0-9._-]{0,99}$/;

/** What kind of address this is: 'media', 'web', or '' for one that is not shown. */
export function imageKind(address) {
  if (MEDIA.test(address)) return 'media';
  if (!/^https?:\/\//i.test(address)) return '';
  try {
    const url = new URL(address);
    return url.host && (url.protocol === 'http:' || url.protocol === 'https:') ? 'web' : '';
  } catch (error) {
    return '';
  }
}

/**
 * Loads a picture; gives {source, release()} for an image element, or null when there is none to show. The files of
 * the media folder may need the token, which an image element cannot send.
 */
export async function loadImage(address) {
  const kind = imageKind(address);
  if (kind === 'web') return { source: address, release() {} };
  if (kind !== 'media') return null;
  try {
    const source = URL.createObjectURL(await fetchFile(address));
    return { source, release: () => URL.revokeObjectURL(source) };
  } catch (problem) {
    return null;
  }
}
