// Elements made by calls. Texts only ever become text nodes.

/**
 * Makes an element. `attributes`: names and values; `class`, `on` (listeners by event) and `value`-like properties as
 * they are; false and null leave an attribute out, true sets it empty. `children`: elements, texts, nulls, arrays.
 */
export function h(tag, attributes, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes || {})) {
    if (name === 'on') for (const [event, listener] of Object.entries(value)) node.addEventListener(event, listener);
    else if (name === 'value' || name === 'checked' || name === 'disabled') node[name] = value;
    else if (value !== false && value !== null && value !== undefined) node.setAttribute(name, value === true ? '' : value);
  }
  node.append(...children.flat(3).filter((child) => child !== null && child !== undefined && child !== false));
  return node;
}

const ICONS = {
  play: 'M8 5.5v13l10.5-6.5z',
  bell: 'M4 9.5v5a1 1 0 0 0 1 1h3l5 4v-15l-5 4H5a1 1 0 0 0-1 1zM16.5 9a4.5 4.5 0 0 1 0 6M19 6.5a8 8 0 0 1 0 11',
  house: 'M4 11.5 12 5l8 6.5M6 10v9h12v-9M10 19v-5h4v5',
  note: 'M9 18V6l10-2v12M9 18a2.5 2.5 0 1 1-5 0 2.5 2.5 0 0 1 5 0zM19 16a2.5 2.5 0 1 1-5 0 2.5 2.5 0 0 1 5 0z',
  clock: 'M12 4a8 8 0 1 0 0 16 8 8 0 0 0 0-16zM12 8v4.5l3 2',
  edit: 'M5 19h3.5L18.5 9 15 5.5 5 15.5zM13 7.5l3.5 3.5',
  trash: 'M5 7.5h14M9.5 7V5h5v2M7 7.5l.8 11.5h8.400l.8-11.5M10.5 11v5M13.5 11v5',
  eye: 'M3 12c2-4 5-6 9-6s7 2 9 6c-2 4-5 6-9 6s-7-2-9-6zM12 9.5a2.5 2.5 0 1 0 0 5 2.5 2.5 0 0 0 0-5z',
  plus: 'M12 5v14M5 12h14',
  screen: 'M4 6h16v10H4zM9 20h6M12 16v4',
  upload: 'M12 16V5M7.5 9 12 4.5 16.5 9M5 16v3h14v-3',
  close: 'M6 6l12 12M18 6 6 18',
  back: 'M14.5 5.5 8 12l6.5 6.5',
  image: 'M4 5.5h16v13H4zM4.5 16l4.5-4.5 4 4 2.5-2.5 4 3.5M15.5 8.5a1 1 0 1 0 0 2 1 1 0 0 0 0-2z',
  stop: 'M7 7h10v10H7z',
};

/** A drawing beside a text that says the same. */
export function icon(name) {
  const space = 'http://www.w3.org/2000/svg';
  const svg = document.createElementNS(space, 'svg');
  svg.setAttribute('viewBox', '0 0 24 24');
  svg.setAttribute('class', `icon icon-${name}`);
  svg.setAttribute('aria-hidden', 'true');
  const path = document.createElementNS(space, 'path');
  path.setAttribute('d', ICONS[name]);
  svg.appendChild(path);
  return svg;
}

export function button(name, label, onClick, attributes) {
  return h('button', { type: 'button', on: { click: onClick }, ...attributes }, icon(name), h('span', {}, label));
}

export function setText(node, text) {
  if (node.textContent !== text) node.textContent = text;
}

/**
 * Makes the children of `container` those of `items`, keeping what stands there already: with the focus, a slider in
 * somebody's hand. `make(item)` gives {node, update(item)}.
 */
export function syncList(container, items, keyOf, make) {
  const former = container.cards || new Map();
  const cards = new Map();
  for (const item of items) {
    const key = keyOf(item);
    const card = former.get(key) || make(item);
    cards.set(key, card);
    card.update(item);
  }
  for (const [key, card] of former) if (!cards.has(key)) card.node.remove();
  let place = container.firstElementChild;
  for (const card of cards.values()) {
    if (card.node === place) place = place.nextElementSibling;
    else container.insertBefore(card.node, place);
  }
  container.cards = cards;
}
