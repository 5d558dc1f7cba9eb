import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, complaintsOfAxe, eventually, openPage } from '../harness/browser.mjs';
import { House, png } from '../harness/page-house.mjs';
import { ok, shown } from '../harness/navigator.mjs';

describe('the page of a screen that is not there', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('is a problem for programs, and leads people to those that are', async () => {
    const response = await fetch(`${house.url}/navigator/99`);
    assert.equal(response.status, 404);
    assert.equal(response.headers.get('Content-Type'), 'application/problem+json');
    const page = await openPage(house, '/navigator/99', { refusals: true });
    await page.getByRole('heading', { name: 'There is no screen 99 in this house' }).waitFor();
    assert.deepEqual(await complaintsOfAxe(page), []);
    await page.getByRole('link', { name: 'Bedroom screen (12)' }).waitFor();
    await page.getByRole('link', { name: 'Kitchen screen (11)' }).click();
    await page.locator('body.connected').waitFor();
    await page.goto(`${house.url}/nowhere`);
    await page.getByRole('heading', { name: 'There is nothing at this address' }).waitFor();
    await page.getByRole('link', { name: 'The announcements of the house' }).click();
    await page.getByRole('heading', { name: 'No announcements yet' }).waitFor();
    await closePage(page);
  });

  test('takes no address for markup', async () => {
    const headers = { Accept: 'text/html' };
    const text = await (await fetch(`${house.url}/navigator/"<script>&`, { headers })).text();
    assert.ok(!text.includes('<script'), text);
  });
});

describe('the page of a navigator in a house with tokens', () => {
  let house;
  beforeEach(async () => {
    house = await House.open({ tokens: ['admin', 'navigator:11'] });
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('asks for its token, and takes one that is entered', async () => {
    const page = await openPage(house, '/navigator/11', { refusals: true });
    const input = page.getByLabel(/needs a token/);
    await input.waitFor();
    await input.fill('wrong');
    await page.keyboard.press('Enter');
    await page.locator('#token-problem:not(:empty)').waitFor();
    await input.fill(house.tokens['navigator:11']);
    await page.keyboard.press('Enter');
    await page.locator('body.connected').waitFor();
    assert.ok(await input.isHidden());
    await closePage(page);
  });

  test('says that its token is that of another screen, how to make its own, and takes that', async () => {
    const page = await openPage(house, `/navigator/12#token=${house.tokens['navigator:11']}`, { refusals: true });
    await page.getByText('this token is for screen 11, and this is screen 12').waitFor();
    assert.equal(await page.getByText('Trying again').count(), 0);
    const command = await page.locator('#token-command').textContent();
    assert.equal(command, 'announcement-controller token add navigator-12 --right navigator:12 --house HOUSE.yaml');
    await page.getByLabel(/needs a token/).fill(house.tokens.admin);
    await page.keyboard.press('Enter');
    await page.locator('body.connected').waitFor();
    await closePage(page);
  });

  test('names the screens that there are to nobody without a token', async () => {
    const page = await openPage(house, '/navigator/99', { refusals: true });
    await page.getByRole('link', { name: 'Screen 11' }).waitFor();
    assert.equal(await page.getByText('Kitchen').count(), 0);
    await closePage(page);
  });

  test('takes the token from its address, removes it there, and confirms popups with it', async () => {
    const token = house.tokens['navigator:11'];
    const page = await openPage(house, `/navigator/11#token=${token}`);
    await page.locator('body.connected').waitFor();
    assert.equal(new URL(page.url()).hash, '');
    await house.request('PUT', '/api/media/dinner.png', png);
    await house.pop({ text: 'Dinner', image: 'dinner.png' }, [11]);
    await shown(page);
    await page.locator('#image').waitFor({ state: 'visible' });
    await ok(page).click();
    await eventually(async () => (await house.request('GET', '/api/status')).popups.length === 0, 'no popup stands');
    await closePage(page);
  });
});
