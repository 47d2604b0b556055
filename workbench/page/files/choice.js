// Which variables a table shows, and in which order. Pure functions on the records of the store.

import {qualityKind, valueText} from './format.js';
import {marksOf} from './store.js';

export const LatelyMs = 60000;

// The filters by name: what `only` of an address may contain, and what a variable has to be.
export const Filters = {
  bad: {title: 'Bad', holds: (variable) => marksOf(variable.now).bad},
  uncertain: {title: 'Uncertain', holds: (variable) => marksOf(variable.now).uncertain},
  suspect: {title: 'Suspect', holds: (variable) => marksOf(variable.now).suspect},
  changed: {title: 'Changed lately', holds: (variable, time) => time - variable.changedAt < LatelyMs},
  writable: {title: 'Writable', holds: (variable) => variable.writable},
  pending: {title: 'Pending writes', holds: (variable) => marksOf(variable.now).pending},
  failed: {title: 'Failed writes', holds: (variable) => marksOf(variable.now).failed},
};

const lower = (text) => String(text ?? '').toLocaleLowerCase('en-GB');

const fixedTexts = new WeakMap();

function fixedText(variable) {
  if (!fixedTexts.has(variable)) {
    const {name, object, property, description, block} = variable;
    fixedTexts.set(variable, lower([name, block.name, object, property, description].join('\n')));
  }
  return fixedTexts.get(variable);
}

export const wordsOf = (text) => lower(text).split(/\s+/).filter(Boolean);

// Each word has to occur in the name, block, object, property, description, value, quality or suspect.
export function matches(variable, words) {
  const missing = words.filter((word) => !fixedText(variable).includes(word));
  if (!missing.length) {
    return true;
  }
  const {now} = variable;
  const live = lower([now && valueText(variable), now?.quality, now?.suspect].join('\n'));
  return missing.every((word) => live.includes(word));
}

// {text, only: [names of filters], block: id or null} as a function of a variable and the time.
export function predicateOf({text = '', only = [], block = null}) {
  const words = wordsOf(text);
  const filters = only.map((name) => Filters[name]).filter(Boolean);
  return (variable, time) => (block === null || variable.block.id === block) &&
    filters.every((filter) => filter.holds(variable, time)) && matches(variable, words);
}

// Numbers in order of value, before texts in their order; a state by its number.
function compareValues(one, other) {
  const isNumber = typeof one === 'number';
  if (isNumber !== (typeof other === 'number')) {
    return isNumber ? -1 : 1;
  }
  return isNumber ? one - other : collator.compare(String(one), String(other));
}

const collator = new Intl.Collator('en-GB', {numeric: true, sensitivity: 'base'});
const compareTexts = (one, other) => collator.compare(one, other);
const QualityRank = {bad: 0, uncertain: 1, good: 2};
const WriteRank = ['refused', 'differs', 'unconfirmed', 'pending', 'written'];

// An integer that arrives as a text, for its digits.
const LongInteger = /^-?\d{16,}$/;

function sortableValue({now}) {
  const value = now?.value ?? null;
  return typeof value === 'boolean' || LongInteger.test(value) ? Number(value) : value;
}

// Problems first, also among suspects; then by words.
const qualityKey = ({now}) => now
  ? `${QualityRank[qualityKind(now.status)]}${now.suspect ? 0 : 1}${now.quality}`
  : null;

// By column: the key of a variable, null to be last in either direction, and how keys compare. A key that is `fixed` does
// not change while the page is open.
export const Sorts = {
  name: {key: (variable) => variable.name, compare: compareTexts, fixed: true},
  block: {key: (variable) => variable.block.name, compare: compareTexts, fixed: true},
  object: {key: (variable) => variable.object, compare: compareTexts, fixed: true},
  property: {key: (variable) => variable.property, compare: compareTexts, fixed: true},
  description: {key: (variable) => variable.description || null, compare: compareTexts, fixed: true},
  value: {key: sortableValue, compare: compareValues},
  quality: {key: qualityKey, compare: (one, other) => (one < other ? -1 : Number(one > other))},
  write: {
    key: ({now}) => (now?.write ? WriteRank.indexOf(now.write.state) : null),
    compare: (one, other) => one - other,
  },
  changed: {key: (variable) => variable.changedAt || null, compare: (one, other) => other - one},
};

// Fixed keys are compared once: afterwards a variable has a number in that order.
const ranks = new Map();

function rankOf(column, all) {
  const known = ranks.get(column);
  if (known?.all === all) {
    return known.rank;
  }
  const {key, compare} = Sorts[column];
  const keyed = all.map((variable) => [key(variable), variable]).filter(([value]) => value !== null);
  keyed.sort(([one], [other]) => compare(one, other));
  const rank = new Map();
  let number = 0;
  keyed.forEach(([value, variable], index) => {
    number += index && compare(keyed[index - 1][0], value) ? 1 : 0;
    rank.set(variable, number);
  });
  ranks.set(column, {all, rank});
  return rank;
}

// Sorts a copy. `all` is the list of all variables, `sort` {column, descending} or null for the order of the project.
// Equal keys keep the order of the project.
export function sorted(variables, sort, all = variables) {
  const rule = sort && Sorts[sort.column];
  if (!rule) {
    return variables;
  }
  const rank = rule.fixed ? rankOf(sort.column, all) : null;
  const compare = rule.fixed ? (one, other) => one - other : rule.compare;
  const keyed = variables.map((variable) => [rank ? rank.get(variable) ?? null : rule.key(variable), variable]);
  const direction = sort.descending ? -1 : 1;
  keyed.sort(([one], [other]) => {
    if (one === null || other === null) {
      return (one === null) - (other === null);
    }
    return direction * compare(one, other);
  });
  return keyed.map(([, variable]) => variable);
}

// Whether the order or the choice can become another one by a change of a value.
export const isLive = ({only = [], text = ''}, sort) =>
  only.some((name) => name !== 'writable') || Boolean(text.trim()) || Boolean(sort && !Sorts[sort.column]?.fixed);
