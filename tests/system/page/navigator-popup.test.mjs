import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openNavigator } from '../harness/browser.mjs';
import { House, png } from '../harness/page-house.mjs';
import { hidden, message, ok, shown } from '../harness/navigator.mjs';

describe('a popup on the page of a navigator', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('shows markup as the text that it is', async () => {
    const page = await openNavigator(house, 11);
    const text = '<img src=x onerror="document.title=1"><script>document.title=2</script>&amp; <b>bold</b>';
    await house.pop({ text });
    await shown(page);
    assert.equal(await message(page).textContent(), text);
    assert.equal(await message(page).evaluate((node) => node.children.length), 0);
    assert.equal(await page.title(), 'Kitchen · Test house');
    await closePage(page);
  });

  test('shows a picture of the media folder', async () => {
    await house.request('PUT', '/api/media/dinner.png', png);
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Dinner', image: 'dinner.png' });
    await shown(page);
    await page.locator('#image').waitFor({ state: 'visible' });
    assert.match(await page.locator('#image').getAttribute('src'), /^blob:/);
    await closePage(page);
  });

  test('does not load a picture from another kind of address', async () => {
    const page = await openNavigator(house, 11);
    let isRefused = false;
    await house.pop({ text: 'Script', image: 'javascript:document.title=1' }).catch(() => {
      isRefused = true;
    });
    if (!isRefused) {
      await shown(page);
      assert.ok(await page.locator('#image').isHidden());
    }
    assert.equal(await page.title(), 'Kitchen · Test house');
    await closePage(page);
  });

  test('shows the text alone when its picture is missing', async () => {
    const page = await openNavigator(house, 11, { refusals: true });
    await house.pop({ text: 'Dinner is ready', image: 'missing.png' });
    await shown(page);
    assert.equal(await message(page).textContent(), 'Dinner is ready');
    assert.ok(await page.locator('#image').isHidden());
    await closePage(page);
  });

  for (const [name, width, height] of [
    ['a television', 1920, 1080],
    ['a tablet', 1024, 768],
    ['a phone', 360, 640],
    ['a phone on its side', 640, 300],
    ['a tiny screen', 320, 240],
  ]) {
    test(`keeps the button in reach under 10,000 characters on ${name}`, async () => {
      const page = await openNavigator(house, 11, { viewport: { width, height } });
      await house.pop({ text: 'Words and words. '.repeat(588).concat('The end.') });
      await shown(page);
      const box = await ok(page).boundingBox();
      assert.ok(
        box.x >= 0 && box.y >= 0 && box.x + box.width <= width && box.y + box.height <= height,
        JSON.stringify(box),
      );
      assert.ok(box.height >= 48 && box.width >= 48, 'large enough for a finger');
      await page.keyboard.press('End');
      await eventually(
        () =>
          page.evaluate(() => {
            const scroll = document.getElementById('scroll');
            return scroll.scrollTop > 0 && scroll.scrollTop + scroll.clientHeight >= scroll.scrollHeight - 2;
          }),
        'the end of the text is in sight',
      );
      assert.ok(
        await page.evaluate(() => document.documentElement.scrollWidth <= window.innerWidth),
        'nothing beside the screen',
      );
      await ok(page).click();
      await hidden(page);
      await closePage(page);
    });
  }

  test('shows short texts large, and long words whole', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Dinner is ready' });
    await shown(page);
    const size = await message(page).evaluate((node) => parseFloat(getComputedStyle(node).fontSize));
    assert.ok(size >= 80, `${size} px`);
    await closePage(page);
    const phone = await openNavigator(house, 12, { viewport: { width: 360, height: 640 } });
    await house.dismiss();
    await hidden(phone);
    await house.pop({ text: 'Geschirrspülmaschine' }, [12]);
    await shown(phone);
    const lines = await message(phone).evaluate(
      (node) => node.getBoundingClientRect().height / parseFloat(getComputedStyle(node).lineHeight),
    );
    assert.equal(Math.round(lines), 1);
    await closePage(phone);
  });

  test('reads texts from right to left that are written so', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'العشاء جاهز 🍲' });
    await shown(page);
    assert.equal(await message(page).evaluate((node) => getComputedStyle(node).direction), 'rtl');
    await closePage(page);
  });

  test('moves nothing for those who want no motion', async () => {
    const page = await openNavigator(house, 11, { reducedMotion: 'reduce' });
    await house.pop({ text: 'Quiet' });
    await shown(page);
    assert.equal(await page.evaluate(() => document.getAnimations().length), 0);
    await closePage(page);
  });

  for (const colorScheme of ['dark', 'light']) {
    test(`has texts of high contrast in ${colorScheme} colours`, async () => {
      const page = await openNavigator(house, 11, { colorScheme });
      await house.pop({ text: 'Dinner is ready' });
      await shown(page);
      const ratios = await page.evaluate(() => {
        const light = (color) => {
          const parts = color
            .match(/\d+/g)
            .slice(0, 3)
            .map((part) => part / 255)
            .map((part) => (part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4));
          return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
        };
        const ratio = (one, other) =>
          (Math.max(light(one), light(other)) + 0.05) / (Math.min(light(one), light(other)) + 0.05);
        const style = (id) => getComputedStyle(document.getElementById(id));
        return {
          message: ratio(style('message').color, style('dialog').backgroundColor),
          button: ratio(style('ok').color, style('ok').backgroundColor),
        };
      });
      assert.ok(ratios.message >= 7 && ratios.button >= 7, JSON.stringify(ratios));
      await closePage(page);
    });
  }
});
