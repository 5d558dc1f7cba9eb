// Times, lengths and numbers as people say them.

const clock = new Intl.DateTimeFormat(undefined, { hour: '2-digit', minute: '2-digit', second: '2-digit' });
const day = new Intl.DateTimeFormat(undefined, { weekday: 'short', day: 'numeric', month: 'short' });

/** 1500 -> "1.5 s" */
export function seconds(milliseconds) {
  const value = milliseconds / 1000;
  if (value >= 120) return `${Math.floor(value / 60)} min ${Math.round(value % 60)} s`;
  return `${Number(value.toFixed(value < 10 ? 1 : 0))} s`;
}

export function count(number, one, many) {
  return `${number} ${number === 1 ? one : many}`;
}

export const timeOfDay = (text) => clock.format(new Date(text));

/** "14:05:10" today, "Mon 3 Mar, 14:05:10" on other days. */
export function moment(text) {
  const date = new Date(text);
  if (date.toDateString() === new Date().toDateString()) return clock.format(date);
  return `${day.format(date)}, ${clock.format(date)}`;
}

export function bytes(number) {
  if (number < 1000) return `${number} bytes`;
  if (number < 1e6) return `${Math.round(number / 1000)} kB`;
  return `${(number / 1e6).toFixed(1)} MB`;
}

export function listing(words) {
  if (words.length < 2) return words.join('');
  return `${words.slice(0, -1).join(', ')} and ${words[words.length - 1]}`;
}

export const volumeWords = (volume) => (volume > 0 ? `${volume} %` : 'as it is');
