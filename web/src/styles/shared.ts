// What the styles of components share.

import { css } from 'lit';

export const shared = css`
  *,
  *::before,
  *::after {
    box-sizing: border-box;
  }
  [hidden] {
    display: none !important;
  }
  h1,
  h2,
  h3,
  p,
  ul,
  ol,
  dl,
  dd,
  figure {
    margin: 0;
    padding: 0;
  }
  ul,
  ol {
    list-style: none;
  }
  h1 {
    font-size: 1.6rem;
    line-height: 1.2;
    letter-spacing: -0.01em;
  }
  h2 {
    font-size: 1.1rem;
    line-height: 1.3;
  }
  h3 {
    font-size: 1rem;
    line-height: 1.35;
  }
  a {
    color: var(--accent);
  }
  :focus-visible {
    outline: 3px solid var(--accent);
    outline-offset: 2px;
  }
  .soft {
    color: var(--ink-soft);
  }
  .small {
    font-size: 0.875rem;
  }
  .card {
    background: var(--card);
    border: 1px solid var(--line);
    border-radius: var(--radius);
    box-shadow: var(--shadow);
  }
  .head {
    display: flex;
    flex-wrap: wrap;
    align-items: center;
    gap: 0.75rem 1rem;
    margin-bottom: 1.25rem;
  }
  .head h1 {
    flex: 1 1 auto;
  }
  .badge {
    display: inline-flex;
    align-items: center;
    gap: 0.35rem;
    padding: 0.15rem 0.6rem;
    border-radius: 99px;
    font-size: 0.8rem;
    font-weight: 600;
    white-space: nowrap;
    background: var(--sunk);
    color: var(--ink-soft);
  }
  .badge.good {
    background: var(--good-soft);
    color: var(--good);
  }
  .badge.warning {
    background: var(--warning-soft);
    color: var(--warning);
  }
  .badge.bad {
    background: var(--bad-soft);
    color: var(--bad);
  }
  .doubt {
    color: var(--warning);
    font-weight: 500;
  }
  .problem {
    color: var(--bad);
  }
  .problem:not(:empty) {
    padding: 0.75rem 1rem;
    border-radius: 12px;
    background: var(--bad-soft);
  }
  .problem:empty {
    display: none;
  }
  sl-range {
    --track-color-active: var(--accent);
    --track-color-inactive: var(--line);
    --track-height: 6px;
    --thumb-size: 24px;
  }
  .empty {
    display: grid;
    justify-items: center;
    gap: 0.75rem;
    padding: 3.5rem 1.5rem;
    text-align: center;
  }
  .empty ui-icon {
    font-size: 2.5rem;
    color: var(--accent);
  }
  .empty p {
    max-width: 34rem;
    color: var(--ink-soft);
  }
  .group {
    margin-top: 2rem;
  }
  .group > h2 {
    margin-bottom: 0.75rem;
  }
  .tiles {
    display: grid;
    gap: 1rem;
    grid-template-columns: repeat(auto-fill, minmax(min(100%, 19rem), 1fr));
  }
  .unlabelled::part(form-control-label) {
    position: absolute;
    width: 1px;
    height: 1px;
    overflow: hidden;
    clip-path: inset(50%);
    white-space: nowrap;
  }
  .unseen {
    position: absolute;
    width: 1px;
    height: 1px;
    overflow: hidden;
    clip-path: inset(50%);
    white-space: nowrap;
  }
  .icon-button {
    display: inline-grid;
    place-items: center;
    width: 2.75rem;
    height: 2.75rem;
    flex: none;
    padding: 0;
    border: 0;
    border-radius: 50%;
    background: transparent;
    color: var(--ink-soft);
    font: inherit;
    font-size: 1.15rem;
    cursor: pointer;
    text-decoration: none;
  }
  .icon-button:hover {
    background: var(--sunk);
    color: var(--ink);
  }
  select {
    width: 100%;
    min-height: 2.75rem;
    padding: 0.4rem 2.2rem 0.4rem 0.75rem;
    border: 1px solid var(--edge);
    border-radius: 10px;
    background: var(--card) no-repeat right 0.8rem center / 0.8rem;
    color: var(--ink);
    font: inherit;
    text-overflow: ellipsis;
  }
  label,
  legend {
    font-weight: 500;
  }
  @media (prefers-reduced-motion: reduce) {
    * {
      animation: none !important;
      transition: none !important;
    }
  }
`;
