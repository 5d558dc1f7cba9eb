// What happens at a moment of a rehearsal, told.

import type { Moment } from '../api/objects';
import type { Names } from './names';
import { t, textFor } from '../texts/page';

export function popupText(one: Moment, names: Names): string {
  if (one.variable) return t.list.follows(names.variableName(one.variable.device, one.variable.variable));
  return one.message || one.image || '';
}

export function sentenceOf(one: Moment, names: Names): string {
  const room = names.roomName(one.room ?? 0);
  const screen = names.screenName(one.navigator ?? 0);
  switch (one.what) {
    case 'room_set_up':
      return t.steps.roomSetUp(room);
    case 'volume_set':
      return t.steps.volume(room, one.volume ?? 0);
    case 'room_restored':
      return t.steps.restored(room);
    case 'screens_woken':
      return t.steps.woken(room);
    case 'screens_rested':
      return t.steps.rested(room);
    case 'sound_started':
      return t.steps.sound(one.file ?? '');
    case 'sound_missing':
      return t.steps.noSound(one.text ?? '');
    case 'room_missing':
      return t.steps.noRoom(room);
    case 'screen_missing':
      return t.steps.noScreen(screen);
    case 'popup_shown':
      return t.steps.popup(screen, popupText(one, names), one.ok_button ?? false);
    case 'popup_hidden':
      return t.steps.hidden(screen);
    case 'log':
      return one.text ?? '';
    default:
      return textFor(t.steps.plain, one.what) ?? one.what.replace(/_/g, ' ');
  }
}
