import assert from 'node:assert/strict';
import { readdir, readFile } from 'node:fs/promises';
import { after, before, describe, test } from 'node:test';
import { parse } from 'acorn';
import { House } from './support/house.mjs';

const FOLDER = new URL('../../controller/web/pages/', import.meta.url);
const TYPES = {
  html: 'text/html; charset=utf-8', css: 'text/css; charset=utf-8', js: 'text/javascript; charset=utf-8',
  svg: 'image/svg+xml', webmanifest: 'application/manifest+json',
};

const read = (name) => readFile(new URL(name, FOLDER));

describe('the files of the screens\' pages', () => {
  let house;
  let names;
  before(async () => {
    names = await readdir(FOLDER);
    house = await House.open();
  });
  after(() => house.close());

  test('are served as they are, with their type, and again only when they have changed', async () => {
    for (const name of names) {
      const response = await fetch(`${house.url}/assets/${name}`);
      assert.equal(response.status, 200, name);
      assert.equal(response.headers.get('Content-Type'), TYPES[name.split('.').pop()]);
      assert.deepEqual(Buffer.from(await response.arrayBuffer()), await read(name), name);
      const again = await fetch(`${house.url}/assets/${name}`, { headers: { 'If-None-Match': response.headers.get('ETag') } });
      assert.equal(again.status, 304, name);
    }
  });

  test('are no others', async () => {
    for (const name of ['', 'none.js', '../CMakeLists.txt', '%2e%2e%2fCMakeLists.txt', 'navigator.js%00', 'NAVIGATOR.JS']) {
      assert.equal((await fetch(`${house.url}/assets/${name}`)).status, 404, name);
    }
  });

  test('use no syntax newer than that of 2020', async () => {
    for (const name of names.filter((one) => one.endsWith('.js'))) {
      parse(String(await read(name)), { ecmaVersion: 2020, sourceType: 'module' });
    }
  });

  test('hold no inline script or style, and make no markup of texts', async () => {
    for (const name of names) {
      const text = String(await read(name));
      if (name.endsWith('.html')) assert.doesNotMatch(text, /<style|\sstyle=|\son\w+=|<script(?![^>]*\ssrc=)/, name);
      if (name.endsWith('.js')) assert.doesNotMatch(text, /innerHTML|outerHTML|insertAdjacentHTML|document\.write|DOMParser|\beval\(|new Function/, name);
    }
  });

  test('stand beside the bundle of the page, which names nothing of another host to be loaded', async () => {
    const page = await (await fetch(house.url)).text();
    const loaded = [...page.matchAll(/(?:src|href)="([^"]+)"/g)].map((match) => match[1]);
    assert.deepEqual(loaded.sort(), ['/assets/icon.svg', '/assets/page.css', '/assets/page.js']);
    assert.doesNotMatch(page, /<style|\sstyle=|<script(?![^>]*\ssrc=)/);
    for (const address of [...loaded, '/assets/kit-icons.svg']) {
      const response = await fetch(house.url + address);
      assert.equal(response.status, 200, address);
      assert.equal(response.headers.get('Content-Type'), TYPES[address.split('.').pop()], address);
    }
  });

  test('come under a policy that lets nothing else run', async () => {
    for (const path of ['/', '/navigator/11', '/assets/page.js', '/assets/navigator.js']) {
      const policy = (await fetch(house.url + path)).headers.get('Content-Security-Policy');
      for (const part of ["default-src 'none'", "script-src 'self'", "style-src 'self'", "base-uri 'none'", "frame-ancestors 'none'"]) {
        assert.ok(policy.includes(part), `${path}: ${part}`);
      }
      assert.doesNotMatch(policy, /unsafe/);
    }
  });
});
