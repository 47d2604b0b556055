// #/: the blocks of the plant.

import {make} from './dom.js';

export function mount(element, {store}) {
  element.append(make('h1', {}, 'Overview'), make('ul', {}, store.blocks.map(({name}) => make('li', {}, name))));
  return () => {};
}
