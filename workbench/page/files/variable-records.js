// What is known of a variable beside its value: what the project says of it, and its latest writes and log lines.
//
// makeFacts(variable) returns an element. new VariableRecords() has `elements`, two panels without content;
// show(answer) fills them with the answer of /api/variables/ID.

import {shortTime} from './format.js';
import {make} from './dom.js';
import {eventSign} from './signs.js';

export function makeFacts({object, property, type, unit, states, description, writable, block}) {
  const stateOf = (index) => (type.includes('Boolean') ? Boolean(index) : index + 1);
  const facts = [
    ['Description', description], ['Object', object], ['Property', property], ['Type', type], ['Unit', unit],
    ['States', states?.map((text, index) => `${stateOf(index)} ${text}`).join(', ')],
    ['Can be set', writable ? 'yes' : 'no'], ['Device', block.address], ['Task', block.task],
  ];
  const shown = facts.filter(([, text]) => text);
  return make('section.panel.project-facts', {'aria-labelledby': 'facts-title'},
    make('h2', {id: 'facts-title'}, 'In the project'),
    make('dl.facts', {}, shown.map(([title, text]) => [make('dt', {}, title), make('dd', {}, text)])));
}

// A line of the log is a text, or an object with the time and the text.
const logLine = (line) => (typeof line === 'string' ? make('li', {}, line)
  : make('li', {}, make('time.dim', {}, shortTime(line.time)), ' ', line.text));

const writeLine = ({time, kind, text}) => make('li.event-line', {},
  make('time.dim', {}, shortTime(time)), eventSign(kind), make('span.event-text', {}, text));

function fill(list, lines, none) {
  list.replaceChildren(...(lines.length ? lines : [make('li.dim', {}, none)]));
}

export class VariableRecords {
  #writes = make('ol.records');
  #log = make('ol.records.log');
  elements = [
    make('section.panel', {'aria-labelledby': 'writes-title'},
      make('h2', {id: 'writes-title'}, 'Last writes'), this.#writes),
    make('section.panel', {'aria-labelledby': 'log-title'}, make('h2', {id: 'log-title'}, 'Last log lines'), this.#log),
  ];

  show({writes, log}) {
    fill(this.#writes, writes.map(writeLine).reverse(), 'It has not been written in this run.');
    fill(this.#log, log.map(logLine).reverse(), 'The log has no line about it.');
  }
}
