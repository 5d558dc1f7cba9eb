import { beforeAll, describe, expect, it, vi } from 'vitest';
import type { HouseEvent } from '../src/api/events';
import type { WholeState } from '../src/api/objects';
import { blank } from '../src/model/draft';
import { Store } from '../src/store/Store';

beforeAll(() => {
  vi.stubGlobal('window', { setTimeout: () => 1 });
});

const state: WholeState = {
  status: {
    house: 'Home',
    version: '1',
    started: '',
    agent: true,
    playing: null,
    queue: [],
    waiting: [2],
    sound: null,
    popups: [],
    state_saved: true,
    state_error: null,
    events: 1,
    known_from: { playing: '', waiting: '', sound: '' },
  },
  announcements: [
    { ...blank(), id: 1, name: 'One' },
    { ...blank(), id: 2, name: 'Two' },
  ],
  rooms: [
    {
      id: 7,
      name: 'Kitchen',
      output: 'auto',
      volume: 30,
      max_volume: 100,
      lead_silence_ms: 0,
      answers: true,
      health: 'healthy',
      in_announcement: false,
      awake: false,
      trouble: null,
    },
  ],
  navigators: [{ id: 5, name: 'Tablet', room: 7, pages: 0, awake: false, popup: null, size: null, armed: null }],
  variables: [{ device: 9, variable: 4, name: 'Outside', value: 'x' }],
};
const popup = { number: 3, message: 'Hi', image: '', ok_button: true, remaining_ms: 1000, ends: '' };

function storeAfter(...events: [string, object][]): Store {
  const store = new Store();
  const all: [string, object][] = [['state', state], ...events];
  all.forEach(([type, data], index) =>
    store.apply({ seq: index, time: '2026-03-01T00:00:00Z', type, data } as HouseEvent),
  );
  return store;
}

describe('the store', () => {
  it('takes over the state, and nothing of what it held before', () => {
    const store = storeAfter(
      ['announcement_stored', { announcement: 3, now: { ...blank(), id: 3, name: 'Three' } }],
      ['state', state],
    );
    expect([...store.announcements.keys()]).toEqual([1, 2]);
  });

  it('knows what plays, and that it waits no longer', () => {
    const store = storeAfter(['announcement_started', { announcement: 2 }]);
    expect(store.status?.playing?.name).toBe('Two');
    expect(store.status?.waiting).toEqual([]);
    expect(
      storeAfter(['announcement_started', { announcement: 2 }], ['announcement_ended', { announcement: 2 }]).status
        ?.playing,
    ).toBeNull();
  });

  it('knows that what plays was stopped, until the agent lets go of it', () => {
    const stopped: [string, object][] = [
      ['announcement_started', { announcement: 2 }],
      ['announcement_stopped', { announcement: 2 }],
    ];
    expect([storeAfter(...stopped).stopped, storeAfter(...stopped).status?.playing?.announcement]).toEqual([2, 2]);
    expect(storeAfter(...stopped, ['announcement_ended', { announcement: 2 }]).stopped).toBeNull();
    expect(storeAfter(...stopped, ['state', state]).stopped).toBeNull();
  });

  it('keeps the popup that stands, and lets go of none but that', () => {
    const shown: [string, object] = ['popup_shown', { navigator: 5, popup }];
    expect(storeAfter(shown, ['popup_hidden', { navigator: 5, number: 2 }]).popupOn(5)).toEqual(popup);
    expect(storeAfter(shown, ['popup_changed', { navigator: 5, number: 3, message: 'New' }]).popupOn(5)?.message).toBe(
      'New',
    );
    expect(storeAfter(shown, ['popup_hidden', { navigator: 5, number: 3 }]).popupOn(5)).toBeNull();
  });

  it('follows rooms, screens and values', () => {
    const store = storeAfter(
      ['room_set_up', { room: 7, volume: 30 }],
      ['room_volume_changed', { room: 7, volume: 55 }],
      ['room_output_failed', { room: 7, reason: 'gone' }],
      ['pages_changed', { navigator: 5, pages: 2 }],
      ['variable_changed', { device: 9, variable: 4, value: 'y' }],
    );
    expect(store.rooms.get(7)).toMatchObject({ volume: 55, in_announcement: true, trouble: 'gone' });
    expect(store.screens.get(5)?.pages).toBe(2);
    expect(store.variables[0]?.value).toBe('y');
  });

  it('takes what it does not know without harm, and writes a log of what it knows', () => {
    const store = storeAfter(
      ['something_new', {}],
      ['room_restored', { room: 99, volume: 1 }],
      ['log', { level: 'error', text: 'bad' }],
    );
    expect(store.rooms.size).toBe(1);
    expect(store.log.lines.map((line) => [line.tone, line.text])).toEqual([
      ['good', 'Connected to the controller'],
      ['plain', 'Room 99 is back at 1 %'],
      ['error', 'bad'],
    ]);
  });

  it('knows who uses a file', () => {
    const store = storeAfter([
      'announcement_stored',
      { announcement: 3, now: { ...blank(), id: 3, name: 'Three', audio: { file: 'chime', delay_ms: 0 } } },
    ]);
    const file = { name: 'chime.wav', kind: 'sound' as const, bytes: 1, modified: '' };
    expect(store.usersOf(file).map((one) => one.id)).toEqual([3]);
    expect(store.usersOf({ ...file, name: 'gong.wav' })).toEqual([]);
  });
});
