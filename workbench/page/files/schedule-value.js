// Values of a schedule for people, and their colours. `info` has `unit` and `states` as in GET /api/variables/ID/schedule.
//
// A value has a type and a text: "21.5", "true", "3", and nothing for null, which leaves the default in force. The first
// state text is that of false and of 0 for boolean and enumerated, and that of 1 for the other numbers.

import {numberText} from './format.js';
import {rows} from './schedule-model.js';

const Minus = '\u2212';

export const TypeWords = {
  real: 'Number',
  double: 'Number (double)',
  unsigned: 'Whole number, 0 or more',
  signed: 'Whole number',
  enumerated: 'State number',
  boolean: 'On or off',
  'character-string': 'Text',
  date: 'Date',
  time: 'Time',
  'octet-string': 'Octets (hexadecimal)',
  'bit-string': 'Bits',
  'object-identifier': 'Object',
  null: 'Default (null)',
};

const Numbers = new Set(['real', 'double', 'unsigned', 'signed', 'enumerated']);
const FromZero = new Set(['boolean', 'enumerated']);

export const isNumber = (type) => Numbers.has(type);
export const hasUnit = (type) => isNumber(type) && type !== 'enumerated';

function numberOf({type, value}) {
  return type === 'boolean' ? Number(value === 'true') : Number(value);
}

function stateOf(entry, info) {
  const states = info.states ?? [];
  if (!states.length || !(isNumber(entry.type) || entry.type === 'boolean')) {
    return null;
  }
  return states[numberOf(entry) - (FromZero.has(entry.type) ? 0 : 1)] || null;
}

// What can be chosen for a value of the type, as [value, text]; null if it is typed.
export function choices(type, info) {
  const states = info.states ?? [];
  if (type === 'boolean') {
    return [['false', states[0] || 'off'], ['true', states[1] || 'on']];
  }
  if (!states.length || !['unsigned', 'enumerated'].includes(type)) {
    return null;
  }
  const first = FromZero.has(type) ? 0 : 1;
  return states.map((text, index) => [String(index + first), text || String(index + first)]);
}

// {main, unit} of a value as it is shown.
export function valueParts(entry, info) {
  if (entry.type === 'null') {
    return {main: 'default', unit: ''};
  }
  const choice = stateOf(entry, info) ?? choices(entry.type, info)?.find(([value]) => value === entry.value)?.[1];
  const number = Number(entry.value);
  if (choice || !hasUnit(entry.type) || !Number.isFinite(number)) {
    return {main: choice ?? String(entry.value), unit: ''};
  }
  const isExact = Number.isSafeInteger(number) || !Number.isInteger(number);
  return {main: isExact ? numberText(number) : entry.value.replace(/^-/, Minus), unit: info.unit ?? ''};
}

export function valueLabel(entry, info) {
  const {main, unit} = valueParts(entry, info);
  return unit ? `${main} ${unit}` : main;
}

const normal = (entry) => (isNumber(entry.type) ? String(Number(entry.value)) : entry.value);

// The type of most values, for new entries; by the names of the values if there are none.
export function usualType(model, info) {
  const counts = new Map();
  for (const {type} of rows(model).flat()) {
    if (type !== 'null') {
      counts.set(type, (counts.get(type) ?? 0) + 1);
    }
  }
  const [most] = [...counts].sort((one, other) => other[1] - one[1])[0] ?? [];
  return most ?? (info.states?.length ? 'unsigned' : 'real');
}

// The value of a new entry: one that the schedule has already, if there is one.
export function usualValue(type, model, info) {
  return rows(model).flat().find((entry) => entry.type === type)?.value ?? firstValue(type, info);
}

export function firstValue(type, info) {
  return choices(type, info)?.[0][0] ?? (isNumber(type) ? '0' : '');
}

// Returns the class of the colour of an entry: numbers from cool to warm by their rank in the schedule, states by their
// number, texts by their first occurrence.
export function colours(model) {
  const entries = rows(model).flat().filter(({type}) => type !== 'null');
  const numbers = [...new Set(entries.filter(({type}) => hasUnit(type)).map(numberOf))].sort((one, other) => one - other);
  const texts = [...new Set(entries.filter(({type}) => !isNumber(type)).map(normal))];
  return (entry, info) => {
    if (entry.type === 'null') {
      return 'is-default';
    }
    if (hasUnit(entry.type) && !info.states?.length) {
      const share = numbers.length > 1 ? numbers.indexOf(numberOf(entry)) / (numbers.length - 1) : 0.5;
      return `level-${Math.max(0, Math.round(share * 4)) + 1}`;
    }
    const place = isNumber(entry.type) || entry.type === 'boolean' ? numberOf(entry) : texts.indexOf(entry.value);
    return `state-${(Number.isFinite(place) ? Math.abs(Math.trunc(place)) : 0) % 6}`;
  };
}

const Forms = {
  real: [/^-?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i, 'a number such as 21.5'],
  unsigned: [/^\d{1,10}$/, 'a whole number from 0 to 4294967295'],
  signed: [/^-?\d{1,10}$/, 'a whole number from -2147483648 to 2147483647'],
};
Forms.double = Forms.real;
Forms.enumerated = Forms.unsigned;

// What is wrong with a typed value, in words; empty if nothing is. The server checks it again, and other types.
export function valueMistake(type, value) {
  const [form, words] = Forms[type] ?? [/^/, ''];
  return form.test(value) ? '' : `“${value}” is not ${words}`;
}

// "21,5" and a true minus are what people type.
export function typedValue(type, typed) {
  return isNumber(type) ? typed.trim().replace(',', '.').replace(Minus, '-') : typed;
}
