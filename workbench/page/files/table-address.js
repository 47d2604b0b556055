// What is chosen in the table of variables, as its address has it, for example
// #/variables?text=supply&only=bad,writable&block=2&sort=-value. A choice is {text, only, block, sort}; see choice.js.

import {Filters} from './choice.js';

// The choice of the part after the question mark, a URLSearchParams. Unknown filters are left out.
export function chosen(query) {
  const sort = query.get('sort');
  const block = query.get('block');
  return {
    text: query.get('text') ?? '',
    only: (query.get('only') ?? '').split(',').filter((name) => name in Filters),
    block: block === null || block === '' ? null : Number(block),
    sort: sort ? {column: sort.replace(/^-/, ''), descending: sort.startsWith('-')} : null,
  };
}

export function addressOf({text, only, block, sort}) {
  const query = new URLSearchParams();
  if (text) {
    query.set('text', text);
  }
  if (only.length) {
    query.set('only', only.join(','));
  }
  if (block !== null) {
    query.set('block', block);
  }
  if (sort) {
    query.set('sort', (sort.descending ? '-' : '') + sort.column);
  }
  const search = query.toString().replaceAll('%2C', ',');
  return `#/variables${search ? `?${search}` : ''}`;
}
