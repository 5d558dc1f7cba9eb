import { describe, expect, it } from 'vitest';
import type { Moment, Rehearsal } from '../src/api/objects';
import { marksOf, pictureOf } from '../src/model/timeline';

const rehearsal = (length: number, timeline: Moment[]): Rehearsal => ({
  announcement: 1,
  length_ms: length,
  complete: true,
  timeline,
});

describe('the picture of a rehearsal', () => {
  it('has set-up, delay, sound and restore for each room, and the popup for each screen', () => {
    const picture = pictureOf(
      rehearsal(5000, [
        { at_ms: 0, what: 'screens_woken', room: 12 },
        { at_ms: 200, what: 'room_set_up', room: 12 },
        { at_ms: 500, what: 'volume_set', room: 12, volume: 40 },
        { at_ms: 500, what: 'sound_started', file: 'chime' },
        { at_ms: 1000, what: 'popup_shown', navigator: 5, message: 'Dinner' },
        { at_ms: 1500, what: 'sound_ended' },
        { at_ms: 3500, what: 'room_restored', room: 12 },
        { at_ms: 4000, what: 'popup_hidden', navigator: 5 },
        { at_ms: 4500, what: 'screens_rested', room: 12 },
      ]),
      () => 12,
    );
    expect(picture).toEqual({
      length: 5000,
      rows: [
        {
          kind: 'room',
          id: 12,
          volume: 40,
          bars: [
            { kind: 'setup', start: 0, end: 200, text: '' },
            { kind: 'delay', start: 200, end: 500, text: '' },
            { kind: 'sound', start: 500, end: 1500, text: 'chime' },
            { kind: 'restore', start: 1500, end: 3500, text: '' },
          ],
        },
        {
          kind: 'screen',
          id: 5,
          volume: null,
          bars: [
            { kind: 'delay', start: 0, end: 1000, text: '' },
            { kind: 'popup', start: 1000, end: 4000, text: 'Dinner' },
            { kind: 'restore', start: 4000, end: 4500, text: '' },
          ],
        },
      ],
    });
  });

  it('has silence where a sound is missing, and what stands around it in its place', () => {
    const { rows } = pictureOf(
      rehearsal(4000, [
        { at_ms: 0, what: 'room_missing', room: 99 },
        { at_ms: 20, what: 'room_set_up', room: 12 },
        { at_ms: 1020, what: 'sound_missing', file: 'gone', text: 'why' },
        { at_ms: 3020, what: 'room_restored', room: 12 },
      ]),
      () => 0,
    );
    expect(rows.map(({ id, bars }) => [id, bars.map(({ kind, start, end }) => [kind, start, end])])).toEqual([
      [
        12,
        [
          ['setup', 0, 20],
          ['delay', 20, 1020],
          ['restore', 1020, 3020],
        ],
      ],
    ]);
  });

  it('goes on to the end for what never ends', () => {
    const { rows } = pictureOf(
      rehearsal(600000, [{ at_ms: 0, what: 'popup_shown', navigator: 5, message: '' }]),
      () => 0,
    );
    expect(rows[0]?.bars).toEqual([{ kind: 'popup', start: 0, end: 600000, text: '' }]);
  });

  it('has no rows when nothing would be heard or seen', () => {
    expect(pictureOf(rehearsal(0, [{ at_ms: 0, what: 'started' }]), () => 0)).toEqual({ length: 1000, rows: [] });
  });

  it('has a handful of marks, whatever its length', () => {
    expect(marksOf(6000)).toEqual([0, 2000, 4000, 6000]);
    for (const length of [1000, 8020, 61000, 600000]) expect(marksOf(length).length).toBeLessThanOrEqual(6);
  });
});
