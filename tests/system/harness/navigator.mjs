// What stands on the page of a screen.

export const popup = (page) => page.getByRole('alertdialog');
export const ok = (page) => page.getByRole('button', { name: 'OK' });
export const message = (page) => page.locator('#message');
export const shown = (page) => popup(page).waitFor({ state: 'visible' });
export const hidden = (page) => popup(page).waitFor({ state: 'hidden' });
