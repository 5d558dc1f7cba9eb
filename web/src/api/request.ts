// Requests to the controller, and its refusals as errors that people can read.

import { problemText } from '../texts/problem';
import { read, said, saidInside, type Meaning } from '../texts/said';
import { token } from './access';
import type { Given, Method, Path, Reply } from './operations';

export interface MediaUser {
  id: number;
  name: string;
}

/** What the controller answered in place of what was asked for. `status` 0: it could not be reached. */
export class Problem extends Error {
  constructor(
    readonly status: number,
    detail: string,
    readonly right = '',
    readonly users: MediaUser[] = [],
    readonly code = '', // of what one can act upon
  ) {
    super(detail);
  }

  /** The whole, as a sentence or two. */
  get text(): string {
    return this.right ? problemText.withRight(this.message, this.right) : this.message;
  }
}

export interface Answer<T> {
  value: T;
  etag: string;
}

type Values = Record<string, string | number>;

/** The address of an operation: `addressOf('/api/rooms/{id}', {id: 12})` is "/api/rooms/12". */
export function addressOf(path: string, values: Values = {}, query: Values = {}): string {
  const filled = path.replace(/\{(\w+)\}/g, (_whole, name: string) => encodeURIComponent(String(values[name])));
  const pairs = Object.entries(query).map(([name, value]) => `${name}=${encodeURIComponent(String(value))}`);
  return pairs.length > 0 ? `${filled}?${pairs.join('&')}` : filled;
}

/** Gives the reply and its tag. Throws `Problem`. */
export async function exchange<P extends Path, M extends Method<P>>(
  method: M,
  path: P,
  ...[given]: Given<P, M>
): Promise<Answer<Reply<P, M>>> {
  const {
    path: values,
    query,
    body,
    ifMatch,
  } = (given ?? {}) as {
    path?: Values;
    query?: Values;
    body?: unknown;
    ifMatch?: string;
  };
  const headers: Record<string, string> = authorization();
  if (body !== undefined) headers['Content-Type'] = 'application/json';
  if (ifMatch) headers['If-Match'] = ifMatch;
  const response = await send(addressOf(path, values, query), {
    method: method.toUpperCase(),
    headers,
    body: body === undefined ? undefined : JSON.stringify(body),
  });
  const isJson = /\bjson\b/.test(response.headers.get('Content-Type') ?? '');
  return {
    value: (isJson ? read(await response.text()) : null) as Reply<P, M>,
    etag: response.headers.get('ETag') ?? '',
  };
}

/** Gives the reply. Throws `Problem`. */
export async function request<P extends Path, M extends Method<P>>(
  method: M,
  path: P,
  ...given: Given<P, M>
): Promise<Reply<P, M>> {
  return (await exchange(method, path, ...given)).value;
}

/** Sent also when the page is being left. */
export function deleteInPassing(address: string): void {
  void fetch(address, { method: 'DELETE', headers: authorization(), keepalive: true }).catch(() => undefined);
}

/** A file of the media folder. Throws `Problem`. */
export async function fetchFile(address: string): Promise<Blob> {
  return (await send(address, { headers: authorization() })).blob();
}

export const mediaAddress = (name: string): string => addressOf('/api/media/{name}', { name });

/** A small picture of an image. */
export const thumbnailAddress = (name: string): string => addressOf('/api/media/{name}/thumbnail', { name });

/**
 * Stores a file, or a part of a sound, or one that is to be heard once; `onShare` hears how much has been sent, 0 to 1.
 * Throws `Problem`.
 */
export function upload(
  name: string,
  file: Blob,
  onShare: (share: number) => void,
  how?: { from_ms: number; to_ms: number } | { passing: 'true' },
): Promise<Reply<'/api/media/{name}', 'put'>> {
  return new Promise((resolve, reject) => {
    const call = new XMLHttpRequest(); // fetch tells nothing of what has been sent
    call.open('PUT', addressOf('/api/media/{name}', { name }, how));
    for (const [header, value] of Object.entries(authorization())) call.setRequestHeader(header, value);
    call.setRequestHeader('Content-Type', 'application/octet-stream');
    call.upload.onprogress = (event) => onShare(event.lengthComputable ? event.loaded / event.total : 0);
    call.onerror = () => reject(new Problem(0, problemText.unreachable));
    call.onload = () => {
      const reply = parsed(call.responseText);
      if (call.status < 300) resolve(reply as Reply<'/api/media/{name}', 'put'>);
      else reject(problemOf(call.status, call.statusText, reply));
    };
    call.send(file);
  });
}
function authorization(): Record<string, string> {
  const own = token();
  return own ? { Authorization: `Bearer ${own}` } : {};
}

async function send(path: string, options: RequestInit): Promise<Response> {
  let response: Response;
  try {
    response = await fetch(path, options);
  } catch {
    throw new Problem(0, problemText.unreachable);
  }
  if (response.ok) return response;
  throw problemOf(response.status, response.statusText, parsed(await response.text().catch(() => '')));
}

function parsed(text: string): unknown {
  try {
    return read(text);
  } catch {
    return null;
  }
}

function problemOf(status: number, statusText: string, body: unknown): Problem {
  const { detail, title, right, users, code, params } = (body ?? {}) as {
    detail?: string;
    title?: string;
    right?: string;
    users?: MediaUser[];
  } & Partial<Meaning>;
  const own = detail ?? title ?? problemText.answered(status, statusText);
  const text = code ? said({ code, params }, own) : own;
  return new Problem(status, text, right && saidInside('right', params ?? {}, right), users, code);
}
