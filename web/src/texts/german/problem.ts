// What is said when a request is not answered as it should be.

import type { problem as English } from '../english/problem';

export const problem: typeof English = {
  unreachable: 'Die Steuerung ist nicht erreichbar. Läuft sie, und ist dieses Gerät im Heimnetz?',
  withRight: (detail: string, right: string) => `${detail}. Richtig wäre: ${right}`,
  answered: (status: number, text: string) => `Die Steuerung antwortete ${status} ${text}`,
};
