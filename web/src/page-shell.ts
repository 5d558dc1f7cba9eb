// The frame of the page: places, the connection's state, what plays, and the view that the address names.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, query, state } from 'lit/decorators.js';
import { token } from './api/access';
import { PLACES, placeAddress, routeOf, type Place, type Route } from './model/route';
import { setTheme, theme, THEMES } from './model/theme';
import { ask } from './parts/ask';
import { signOut } from './parts/sign-in';
import type { IconName } from './parts/ui-icon';
import { Following, store } from './store/live';
import { shellStyles } from './styles/shell';
import { shared } from './styles/shared';
import { keepLanguage, LANGUAGES, nextLanguage } from './texts/language';
import { t } from './texts/page';
import { isThere } from './views';

const ICONS: Record<Place, IconName> = {
  announcements: 'bell',
  house: 'house',
  media: 'note',
  history: 'clock',
  log: 'journal',
};
const THEME_ICONS: Record<string, IconName> = { auto: 'half', light: 'sun', dark: 'moon' };

/** A view that may hold something unsaved. */
interface MayBeDirty {
  isDirty?: boolean;
  /** Gives whether it is saved. */
  save?(): Promise<boolean>;
}

@customElement('page-shell')
export class PageShell extends LitElement {
  static override styles = [
    shared,
    shellStyles,
    css`
      :host {
        display: block;
      }
    `,
  ];

  @state() private route: Route = routeOf(location.hash);
  @state() private theme = theme();
  @query('main') private readonly main!: HTMLElement;
  private shownAt = location.hash;
  private readonly scrolled = new Map<string, number>(); // how far down each place was when it was left

  constructor() {
    super();
    new Following(this);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    history.scrollRestoration = 'manual';
    window.addEventListener('hashchange', () => void this.follow());
  }

  /** What has been changed and not saved is not lost without a question. */
  private async follow(): Promise<void> {
    const wanted = location.hash;
    if (wanted === this.shownAt) return;
    history.replaceState(null, '', this.shownAt || '#/announcements');
    if (!(await this.mayLeave())) return;
    history.replaceState(null, '', wanted);
    this.show(wanted);
  }

  private async mayLeave(): Promise<boolean> {
    const view = this.main.firstElementChild as (Element & MayBeDirty) | null;
    if (!view?.isDirty) return true;
    const answer = await ask(t.editor.leaveTitle, t.editor.leaveText, [
      { key: 'leave', text: t.editor.leave, variant: 'default' },
      { key: 'save', text: t.save },
    ]);
    return answer === 'save' ? ((await view.save?.()) ?? false) : answer === 'leave';
  }

  private show(address: string): void {
    this.scrolled.set(this.place, this.isEditing ? (this.scrolled.get(this.place) ?? 0) : window.scrollY);
    this.shownAt = address;
    this.route = routeOf(address);
    window.scrollTo(0, 0);
    // A new view, to those who do not see it change.
    void this.updateComplete.then(() => {
      this.main.focus({ preventScroll: true });
      if (!this.isEditing) scrollBack(this.scrolled.get(this.place) ?? 0);
    });
  }

  override updated(): void {
    const name = t.places[this.place];
    document.title = store.status ? t.title(name, store.status.house) : t.appName;
  }

  /** A token that may only play sees only what can be played. */
  private get place(): Place {
    return store.mayEdit ? this.route.place : 'announcements';
  }

  private get isEditing(): boolean {
    return this.route.editing !== undefined;
  }

  private get needsToken(): boolean {
    const status = store.link.problem?.status ?? 0;
    return [401, 403, 429].includes(status) || (!store.isReady && store.rights.length > 0 && !store.mayPlay);
  }

  override render(): unknown {
    return html`<button class="skip" @click=${() => this.main.focus()}>${t.skip}</button>
      <div class="frame" role="region" aria-label=${t.appName}>
        <div class="brand">
          <img src="/assets/icon.svg" alt="" width="32" height="32" /><strong dir="auto"
            >${store.status?.house ?? t.appName}</strong
          >
        </div>
        ${this.renderNav()}
        <div class="tools"><link-state></link-state>${this.renderTools()}</div>
      </div>
      <div class="page ${store.status?.playing ? 'playing' : ''}">
        ${this.renderBanner()}
        <main tabindex="-1">${this.renderView()}</main>
      </div>
      ${store.mayPlay ? html`<now-bar></now-bar>` : nothing}
      <ui-toasts></ui-toasts>`;
  }

