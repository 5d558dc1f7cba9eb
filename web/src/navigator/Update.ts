// Takes over a newer page when the controller has one: by going there, for after a reload the browser would let the
// page play nothing before somebody taps on it again.

const RETRY = 5000;

export class Update {
  private tag = ''; // of the page that is shown
  private isDue = false;

  /** `mayGo`: whether nobody would miss anything. */
  constructor(private readonly mayGo: () => boolean) {
    setInterval(() => this.goWhenPossible(), RETRY);
  }

  /** The controller may be another one than before. */
  async check(): Promise<void> {
    try {
      const response = await fetch(location.pathname, { cache: 'no-cache' });
      const tag = (response.ok && response.headers.get('ETag')) || '';
      this.isDue = this.isDue || (tag !== '' && this.tag !== '' && tag !== this.tag);
      this.tag = this.tag || tag;
    } catch {
      // It is looked at again with the next connection.
    }
    this.goWhenPossible();
  }

  private goWhenPossible(): void {
    if (this.isDue && this.mayGo()) location.assign(location.pathname + location.search);
  }
}
