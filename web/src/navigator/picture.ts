// Pictures of popups: from the media folder or the web, and nothing else.

import { fetchFile } from '../api/request';

const MEDIA = /^\/api\/media\/[A-Za-z0-9][A-Za-z0-9._-]{0,99}$/;

/** What an image element shows; `release` when it does so no longer. */
export interface Picture {
  source: string;
  release(): void;
}

/** What kind of address this is: of the media folder, of the web, or one that is not shown. */
export function kindOf(address: string): 'media' | 'web' | 'none' {
  if (MEDIA.test(address)) return 'media';
  if (!/^https?:\/\//i.test(address)) return 'none';
  try {
    return new URL(address).host === '' ? 'none' : 'web';
  } catch {
    return 'none';
  }
}

/**
 * Loads a picture; null when there is none to show. The files of the media folder may need the token, which an image
 * element cannot send.
 */
export async function loadPicture(address: string): Promise<Picture | null> {
  const kind = kindOf(address);
  if (kind === 'web') return { source: address, release: () => undefined };
  if (kind === 'none') return null;
  try {
    const source = URL.createObjectURL(await fetchFile(address));
    return { source, release: () => URL.revokeObjectURL(source) };
  } catch {
    return null;
  }
}
