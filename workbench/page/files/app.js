// Starts the page: theme, connection, and the view that the address names.
//
//   #/                 blocks            #/schedules        schedules
//   #/variables        all variables     #/schedules/ID     one of them
//   #/variables/ID     one of them       #/events           events
//
// What follows a question mark belongs to the view: #/variables?only=bad. A view is a module with a function
// mount(element, {api, store, id, query}), which fills the element and returns a function that removes its listeners.

import {createApi} from './api.js';
import {startConnection} from './connection.js';
import {createStore} from './store.js';
import {startTheme} from './theme.js';
import {make} from './dom.js';

const Views = [
  {pattern: /^\/$/, title: 'Overview', load: () => import('./overview.js')},
  {pattern: /^\/variables$/, title: 'Variables', load: () => import('./table.js')},
  {pattern: /^\/variables\/(\d+)$/, title: 'Variable', load: () => import('./variable.js')},
  {pattern: /^\/schedules$/, title: 'Schedules', load: () => import('./programmes.js')},
  {pattern: /^\/schedules\/(\d+)$/, title: 'Schedule', load: () => import('./programme.js')},
  {pattern: /^\/events$/, title: 'Events', load: () => import('./events.js')},
];

const api = createApi();
const store = createStore();
const main = document.getElementById('main');
let unmount = null;
let visit = 0;

async function show() {
  const [path, search = ''] = (location.hash.slice(1) || '/').split('?');
  const view = Views.find(({pattern}) => pattern.test(path));
  const number = ++visit;
  unmount?.();
  unmount = null;
  if (!view) {
    main.replaceChildren(make('p', {}, `There is no page ${path}.`));
    return;
  }
  const module = await view.load();
  if (number === visit) {
    const id = view.pattern.exec(path)[1];
    main.replaceChildren();
    unmount = module.mount(main, {api, store, id: id && Number(id), query: new URLSearchParams(search)});
  }
}

startTheme(document.getElementById('theme'));
await startConnection(api, store);
window.addEventListener('hashchange', show);
await show();
