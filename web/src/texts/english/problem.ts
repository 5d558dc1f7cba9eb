// What is said when a request is not answered as it should be.

export const problem = {
  unreachable: 'The controller cannot be reached. Is it running, and is this device on the home network?',
  withRight: (detail: string, right: string) => `${detail}. Right would be: ${right}`,
  answered: (status: number, text: string) => `The controller answered ${status} ${text}`,
};
