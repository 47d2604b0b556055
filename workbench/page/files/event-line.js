// An event in one or two lines: time, kind, block and variable, text.

import {shortTime} from './format.js';
import {make} from './dom.js';
import {eventSign} from './signs.js';

// The record of the variable that an event names; undefined if it names none.
export const variableOf = (event, store) =>
  event.variable && store.blocks.find(({name}) => name === event.block)?.byName.get(event.variable);

// "Block" or "Block.Variable"; a variable is a link to its page.
export function eventPlace(event, store) {
  const variable = variableOf(event, store);
  return make('span.place', {}, event.block,
    event.variable && ['.', variable ? make('a', {href: `#/variables/${variable.id}`}, event.variable) : event.variable]);
}

export function eventLine(event, store) {
  return make('div.event-line', {},
    make('time.dim', {datetime: event.time}, shortTime(event.time)), eventSign(event.kind),
    eventPlace(event, store), make('span.event-text', {}, event.text));
}
