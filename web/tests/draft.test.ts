import { describe, expect, it } from 'vitest';
import { blank, differences, errorOf, errorsIn, isImageAddress } from '../src/model/draft';

const names = { roomName: (id: number) => `Room ${id}`, screenName: (id: number) => `Screen ${id}` };

describe('a draft', () => {
  it('needs a name and times that are not negative', () => {
    const draft = blank();
    draft.audio.delay_ms = -1;
    draft.video.timeout_ms = Number.NaN;
    expect(Object.keys(errorsIn(draft))).toEqual(['name', 'audio.delay_ms', 'video.timeout_ms']);
    expect(errorsIn({ ...blank(), name: 'Dinner' })).toEqual({});
  });

  it('takes images of the media folder and of the web, and no other', () => {
    for (const good of ['dinner.png', 'a-b_c.JPEG', 'https://example.org/x', 'http://10.0.0.1/a.jpg'])
      expect(isImageAddress(good)).toBe(true);
    for (const bad of ['javascript:alert(1)', '../x.png', 'ftp://x/y.png', 'x.svg', 'https://', '.png'])
      expect(isImageAddress(bad)).toBe(false);
  });

  it('finds the field that a refusal is about', () => {
    expect(errorOf('audio.delay_ms: -5 is out of range')).toEqual({
      place: 'audio.delay_ms',
      text: '-5 is out of range',
    });
    expect(errorOf('rooms[1].volume: 300 is out of range')).toEqual({ place: 'rooms', text: '300 is out of range' });
    expect(errorOf('the agent is not running')).toBeNull();
  });

  it('differs from another one in words', () => {
    const mine = { ...blank(), name: 'Lunch', rooms: [{ id: 1, volume: 40 }] };
    const theirs = { ...blank(), name: 'Supper', navigators: [{ id: 5, room: 1, onscreen: true }] };
    expect(differences(mine, theirs, names)).toEqual([
      { field: 'Name', mine: 'Lunch', theirs: 'Supper' },
      { field: 'Rooms', mine: 'Room 1 (40 %)', theirs: 'nothing' },
      { field: 'Screens', mine: 'nothing', theirs: 'Screen 5' },
    ]);
  });
});
