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
import {startHeader} from './header.js';
import {make} from './dom.js';

const Views = [
  {pattern: /^\/$/, title: 'Overview', load: () => import('./overview.js')},
  {pattern: /^\/variables$/, title: 'Variables', load: () => import('./table.js')},
  {pattern: /^\/variables\/(\d+)$/, title: 'Variable', load: () => import('./variable.js')},
  {pattern: /^\/schedules$/, title: 'Schedules', load: () => import('./schedules.js')},
  {pattern: /^\/schedules\/(\d+)$/, title: 'Schedule', load: () => import('./schedule.js')},
  {pattern: /^\/events$/, title: 'Events', load: () => import('./events.js')},
];

const api = createApi();
const store = createStore();
const header = startHeader(store);
const main = document.getElementById('main');
let unmount = null;
let visit = 0;

function leave() {
  unmount?.();
  unmount = null;
  main.replaceChildren();
}

async function enter(view, path, search, number) {
  const module = await view.load();
  if (number === visit) {
    leave();
    const id = view.pattern.exec(path)[1];
    unmount = module.mount(main, {api, store, id: id && Number(id), query: new URLSearchParams(search)});
    header.showPage(path, store.variables[id]?.name ?? view.title);
  }
}

async function show() {
  const [path, search = ''] = (location.hash.slice(1) || '/').split('?');
  const view = Views.find(({pattern}) => pattern.test(path));
  visit += 1;
  if (view) {
    await enter(view, path, search, visit);
    return;
  }
  leave();
  main.append(make('h1', {}, 'Not found'), make('p', {}, `This page has no view '${path}'. `, make('a', {href: '#/'}, 'Overview')));
  header.showPage(path, 'Not found');
}

// After a link was followed, the focus begins at the new content, as on a page that has been loaded.
async function move() {
  await show();
  window.scrollTo(0, 0);
  main.focus({preventScroll: true});
}

function skip(event) {
  event.preventDefault();
  main.focus();
}

startTheme(document.getElementById('theme'));
document.getElementById('skip').addEventListener('click', skip);
const waiting = make('p.dim', {}, 'Connecting\u2026');
main.append(waiting);
store.on('connection', () => waiting.remove());
store.on('plant', () => {
  window.addEventListener('hashchange', move);
  show();
});
startConnection(api, store);
