// The sizes in which a popup can be looked at: those of the screens that it goes to, as far as these are open, and
// usual ones.

import type { AnnouncementBody, Screen } from '../api/objects';
import { t } from '../texts/page';

export interface Size {
  key: string;
  name: string;
  width: number;
  height: number;
}

const USUAL = {
  tablet: [1280, 800],
  upright: [800, 1280],
  television: [1920, 1080],
  phone: [390, 844],
} as const;

export function sizesFor(announcement: AnnouncementBody, screens: ReadonlyMap<number, Screen>): Size[] {
  const own = announcement.navigators.flatMap(({ id }) => {
    const screen = screens.get(id);
    if (!screen?.size) return [];
    const { width, height } = screen.size;
    return [{ key: `screen ${id}`, name: t.preview.own(screen.name, width, height), width, height }];
  });
  const usual = Object.entries(USUAL).map(([key, [width, height]]) => ({
    key,
    name: t.preview.screens[key as keyof typeof USUAL],
    width,
    height,
  }));
  return [...own, ...usual];
}
