// Requests to the controller, and its refusals as errors that people can read.

import { token } from './access.js';

/** What the controller answered in place of what was asked for. `status` 0: it could not be reached. */
export class Problem extends Error {
  constructor(status, detail, right) {
    super(detail);
    this.status = status;
    this.right = right || '';
  }

  /** The whole, as a sentence or two. */
  get text() {
    if (!this.right) return this.message;
    return `${this.message}. Right would be: ${this.right}`;
  }
}

/**
 * Sends a request. `body` may be a plain object (sent as JSON) or a Blob.
 * Gives the reply's JSON, or null when it has none. Throws `Problem`.
 */
export async function request(method, path, body) {
  const response = await send(method, path, body);
  if (response.status === 204) return null;
  const type = response.headers.get('Content-Type') || '';
  return /\bjson\b/.test(type) ? response.json() : null;
}

/** A file of the media folder, as a Blob. Throws `Problem`. */
export async function fetchFile(path) {
  return (await send('GET', path)).blob();
}

export const mediaPath = (name) => `/api/media/${encodeURIComponent(name)}`;

async function send(method, path, body) {
  const headers = {};
  if (token()) headers.Authorization = `Bearer ${token()}`;
  if (body !== undefined) headers['Content-Type'] = body instanceof Blob ? mediaType(body) : 'application/json';
  const content = body === undefined || body instanceof Blob ? body : JSON.stringify(body);
  let response;
  try {
    response = await fetch(path, { method, headers, body: content });
  } catch (error) {
    throw new Problem(0, 'The controller cannot be reached. Is it running, and is this device on the home network?');
  }
  if (response.ok) return response;
  throw await problemOf(response);
}

function mediaType(file) {
  return file.type === 'audio/x-wav' || file.type === 'audio/wave' ? 'audio/wav' : file.type || 'application/octet-stream';
}

async function problemOf(response) {
  try {
    const problem = await response.json();
    return new Problem(response.status, String(problem.detail || problem.title), problem.right);
  } catch (error) {
    return new Problem(response.status, `The controller answered ${response.status} ${response.statusText}`);
  }
}
