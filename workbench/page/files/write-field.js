// The field for a new value of a variable, which fits its type: a choice of states, or a text. It begins with the
// present value.

import {make} from './dom.js';
import {entryText} from './write-entry.js';

// A state is shown with its number, or with true or false.
const stateOption = (value, text) => [value, text ? `${text} (${value})` : String(value)];

function choiceField(options, now) {
  const field = make('select', {}, options.map(([value, text]) => make('option', {value}, text)));
  field.value = String(now?.value ?? '');
  return field;
}

export function makeField(variable) {
  const {kind, states, unit, now} = variable;
  if (kind === 'boolean') {
    return choiceField([stateOption('false', states?.[0]), stateOption('true', states?.[1])], now);
  }
  if (kind === 'state' && states?.length) {
    return choiceField(states.map((text, index) => stateOption(index + 1, text)), now);
  }
  const isNumber = kind === 'number' || kind === 'state';
  const field = make('input', {
    type: 'text', inputmode: isNumber ? 'decimal' : null, autocomplete: 'off', spellcheck: 'false',
    placeholder: isNumber && unit ? `Number in ${unit}` : null,
  });
  field.value = now?.value ?? '';
  return field;
}

// What the field has, for people: a state by its text, a number with its unit.
export const fieldText = (field, unit) =>
  (field.tagName === 'SELECT' ? field.selectedOptions[0]?.textContent ?? '' : entryText(field.value, unit));
