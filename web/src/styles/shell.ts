// The frame on a phone (places below), a tablet (a rail) and a desk (a column).

import { css } from 'lit';

export const shellStyles = css`
  .skip {
    position: fixed;
    z-index: 1000;
    top: -6rem;
    left: 1rem;
    padding: 0.75rem 1rem;
    border: 0;
    border-radius: 10px;
    background: var(--card);
    color: var(--accent);
    font: inherit;
  }
  .skip:focus {
    top: 1rem;
  }
  .frame {
    position: sticky;
    z-index: 20;
    top: 0;
    display: flex;
    align-items: center;
    gap: 0.75rem;
    padding: 0.5rem 0.75rem 0.5rem 1rem;
    background: var(--ground);
    border-bottom: 1px solid var(--line);
  }
  .brand {
    display: flex;
    align-items: center;
    gap: 0.7rem;
    min-width: 0;
    flex: 1;
  }
  .brand strong {
    overflow: hidden;
    text-overflow: ellipsis;
    white-space: nowrap;
  }
  .brand img {
    flex: none;
    border-radius: 9px;
  }
  .tools {
    display: flex;
    align-items: center;
    gap: 0.15rem;
  }
  .language {
    font-weight: 600;
    font-size: 0.85rem;
  }
  .tools link-state {
    margin-right: 0.4rem;
  }
  nav {
    position: fixed;
    z-index: 30;
    inset: auto 0 0 0;
    display: flex;
    justify-content: space-around;
    padding: 0.25rem 0.25rem calc(0.25rem + env(safe-area-inset-bottom, 0px));
    background: var(--card);
    border-top: 1px solid var(--line);
  }
  nav a {
    flex: 1;
    display: grid;
    justify-items: center;
    gap: 0.2rem;
    min-height: 3.4rem;
    padding: 0.55rem 0 0.3rem;
    border-radius: 12px;
    color: var(--ink-soft);
    font-size: 0.72rem;
    font-weight: 500;
    text-decoration: none;
  }
  nav ui-icon {
    font-size: 1.25rem;
  }
  nav a[aria-current] {
    color: var(--accent);
    font-weight: 600;
  }
  .page {
    padding: 1.25rem 1rem calc(6.5rem + 2.1 * var(--now, 0rem)); /* the bar has three lines where something waits */
  }
  .page.playing {
    --now: 5.2rem;
  }
  main {
    max-width: 78rem;
    margin: 0 auto;
  }
  main:focus-visible {
    outline: none;
  }
  .banner {
    display: flex;
    align-items: center;
    gap: 0.75rem;
    max-width: 78rem;
    margin: 0 auto 1rem;
    padding: 0.8rem 1rem;
    border-radius: 12px;
    background: var(--warning-soft);
    color: var(--warning);
    font-weight: 500;
  }
  .banner ui-icon {
    flex: none;
  }
  .waiting {
    padding: 4rem 1rem;
    text-align: center;
  }
  now-bar {
    position: fixed;
    z-index: 25;
    inset: auto 0.75rem calc(4.6rem + env(safe-area-inset-bottom, 0px)) 0.75rem;
    max-width: 46rem;
    margin: 0 auto;
  }
  ui-toasts {
    inset: auto 0.75rem calc(9.4rem + env(safe-area-inset-bottom, 0px)) 0.75rem;
  }

  @media (min-width: 700px) {
    .frame {
      position: fixed;
      inset: 0 auto 0 0;
      flex-direction: column;
      width: var(--rail);
      padding: 1rem 0.5rem;
      gap: 1.25rem;
      border: 0;
      border-right: 1px solid var(--line);
      background: var(--card);
    }
    .brand {
      flex: none;
    }
    .brand strong {
      display: none;
    }
    nav {
      position: static;
      flex-direction: column;
      justify-content: flex-start;
      flex: 1;
      align-self: stretch;
      gap: 0.35rem;
      padding: 0;
      border: 0;
      overflow-y: auto;
    }
    nav a {
      flex: none;
    }
    nav a:hover {
      background: var(--sunk);
    }
    nav a[aria-current] {
      background: var(--accent-soft);
    }
    .tools {
      flex-direction: column;
      gap: 0.4rem;
      margin-top: auto;
    }
    .tools link-state {
      margin: 0;
    }
    .page {
      margin-left: var(--rail);
      padding: 2rem 1.75rem calc(3rem + 1.2 * var(--now, 0rem));
    }
    now-bar {
      inset: auto 1.75rem 1.25rem calc(var(--rail) + 1.75rem);
    }
    ui-toasts {
      inset: auto 1.75rem 6rem calc(var(--rail) + 1.75rem);
    }
  }
  @media (min-width: 1100px) {
    .frame {
      width: var(--nav);
      padding: 1.5rem 1rem;
      align-items: stretch;
    }
    .brand {
      padding: 0 0.5rem;
    }
    .brand strong {
      display: block;
      font-size: 1.05rem;
    }
    nav a {
      display: flex;
      align-items: center;
      gap: 0.9rem;
      min-height: 3rem;
      padding: 0 1rem;
      font-size: 1rem;
    }
    .tools {
      flex-direction: row;
      justify-content: space-between;
      padding: 0 0.25rem 0 0.75rem;
    }
    .tools link-state {
      flex: 1;
    }
    .page {
      margin-left: var(--nav);
      padding: 2.25rem 2.5rem calc(3rem + 1.2 * var(--now, 0rem));
    }
    now-bar {
      inset: auto 2.5rem 1.5rem calc(var(--nav) + 2.5rem);
    }
    ui-toasts {
      inset: auto 2.5rem 6.5rem calc(var(--nav) + 2.5rem);
    }
  }
`;
