// #/variables: all variables.

import {make} from './dom.js';

export function mount(element, {store}) {
  element.append(make('h1', {}, 'Variables'), make('p', {}, String(store.variables.length)));
  return () => {};
}
