import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp, openNavigator, toast } from '../harness/browser.mjs';
import { House, png, wav } from '../harness/page-house.mjs';

describe('the editor', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  const everything = async () => (await house.request('GET', '/api/announcements')).announcements;
  const name = (page) => page.getByLabel('Name', { exact: true });
  const unfold = (page) => page.locator('draft-timing summary').click();
  const save = (page) => page.getByRole('button', { name: 'Save', exact: true }).click();

  test('makes an announcement with all its fields', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    await house.request('PUT', '/api/media/dinner.png', png);
    const page = await openApp(house, '#/announcements/new');
    await name(page).fill('Dinner');
    await page.getByLabel('Which sound').selectOption('chime');
    await unfold(page);
    await page.getByLabel('Wait before the sound').fill('0.5');
    await page.getByLabel('Text', { exact: true }).fill('Dinner is ready 🍝\n<b>Come!</b>');
    await page.getByLabel('Image', { exact: true }).selectOption('dinner.png');
    await page.getByLabel('Show the message for').fill('7');
    await page.getByLabel('Wait before the message').fill('1.5');
    await page.getByRole('switch', { name: /OK button/ }).press('Space');
    await page.getByRole('switch', { name: 'Kitchen', exact: true }).press('Space');
    await page.getByLabel('Tags').fill('meals, evening');
    await page.getByRole('switch', { name: 'Keep the room’s volume: Kitchen' }).press('Space');
    await page.getByLabel('Volume in Kitchen: 40 %').fill('55');
    await page.getByRole('switch', { name: 'Bedroom', exact: true }).press('Space');
    await page.getByRole('switch', { name: 'Bedroom screen' }).press('Space');
    await save(page);
    await toast(page, '“Dinner” is saved');
    assert.deepEqual(await everything(), [
      {
        id: 1,
        name: 'Dinner',
        audio: { file: 'chime', delay_ms: 500 },
        video: {
          image: 'dinner.png',
          text: 'Dinner is ready 🍝\n<b>Come!</b>',
          delay_ms: 1500,
          timeout_ms: 7000,
          ok_button: false,
          variable: null,
        },
        rooms: [
          { id: 1, volume: 55 },
          { id: 2, volume: -1 },
        ],
        navigators: [{ id: 12, room: 2, onscreen: true }],
        tags: ['meals', 'evening'],
      },
    ]);
    await page.getByRole('heading', { name: 'Dinner' }).waitFor();
    await closePage(page);
  });

  test('changes an announcement and leaves alone what it was not asked to change', async () => {
    const stored = await house.add({
      name: 'Old',
      audio: { file: 'gone', delay_ms: 250 },
      video: { text: 'Old text', variable: { device: 77, variable: 3, name: 'elsewhere' }, timeout_ms: 4000 },
      rooms: [
        { id: 1, volume: 20 },
        { id: 99, volume: 30 },
      ],
      navigators: [{ id: 98, room: 5, onscreen: false }],
      tags: ['favourite'],
    });
    const page = await openApp(house);
    await page.getByRole('link', { name: 'Edit Old' }).click();
    await eventually(async () => (await name(page).inputValue()) === 'Old', 'it is read');
    await name(page).fill('New');
    await save(page);
    await toast(page, '“New” is saved');
    assert.deepEqual(await everything(), [{ ...stored, name: 'New' }]);
    await closePage(page);
  });

  test('is saved by its button, and not by a key in a field', async () => {
    const page = await openApp(house, '#/announcements/new');
    await name(page).fill('Half');
    await name(page).press('Enter');
    await unfold(page);
    await page.getByLabel('Wait before the sound').press('Enter');
    await page.getByLabel('Text', { exact: true }).fill('Whole');
    await save(page);
    await toast(page, '“Half” is saved');
    assert.deepEqual(
      (await everything()).map((one) => [one.name, one.video.text]),
      [['Half', 'Whole']],
    );
    await closePage(page);
  });

  test('lets the message follow a value', async () => {
    const page = await openApp(house, '#/announcements/new');
    await name(page).fill('Outside');
    await page.getByLabel('What the message says').selectOption('Outside');
    await page.frameLocator('popup-preview iframe').getByText('21 °C').waitFor();
    await house.request('PUT', '/api/variables/9/4', { value: '5 °C' });
    await page.frameLocator('popup-preview iframe').getByText('5 °C').waitFor();
    await save(page);
    await toast(page, '“Outside” is saved');
    assert.deepEqual((await everything())[0].video.variable, { device: 9, variable: 4, name: 'Outside' });
    await closePage(page);
  });

  test('says at the field what is wrong', async () => {
    const page = await openApp(house, '#/announcements/new');
    await unfold(page);
    await page.getByLabel('Wait before the sound').fill('-5');
    await page.locator('draft-timing summary').click();
    await page.getByLabel('Or an image from the web').fill('ftp://somewhere');
    await save(page);
    await page.getByText('Give it a name, so that you find it in the list.').waitFor();
    assert.equal(await page.locator('draft-timing details[open]').count(), 0);
    await page.getByText('An address that begins with http:// or https://').waitFor();
    const focused = await page.evaluate(() => {
      let one = document.activeElement;
      while (one.shadowRoot?.activeElement) one = one.shadowRoot.activeElement;
      return one.placeholder;
    });
    assert.equal(focused, 'Dinner');
    await name(page).fill('Now it has one');
    await page.getByText('Give it a name').waitFor({ state: 'detached' });
    await page.getByLabel('Or an image from the web').fill('');
    await save(page);
    await page.locator('draft-timing details[open]').getByText('A number of seconds, 0 or more.').waitFor();
    assert.deepEqual(await everything(), []);
    await closePage(page);
  });

  test('says at the field what the controller refuses', async () => {
    const page = await openApp(house, '#/announcements/new', { refusals: true });
    await name(page).fill('Endless');
    await page.getByLabel('Text', { exact: true }).fill('w'.repeat(70000));
    await save(page);
    await page.locator('draft-message sl-textarea.invalid').waitFor();
    assert.deepEqual(await everything(), []);
    await closePage(page);
  });

  test('shows what will happen while it is edited', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(1000));
    const page = await openApp(house, '#/announcements/new');
    const bars = (kind) => page.locator(`announcement-outlook [data-kind="${kind}"] title`);
    await page.getByText('Nothing would happen').waitFor();
    await page.getByLabel('Which sound').selectOption('chime');
    await page.getByRole('switch', { name: 'Kitchen', exact: true }).press('Space');
    await bars('sound').waitFor({ state: 'attached' });
    assert.deepEqual(await bars('sound').allTextContents(), ['Sound: 1 s to 2 s']);
    await unfold(page);
    await page.getByLabel('Wait before the sound').fill('3');
    await eventually(
      async () => (await bars('sound').allTextContents()).join() === 'Sound: 3 s to 4 s',
      'the sound comes later',
    );
    await page.getByLabel('Text', { exact: true }).fill('Hello');
    await page.getByRole('switch', { name: 'Kitchen screen' }).press('Space');
    await bars('popup').waitFor({ state: 'attached' });
    await page.frameLocator('popup-preview iframe').getByText('Hello').waitFor();
    assert.deepEqual(await everything(), []);
    await closePage(page);
  });

  test('shows a message exactly as a screen of that size and colour does, short or long', async () => {
    const page = await openApp(house, '#/announcements/new', { colorScheme: null }); // which a frame chooses itself
    await page.getByLabel('Name', { exact: true }).fill('Dinner');
    const lookOf = (place) =>
      place.locator('#dialog').evaluate((dialog) => {
        const message = dialog.querySelector('#message');
        const { color, fontSize } = getComputedStyle(message);
        const { left, top, width, height } = message.getBoundingClientRect();
        return [color, fontSize, dialog.className, Math.round(left), Math.round(top), Math.round(width), height];
      });
    const screens = [
      ['tablet', 'dark', 1280, 800],
      ['phone', 'light', 390, 844],
    ];
    for (const [size, colorScheme, width, height] of screens) {
      const screen = await openNavigator(house, 11, {
        viewport: { width, height },
        colorScheme,
        reducedMotion: 'reduce',
      });
      await page.getByLabel('On which screen').selectOption(size);
      await page.getByLabel('In which colours').selectOption(colorScheme);
      for (const text of ['Dinner is ready', 'A long tale, told at length. '.repeat(25)]) {
        await page.getByLabel('Text', { exact: true }).fill(text);
        await house.pop({ text, timeout_ms: 10000 }, [11]);
        await screen.locator('#message', { hasText: text.trim() }).waitFor();
        const meant = await lookOf(screen);
        const frame = page.frameLocator('popup-preview iframe');
        await eventually(async () => `${await lookOf(frame)}` === `${meant}`, `the preview looks as ${meant}`);
        await house.dismiss();
        await screen.locator('#popup').waitFor({ state: 'hidden' });
      }
      await closePage(screen);
    }
    await closePage(page);
  });

  test('shows the message first as large as its own screen is, while that is open', async () => {
    const sizes = async () => (await house.request('GET', '/api/navigators')).navigators.map(({ size }) => size);
    assert.deepEqual(await sizes(), [null, null]);
    const screen = await openNavigator(house, 12, { viewport: { width: 900, height: 600 } });
    await eventually(async () => (await sizes())[1]?.width === 900, 'the screen tells its size');
    const { id } = await house.add({ name: 'Dinner', video: { text: 'Hello' }, navigators: [{ id: 12, room: 2 }] });
    const page = await openApp(house, `#/announcements/${id}`);
    const choice = page.getByLabel('On which screen');
    const chosen = () => choice.evaluate((one) => one.selectedOptions[0].textContent.trim());
    await choice.getByText('Bedroom screen, 900 × 600').waitFor({ state: 'attached' });
    assert.equal(await chosen(), 'Bedroom screen, 900 × 600');
    await screen.setViewportSize({ width: 600, height: 900 });
    await eventually(async () => (await chosen()) === 'Bedroom screen, 600 × 900', 'it is turned in the preview too');
    assert.equal(await page.locator('popup-preview iframe').getAttribute('width'), '600');
    assert.deepEqual(await sizes(), [null, { width: 600, height: 900 }]);
    await closePage(screen);
    await eventually(async () => (await chosen()) === 'Tablet', 'a screen that is gone has no size');
    assert.deepEqual(await sizes(), [null, null]);
    await closePage(page);
  });

  test('asks before it forgets what was not saved', async () => {
    const page = await openApp(house, '#/announcements/new');
    await name(page).fill('Half done');
    await page.getByRole('link', { name: 'House' }).click();
    await page.getByRole('dialog', { name: 'Save what you have changed?' }).waitFor();
    await page.locator('sl-dialog').getByRole('button', { name: 'Cancel' }).click();
    await page.locator('sl-dialog').waitFor({ state: 'detached' });
    assert.equal(await name(page).inputValue(), 'Half done');
    await page.getByRole('link', { name: 'House' }).click();
    await page.getByRole('button', { name: 'Leave without saving' }).click();
    await page.getByRole('heading', { name: 'House', exact: true }).waitFor();
    assert.deepEqual(await everything(), []);
    await page.goBack();
    await name(page).fill('Whole');
    await page.getByRole('link', { name: 'House' }).click();
    await page.locator('sl-dialog').getByRole('button', { name: 'Save', exact: true }).click();
    await page.getByRole('heading', { name: 'House', exact: true }).waitFor();
    assert.deepEqual(
      (await everything()).map((one) => one.name),
      ['Whole'],
    );
    await closePage(page);
  });

  test('plays what it has saved, and tries what it has not in one room, of which nothing stays behind', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    const page = await openApp(house, '#/announcements/new');
    const watcher = await house.watch();
    await page.getByText('It would do nothing').waitFor();
    await page.getByLabel('Text', { exact: true }).fill('Hello');
    await page.getByLabel('Which sound').selectOption('chime');
    for (const place of ['Kitchen', 'Bedroom', 'Kitchen screen', 'Bedroom screen'])
      await page.getByRole('switch', { name: place, exact: true }).press('Space');
    await page.getByText('It would do nothing').waitFor({ state: 'detached' });
    await page.getByRole('button', { name: /^Try in Bedroom only/ }).click();
    const shown = await watcher.until('popup_shown');
    assert.deepEqual([shown.navigator, shown.popup.message], [12, 'Hello']);
    await house.dismiss();
    await watcher.until('announcement_ended');
    const [tried] = (await house.request('GET', '/api/history')).history;
    assert.deepEqual([tried.name, tried.rooms, tried.navigators], ['New announcement', [2], [12]]);
    assert.deepEqual(await everything(), []);
    await name(page).fill('Greeting');
    await page.getByRole('button', { name: 'Save and play' }).click();
    await watcher.until('popup_shown', ({ navigator }) => navigator === 11);
    await page.locator('announcement-row', { hasText: 'Greeting' }).waitFor();
    await house.dismiss();
    await closePage(page);
  });

  test('saves as a new one what somebody else has deleted meanwhile', async () => {
    const { id } = await house.add({ name: 'Dinner', video: { text: 'Ready' } });
    const page = await openApp(house, `#/announcements/${id}`, { refusals: true });
    await name(page).fill('Supper');
    await house.request('DELETE', `/api/announcements/${id}`);
    await save(page);
    await page.getByRole('dialog', { name: 'Somebody has deleted it meanwhile' }).waitFor();
    await page.getByRole('button', { name: 'Save as new' }).click();
    await toast(page, '“Supper” is saved');
    const [kept, ...others] = await everything();
    assert.deepEqual([kept.name, kept.video.text, others], ['Supper', 'Ready', []]);
    await closePage(page);
  });

  test('tells the later one of two editors, who can overwrite or take over', async () => {
    const { id } = await house.add({ name: 'Dinner', video: { text: 'Ready' } });
    const address = `#/announcements/${id}`;
    const [one, other] = [await openApp(house, address), await openApp(house, address, { refusals: true })];
    await name(one).fill('Supper');
    await name(other).fill('Lunch');
    await save(one);
    await toast(one, '“Supper” is saved');
    await save(other);
    await other.getByRole('dialog', { name: 'Somebody else has changed it' }).waitFor();
    const dialog = other.locator('sl-dialog');
    await dialog.getByRole('row', { name: 'Name Lunch Supper' }).waitFor();
    await dialog.getByRole('button', { name: 'Cancel' }).click();
    await dialog.waitFor({ state: 'detached' });
    assert.equal(await name(other).inputValue(), 'Lunch');
    assert.equal((await everything())[0].name, 'Supper');
    await save(other);
    await dialog.getByRole('button', { name: 'Take theirs' }).click();
    await eventually(async () => (await name(other).inputValue()) === 'Supper', 'theirs is shown');
    await house.request('PUT', `/api/announcements/${id}`, { name: 'Brunch' });
    await name(other).fill('Lunch');
    await save(other);
    await dialog.getByRole('button', { name: 'Save mine' }).click();
    await toast(other, '“Lunch” is saved');
    assert.equal((await everything())[0].name, 'Lunch');
    await other.getByRole('link', { name: 'Edit Lunch' }).click();
    await eventually(async () => (await name(other).inputValue()) === 'Lunch', 'it is read');
    await house.request('PUT', `/api/announcements/${id}`, { name: 'Lunch', video: { text: 'Come' } });
    await name(other).fill('Late lunch');
    await save(other);
    await dialog.getByRole('button', { name: 'Save both together' }).click();
    await toast(other, '“Late lunch” is saved');
    const [both] = await everything();
    assert.deepEqual([both.name, both.video.text], ['Late lunch', 'Come']);
    await closePage(one);
    await closePage(other);
  });
});
