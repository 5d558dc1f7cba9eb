// The end of what plays, at once.

import { request } from '../api/request';
import { attempt } from './ui-toasts';

export const stopPlaying = (): void => void attempt(() => request('post', '/api/stop'));
