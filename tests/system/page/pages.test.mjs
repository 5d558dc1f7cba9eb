import assert from 'node:assert/strict';
import { after, before, describe, test } from 'node:test';
import { brotliDecompressSync, gunzipSync } from 'node:zlib';
import { request } from 'node:http';
import { parse } from 'acorn';
import { House } from '../harness/page-house.mjs';

const TYPES = {
  html: 'text/html; charset=utf-8',
  css: 'text/css; charset=utf-8',
  js: 'text/javascript; charset=utf-8',
  svg: 'image/svg+xml',
  webmanifest: 'application/manifest+json',
};
const PAGES = ['/', '/navigator/11'];
const DECODERS = { identity: (bytes) => bytes, gzip: gunzipSync, br: brotliDecompressSync };

const typeOf = (path) => TYPES[path.includes('.') ? path.split('.').pop() : 'html'];

/** The reply as it comes over the wire: `fetch` would decode it. */
function get(house, path, headers = {}) {
  return new Promise((resolve, reject) => {
    request(house.url + path, { headers }, (reply) => {
      const parts = [];
      reply.on('data', (part) => parts.push(part));
      reply.on('end', () => resolve({ status: reply.statusCode, headers: reply.headers, body: Buffer.concat(parts) }));
    })
      .on('error', reject)
      .end();
  });
}

const textOf = async (house, path) => String((await get(house, path)).body);

const addressesIn = (text) => [...text.matchAll(/(?:src|href)="([^"]+)"/g)].map((match) => match[1]);

describe('the pages', () => {
  let house;
  let files; // the addresses of all that the pages load
  before(async () => {
    house = await House.open();
    const loaded = await Promise.all(PAGES.map(async (page) => addressesIn(await textOf(house, page))));
    files = [...new Set(loaded.flat())];
  });
  after(() => house.close());

  test('load their own script and style, icon and manifest, and name nothing of another host', async () => {
    const named = files.map((path) => path.replace(/-[0-9a-f]{16}\./, '-HASH.'));
    assert.deepEqual(named.sort(), [
      '/assets/icon.svg',
      '/assets/navigator-HASH.css',
      '/assets/navigator-HASH.js',
      '/assets/navigator.webmanifest',
      '/assets/page-HASH.css',
      '/assets/page-HASH.js',
    ]);
  });

  test('and their files are served with their type', async () => {
    for (const path of [...PAGES, ...files]) {
      const { status, headers } = await get(house, path);
      assert.equal(status, 200, path);
      assert.equal(headers['content-type'], typeOf(path), path);
    }
  });

  test('are compressed as the browser asks for it, and are the same then', async () => {
    for (const path of [...PAGES, ...files.filter((one) => /\.(js|css)$/.test(one))]) {
      const plain = await get(house, path);
      assert.equal(plain.headers['content-encoding'], undefined, path);
      for (const [coding, decode] of Object.entries(DECODERS)) {
        const coded = await get(house, path, { 'Accept-Encoding': coding });
        assert.equal(coded.headers['content-encoding'] ?? 'identity', coding, path);
        assert.equal(coded.headers.vary, 'Accept-Encoding', path);
        assert.deepEqual(decode(coded.body), plain.body, `${path} ${coding}`);
        assert.ok(coding === 'identity' || coded.body.length < 0.6 * plain.body.length, `${path} ${coding}`);
      }
    }
  });

  test('are sent again only when they have changed', async () => {
    for (const path of [...PAGES, ...files]) {
      for (const coding of Object.keys(DECODERS)) {
        const asked = { 'Accept-Encoding': coding };
        const { etag } = (await get(house, path, asked)).headers;
        const again = await get(house, path, { ...asked, 'If-None-Match': `"other", ${etag}` });
        assert.equal(again.status, 304, `${path} ${coding}`);
        assert.equal(again.body.length, 0);
        assert.equal(again.headers.etag, etag);
      }
    }
  });

  test('are asked for each time, and their scripts and styles are kept for ever', async () => {
    for (const path of [...PAGES, ...files]) {
      const isHashed = /-[0-9a-f]{16}\./.test(path);
      const expected = isHashed ? 'public, max-age=31536000, immutable' : 'no-cache';
      assert.equal((await get(house, path)).headers['cache-control'], expected, path);
    }
  });

  test('have no files but these', async () => {
    const script = files.find((path) => path.endsWith('.js')).slice('/assets/'.length);
    const names = ['', 'none.js', '../Assets.cpp', '%2e%2e%2fAssets.cpp', `${script}%00`, script.toUpperCase()];
    for (const name of names) assert.equal((await fetch(`${house.url}/assets/${name}`)).status, 404, name);
  });

  test("a screen's script uses no syntax newer than that of 2017, which tablets of 2013 know", async () => {
    const [path] = files.filter((one) => /navigator-.*\.js$/.test(one));
    parse(await textOf(house, path), { ecmaVersion: 2017, sourceType: 'module' });
  });

  test('hold no inline script or style', async () => {
    for (const page of PAGES) {
      assert.doesNotMatch(await textOf(house, page), /<style|\sstyle=|\son\w+=|<script(?![^>]*\ssrc=)/, page);
    }
  });

  test("a screen's script makes no markup of texts", async () => {
    const [path] = files.filter((one) => /navigator-.*\.js$/.test(one));
    const markup = /innerHTML|outerHTML|insertAdjacentHTML|document\.write|DOMParser|\beval\(|new Function/;
    assert.doesNotMatch(await textOf(house, path), markup);
  });

  test('come under a policy that lets nothing else run', async () => {
    for (const path of [...PAGES, ...files]) {
      const policy = (await get(house, path)).headers['content-security-policy'];
      for (const part of [
        "default-src 'none'",
        "script-src 'self'",
        "style-src 'self'",
        "base-uri 'none'",
        "frame-ancestors 'none'",
      ]) {
        assert.ok(policy.includes(part), `${path}: ${part}`);
      }
      assert.doesNotMatch(policy, /unsafe/);
    }
  });
});
