// The box in which one announces now.

import { css } from 'lit';

export const sayStyles = css`
  :host {
    display: block;
    margin-bottom: 1.75rem;
  }
  section {
    display: grid;
    grid-template-columns: minmax(0, 1fr);
    gap: 0.9rem;
    padding: 1.1rem 1.25rem 1.25rem;
  }
  .top {
    display: flex;
    flex-wrap: wrap;
    align-items: center;
    justify-content: space-between;
    gap: 0.5rem 1rem;
  }
  h2 {
    font-size: 1.25rem;
  }
  button {
    display: inline-flex;
    align-items: center;
    gap: 0.45rem;
    min-height: 2.75rem;
    border: 1px solid var(--edge);
    background: var(--card);
    color: var(--ink);
    font: inherit;
    cursor: pointer;
  }
  button[aria-pressed='true'] {
    border-color: var(--accent);
    background: var(--accent-soft);
    color: var(--accent);
    font-weight: 600;
  }
  .ways {
    display: flex;
  }
  .ways button {
    padding: 0 0.9rem;
    margin-left: -1px;
  }
  .ways button[aria-pressed='true'] {
    z-index: 1;
  }
  .ways button:first-child {
    border-radius: 10px 0 0 10px;
  }
  .ways button:last-child {
    border-radius: 0 10px 10px 0;
  }
  sl-textarea::part(textarea) {
    font-size: 1.1rem;
  }
  sl-textarea::part(form-control-label) {
    font-weight: 500;
  }
  .places {
    display: grid;
    gap: 0.6rem;
  }
  .places > div {
    display: flex;
    flex-wrap: wrap;
    gap: 0.5rem;
    max-height: 11.5rem;
    overflow-y: auto;
    padding: 3px;
    margin: -3px;
  }
  .chip {
    max-width: 100%;
    padding: 0 1rem 0 0.8rem;
    border-radius: 99px;
  }
  .chip span {
    overflow: hidden;
    text-overflow: ellipsis;
    white-space: nowrap;
  }
  .doubt:empty {
    display: none;
  }
  .doubt ui-icon {
    margin-inline-end: 0.4rem;
  }
  .end {
    display: flex;
    flex-wrap: wrap;
    align-items: center;
    justify-content: flex-end;
    gap: 0.75rem 1rem;
  }
  .end sl-button {
    min-width: 9rem;
  }
  voice-choice {
    margin-right: auto;
    max-width: 22rem;
  }
  @media (hover: none) {
    .keys {
      display: none;
    }
  }
  @media (max-width: 499px) {
    .ways,
    .end sl-button,
    voice-choice {
      max-width: none;
      flex: 1 1 100%;
    }
    .ways button {
      flex: 1;
      justify-content: center;
      padding: 0 0.3rem;
    }
    .keys {
      display: none;
    }
  }
`;
