// The columns of the table of variables. A column has a key, which is also that of its sort, a title, a width for
// grid-template-columns, and `from`, the width of the table in rem from which it is shown; make() returns the content of a
// cell, set() draws a variable into it.

import {briefNumberText, shortTime, valueParts} from './format.js';
import {makeSign, setQualityAndSuspect, setWrite} from './signs.js';
import {make, setAttribute, setText} from './dom.js';

const textColumn = (key, title, width, from, text) => ({
  key, title, width, from,
  make: () => make('span.cut'),
  set: (content, variable) => {
    const shown = text(variable);
    setText(content, shown);
    setAttribute(content, 'title', shown.length > 24 ? shown : null);
  },
});

const Name = {
  key: 'name', title: 'Name', width: 'minmax(9rem, 2.6fr)', from: 0,
  make: () => make('a.cut', {tabindex: -1}),
  set: (link, variable) => {
    setText(link, variable.name);
    setAttribute(link, 'href', `#/variables/${variable.id}`);
    setAttribute(link, 'title', variable.description || null);
  },
};

// Kinds whose values are aligned before the column of units.
const Aligned = ['number', 'state', 'boolean'];

const Value = {
  key: 'value', title: 'Value', width: 'minmax(11rem, 2fr)', from: 0,
  make: () => make('span.value', {}, make('span.value-main.cut'), make('span.value-side')),
  set: (content, variable) => {
    const {main, side} = valueParts(variable, variable.now, briefNumberText);
    const whole = valueParts(variable).main;
    setText(content.firstChild, main);
    setText(content.lastChild, side);
    content.classList.toggle('whole', !side && !Aligned.includes(variable.kind));
    setAttribute(content, 'title', main !== whole || main.length > 14 ? whole : null);
  },
};

const Quality = {
  key: 'quality', title: 'Quality', width: 'minmax(9rem, 2.2fr)', from: 34,
  make: makeSign,
  set: (content, {now}) => {
    setQualityAndSuspect(content, now);
    setAttribute(content, 'title', now?.suspect ? `${now.quality}, suspect, ${now.suspect}` : null);
  },
};

const Write = {
  key: 'write', title: 'Write', width: 'minmax(9rem, 1.4fr)', from: 34,
  make: makeSign,
  set: (content, variable) => {
    setWrite(content, variable, variable.now?.write);
    setAttribute(content, 'title', variable.now?.write?.reason || null);
  },
};

export const Columns = [
  Name,
  Value,
  Quality,
  Write,
  textColumn('block', 'Block', 'minmax(7rem, 1.3fr)', 52, (variable) => variable.block.name),
  textColumn('object', 'Object', 'minmax(10rem, 1.2fr)', 64, (variable) => variable.object),
  textColumn('property', 'Property', 'minmax(9rem, 1fr)', 100, (variable) => variable.property),
  textColumn('changed', 'Changed', '6.5rem', 76, (variable) => shortTime(variable.changedTime)),
  textColumn('description', 'Description', 'minmax(10rem, 2fr)', 112, (variable) => variable.description ?? ''),
];

// Below this width in rem a row has two lines, and no heading.
export const TwoLines = 34;
