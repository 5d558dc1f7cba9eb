import { expect, it } from 'vitest';
import { kindOf } from '../src/navigator/picture';

it('a popup shows pictures of the media folder and of the web, and of no other address', () => {
  const media = ['/api/media/a.png'];
  const web = ['http://example.org/a.png', 'HTTPS://example.org/a'];
  const none = [
    'javascript:alert(1)',
    ' javascript:alert(1)',
    'data:image/png;base64,AA',
    'file:///etc/passwd',
    '/api/media/../announcements',
    '/api/media/%2e%2e/x',
    '//example.org/a.png',
    'http:',
    'https://',
    'blob:http://x/y',
    'a.png',
    '',
  ];
  expect(media.map(kindOf)).toEqual(['media']);
  expect(web.map(kindOf)).toEqual(['web', 'web']);
  expect([...new Set(none.map(kindOf))]).toEqual(['none']);
});
