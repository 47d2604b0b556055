// Light, dark, or as the system has it: data-theme on <html>, remembered in this browser.

import {make} from './dom.js';

const Key = 'dorvel-theme';
const Themes = ['system', 'light', 'dark'];

function remembered() {
  try {
    const theme = localStorage.getItem(Key);
    return Themes.includes(theme) ? theme : 'system';
  } catch {
    return 'system';
  }
}

function remember(theme) {
  try {
    localStorage.setItem(Key, theme);
  } catch {
    // A browser without storage forgets the theme.
  }
}

function apply(theme) {
  if (theme === 'system') {
    delete document.documentElement.dataset.theme;
  } else {
    document.documentElement.dataset.theme = theme;
  }
}

apply(remembered());

// Makes the button step through the themes. The event 'themechange' on window follows each change, also of the system.
export function startTheme(button) {
  let theme = remembered();
  const word = make('span.word');
  button.append(make('span', {'aria-hidden': 'true'}, '\u25D0'), word);
  const changed = () => window.dispatchEvent(new Event('themechange'));
  const show = () => {
    button.setAttribute('aria-label', `Theme: ${theme}`);
    button.title = `Theme: ${theme}`;
    word.textContent = `Theme: ${theme}`;
  };
  button.addEventListener('click', () => {
    theme = Themes[(Themes.indexOf(theme) + 1) % Themes.length];
    remember(theme);
    apply(theme);
    show();
    changed();
  });
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', changed);
  show();
}
