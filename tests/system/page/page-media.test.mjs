import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp, toast } from '../harness/browser.mjs';
import { House, png, wav } from '../harness/page-house.mjs';

describe('sounds and images', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  const file = (name, buffer) => ({ name, mimeType: '', buffer });
  const names = async () => (await house.request('GET', '/api/media')).media.map((one) => one.name);

  test('are taken, and refused kindly when they cannot be', async () => {
    const page = await openApp(house, '#/media', { refusals: true });
    await page.getByText('No sounds and no images yet').waitFor();
    await page
      .locator('media-drop input')
      .setInputFiles([
        file('Büro Gong (2).WAV', wav(1500)),
        file('dinner.png', png),
        file('no sound.wav', Buffer.from('hello')),
        file('list.pdf', Buffer.from('%PDF')),
      ]);
    await page.locator('media-card', { hasText: 'Buro-Gong-2.wav' }).getByText('1.5 s').waitFor();
    const image = page.locator('media-card', { hasText: 'dinner.png' });
    await image.getByText('1 × 1 · ').waitFor();
    await image.locator('media-image img').waitFor(); // its thumbnail
    await eventually(async () => (await page.locator('media-drop .refused').count()) === 2, 'two refusals');
    assert.deepEqual(await page.locator('media-drop .refused strong').allTextContents(), ['no sound.wav', 'list.pdf']);
    assert.deepEqual(await names(), ['Buro-Gong-2.wav', 'dinner.png']);
    await closePage(page);
  });

  test('come and go as others bring and delete them, in the editor too', async () => {
    const page = await openApp(house, '#/media');
    const editor = await openApp(house, '#/announcements/new');
    const sound = editor.locator('draft-sound option', { hasText: 'chime, 0.3 s' });
    await page.getByText('No sounds and no images yet').waitFor();
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    await page.locator('media-card', { hasText: 'chime.wav' }).getByText('0.3 s').waitFor();
    await sound.waitFor({ state: 'attached' });
    await house.request('PUT', '/api/media/chime.wav', wav(700));
    await page.locator('media-card', { hasText: 'chime.wav' }).getByText('0.7 s').waitFor();
    await house.request('DELETE', '/api/media/chime.wav');
    await page.getByText('No sounds and no images yet').waitFor();
    await sound.waitFor({ state: 'detached' });
    await closePage(editor);
    await closePage(page);
  });

  test('are deleted after a question', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    const page = await openApp(house, '#/media');
    await page.getByRole('button', { name: 'Delete chime.wav' }).click();
    await page.locator('sl-dialog').getByRole('button', { name: 'Cancel' }).click();
    await page.locator('sl-dialog').waitFor({ state: 'detached' });
    assert.deepEqual(await names(), ['chime.wav']);
    await page.getByRole('button', { name: 'Delete chime.wav' }).click();
    await page.locator('sl-dialog').getByRole('button', { name: 'Delete', exact: true }).click();
    await toast(page, '“chime.wav” is deleted');
    await page.locator('media-card').waitFor({ state: 'detached' });
    assert.deepEqual(await names(), []);
    await closePage(page);
  });

  test('say who uses them, and are not deleted while they are used', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    await house.add({ name: 'Dinner', audio: { file: 'chime' } });
    const page = await openApp(house, '#/media');
    await page.getByText('Used by Dinner').waitFor();
    await page.getByRole('button', { name: 'Delete chime.wav' }).click();
    await page.getByRole('dialog', { name: '“chime.wav” is in use' }).waitFor();
    await page.locator('sl-dialog').getByRole('link', { name: 'Dinner' }).click();
    await page.getByRole('heading', { name: 'Edit announcement' }).waitFor();
    assert.deepEqual(await names(), ['chime.wav']);
    await closePage(page);
  });

  test('are taken when they are dropped, drawn, and played here', async () => {
    const page = await openApp(house, '#/media');
    const data = await page.evaluateHandle(
      (content) => {
        const transfer = new DataTransfer();
        transfer.items.add(new File([new Uint8Array(content)], 'ding.wav', { type: 'audio/wav' }));
        return transfer;
      },
      [...wav(400)],
    );
    await page.dispatchEvent('media-drop .drop', 'drop', { dataTransfer: data });
    await page.getByRole('img', { name: 'ding.wav: how loud it is over its 0.4 s' }).waitFor();
    await eventually(async () => (await page.locator('sound-wave rect').count()) > 10, 'its picture is drawn');
    await page.getByRole('button', { name: 'Listen to ding.wav' }).click();
    await page.getByRole('button', { name: 'Listen to ding.wav' }).waitFor(); // at its end, again
    await closePage(page);
  });

  test('longer than 20 s are cut to the part between two handles, by pointer and by keyboard', async () => {
    const page = await openApp(house, '#/media');
    await page.locator('media-drop input').setInputFiles([file('Long song.wav', wav(40000))]);
    await page.getByRole('dialog', { name: 'Which part of “Long song.wav”?' }).waitFor();
    const dialog = page.locator('sl-dialog');
    await dialog.getByText('20 s of 40 s').waitFor();
    await dialog.getByRole('slider', { name: 'Begin' }).press('PageUp');
    await dialog.getByText('0:01.0 – 0:20.0').waitFor();
    const picture = await dialog.locator('sound-trimmer svg').first().boundingBox();
    const middle = picture.y + picture.height / 2;
    await page.mouse.move(picture.x + picture.width / 4, middle);
    await page.mouse.down();
    await page.mouse.move(picture.x + picture.width, middle);
    await page.mouse.up();
    await dialog.getByText('0:21.0 – 0:40.0').waitFor();
    await dialog.getByRole('slider', { name: 'End' }).press('ArrowLeft');
    await dialog.getByRole('button', { name: 'Keep this part' }).click();
    await page.locator('media-card', { hasText: 'Long-song.wav' }).getByText('19 s').waitFor();
    const [{ duration_ms: length, sample_rate: rate }] = (await house.request('GET', '/api/media')).media;
    assert.deepEqual([length, rate], [18900, 48000]);
    await closePage(page);
  });

  test('are recorded here, seen and heard before they are kept', async () => {
    const page = await openApp(house, '#/media', { permissions: ['microphone'] });
    await page.getByRole('button', { name: 'Record' }).click();
    const recorder = page.locator('sound-recorder');
    await recorder.getByRole('button', { name: 'Record' }).click();
    const loudest = async () => Number(await recorder.getByRole('meter').getAttribute('aria-valuenow'));
    await eventually(async () => (await loudest()) > 50, 'the microphone is heard');
    await recorder.getByRole('button', { name: 'Stop' }).click();
    await recorder.getByRole('button', { name: 'Listen' }).click();
    await recorder.getByRole('button', { name: 'Stop' }).waitFor();
    await recorder.getByRole('button', { name: 'Listen' }).waitFor(); // at its end, again
    await page.getByLabel('Name', { exact: true }).fill('Coming home');
    await page.getByRole('button', { name: 'Keep' }).click();
    await toast(page, '“Coming-home.wav” is in the media folder');
    assert.deepEqual(await names(), ['Coming-home.wav']);
    await closePage(page);
  });

  test('are not recorded where the browser lends no microphone, and it says how to get there', async () => {
    const page = await openApp(house, '#/media');
    await page.addInitScript(() => Object.defineProperty(window, 'isSecureContext', { value: false }));
    await page.reload();
    await page.getByRole('button', { name: 'Record' }).click();
    await page.locator('sound-recorder').getByText('give the controller a certificate', { exact: false }).waitFor();
    assert.equal(await page.locator('sound-recorder sl-button').count(), 0);
    await closePage(page);
  });

  test('are spoken from a text, which is refused where it is typed when it is too long, and changed later', async () => {
    const page = await openApp(house, '#/media', { refusals: true });
    await page.getByRole('button', { name: 'Spoken sound' }).click();
    const maker = page.locator('new-speech');
    await maker.getByLabel('Name').fill('The post');
    await maker.getByLabel('What is said').fill('one two three '.repeat(100));
    await maker.getByRole('button', { name: 'Save', exact: true }).click();
    await maker.getByText('a sound lasts 20').waitFor();
    await maker.getByLabel('What is said').fill('The post is here, ');
    await maker.getByRole('button', { name: '{Outside}' }).click();
    await maker.getByRole('button', { name: 'Save', exact: true }).click();
    const card = page.locator('media-card', { hasText: 'The-post.wav' });
    await card.getByText('“The post is here, {Outside}”').waitFor();
    await card.getByRole('button', { name: 'Change what The-post.wav says' }).click();
    await maker.getByLabel('What is said').fill('No post today');
    await maker.getByRole('button', { name: 'Save and listen' }).click();
    await card.getByText('“No post today”').waitFor();
    const [{ speech }] = (await house.request('GET', '/api/media')).media;
    assert.deepEqual(speech, { text: 'No post today', voice: '', speed: 100, chime: '' });
    await closePage(page);
  });
});
