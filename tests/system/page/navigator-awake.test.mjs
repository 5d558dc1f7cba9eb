import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openNavigator, openPage } from '../harness/browser.mjs';
import { House } from '../harness/page-house.mjs';
import { hidden, shown } from '../harness/navigator.mjs';

describe('a screen that is to be seen', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  /** Opens the page with another wake lock in the place of the browser's. */
  async function openWith(wakeLock) {
    const page = await openPage(house, '/navigator/11');
    await page.addInitScript(wakeLock);
    await page.reload();
    await page.locator('body.connected').waitFor();
    return page;
  }

  test('holds a wake lock while its room is awake, and lets it go afterwards', async () => {
    const page = await openWith(() => {
      window.locks = [];
      const request = async (kind) => {
        const lock = {
          kind,
          isHeld: true,
          addEventListener() {},
          release: async () => {
            lock.isHeld = false;
          },
        };
        window.locks.push(lock);
        return lock;
      };
      Object.defineProperty(navigator, 'wakeLock', { value: { request } });
    });
    const locks = () => page.evaluate(() => window.locks.map(({ kind, isHeld }) => `${kind} ${isHeld}`).join());
    assert.equal(await locks(), '');
    await house.pop({ text: 'Good morning', timeout_ms: 2000 });
    await shown(page);
    await eventually(async () => (await locks()) === 'screen true', 'one lock is held');
    await hidden(page);
    await eventually(async () => (await locks()) === 'screen false', 'the lock is let go');
    await closePage(page);
  });

  test('shows the popup all the same when the browser refuses the wake lock', async () => {
    const page = await openWith(() => {
      const request = async () => {
        throw new DOMException('low battery', 'NotAllowedError');
      };
      Object.defineProperty(navigator, 'wakeLock', { value: { request } });
    });
    await house.pop({ text: 'Good morning' });
    await shown(page);
    await closePage(page);
  });

  test('plays an empty video where there is no wake lock, as long as it is awake', async () => {
    const page = await openWith(() => Object.defineProperty(navigator, 'wakeLock', { value: undefined }));
    const isPlaying = () => page.evaluate(() => [...document.querySelectorAll('video')].some((video) => !video.paused));
    assert.equal(await isPlaying(), false);
    await house.pop({ text: 'Good morning', timeout_ms: 2000 });
    await shown(page);
    await eventually(isPlaying, 'the video plays');
    await hidden(page);
    await eventually(async () => !(await isPlaying()), 'the video stands still');
    await closePage(page);
  });

  test('moves a long text on by itself, until somebody takes over', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Words and words. '.repeat(300) });
    await shown(page);
    const position = () => page.evaluate(() => document.getElementById('scroll').scrollTop);
    await eventually(async () => (await position()) > 20, 'the text has moved');
    await page.keyboard.press('Home');
    await page.evaluate(
      () =>
        new Promise((resolve) => {
          requestAnimationFrame(() => requestAnimationFrame(resolve));
        }),
    );
    assert.equal(await position(), 0);
    await closePage(page);
  });

  test('wakes with its room and goes back to rest', async () => {
    const page = await openNavigator(house, 11);
    await page.locator('body.resting').waitFor();
    await house.pop({ text: 'Good morning', timeout_ms: 1500 });
    await page.locator('body:not(.resting)').waitFor();
    await page.locator('body.resting').waitFor();
    await closePage(page);
  });
});
