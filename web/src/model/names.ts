// What things are called, wherever their ids stand.

export interface Names {
  announcementName(id: number): string;
  roomName(id: number): string;
  screenName(id: number): string;
  variableName(device: number, variable: number): string;
}

export type PlaceNames = Pick<Names, 'roomName' | 'screenName'>;