  private renderNav(): unknown {
    if (!store.isReady || this.needsToken || !store.mayEdit) return nothing;
    return html`<nav aria-label=${t.places.label}>
      ${PLACES.map(
        (place) =>
          html` <a href=${placeAddress(place)} aria-current=${place === this.place ? 'page' : nothing}>
            <ui-icon name=${ICONS[place]}></ui-icon><span>${t.places[place]}</span></a
          >`,
      )}
    </nav>`;
  }

  private renderTools(): unknown {
    const name = t.theme.label(t.theme[this.theme]);
    return html`<button class="icon-button" aria-label=${name} title=${name} @click=${this.nextTheme}>
        <ui-icon name=${THEME_ICONS[this.theme] ?? 'half'}></ui-icon>
      </button>
      ${this.renderLanguage()}
      ${
        token()
          ? html`<button class="icon-button" aria-label=${t.access.signOut} title=${t.access.signOut} @click=${signOut}>
              <ui-icon name="exit"></ui-icon>
            </button>`
          : nothing
      }`;
  }

  /** Named in its own tongue: whoever looks for it does not read the other one. */
  private renderLanguage(): unknown {
    const next = nextLanguage();
    const code = next.toUpperCase();
    return html`<button
      class="icon-button language"
      lang=${next}
      aria-label="${code} ${LANGUAGES[next]}"
      title=${LANGUAGES[next]}
      @click=${this.changeLanguage}
    >
      ${code}
    </button>`;
  }

  private async changeLanguage(): Promise<void> {
    if (!(await this.mayLeave())) return;
    keepLanguage(nextLanguage());
    location.reload();
  }

  private renderBanner(): unknown {
    const texts: string[] = [];
    const { status } = store;
    if (status && !store.link.isConnected && !this.needsToken) texts.push(t.link.lostLong);
    if (status && !status.agent) texts.push(t.problem.noAgent);
    if (status && !status.state_saved) texts.push(t.problem.notSaved(status.state_error ?? ''));
    return html`<div role="alert">
      ${texts.map((text) => html`<p class="banner"><ui-icon name="exclamation"></ui-icon>${text}</p>`)}
    </div>`;
  }

  private renderView(): unknown {
    if (this.needsToken) return html`<sign-in></sign-in>`;
    if (!store.isReady) return html`<p class="waiting soft">${store.link.problem?.text ?? t.link.connecting}</p>`;
    if (this.place === 'announcements') return this.renderFirst();
    const view = `${this.place}-view` as const;
    if (!isThere(view, this.again)) return this.renderComing();
    switch (view) {
      case 'house-view':
        return html`<house-view></house-view>`;
      case 'media-view':
        return html`<media-view></media-view>`;
      case 'history-view':
        return html`<history-view></history-view>`;
      case 'log-view':
        return html`<log-view></log-view>`;
    }
  }

  private renderFirst(): unknown {
    const { editing, copyOf } = this.route;
    if (editing === undefined || !store.mayEdit) return html`<announcements-view></announcements-view>`;
    if (!isThere('announcement-editor', this.again)) return this.renderComing();
    return html`<announcement-editor .announcement=${editing} .copyOf=${copyOf ?? null}></announcement-editor>`;
  }

  private readonly again = (): void => this.requestUpdate();

  private renderComing(): unknown {
    return html`<p class="waiting soft">${store.link.isConnected ? t.link.connecting : t.link.awaited}</p>`;
  }

  private nextTheme(): void {
    this.theme = THEMES[(THEMES.indexOf(this.theme) + 1) % THEMES.length] ?? 'auto';
    setTheme(this.theme);
  }
}

const FRAMES = 60; // as many are waited for: what comes from the controller lets a view grow

/** Down to where one was, as soon as the view is long enough again; not where somebody has scrolled meanwhile. */
function scrollBack(wanted: number): void {
  let frames = 0;
  const step = (): void => {
    if (window.scrollY !== 0 || wanted === 0) return;
    frames += 1;
    if (document.documentElement.scrollHeight - window.innerHeight >= wanted) window.scrollTo(0, wanted);
    else if (frames < FRAMES) requestAnimationFrame(step);
  };
  requestAnimationFrame(step);
}
