// What a person types to set a variable, before it goes to the program, which decides. Pure functions.

const NumberPattern = /^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?(\s*[^\d\s.,].*)?$/i;
const SpecialPattern = /^(nan|[+-]?inf(inity)?)$/i;

// What is wrong with the text, for people; empty if it may be sent. A number may have its unit after it.
export function mistakeIn(text, {kind}) {
  const entry = text.trim();
  if (kind === 'text') {
    return '';
  }
  if (!entry) {
    return 'Give a value first.';
  }
  const isNumber = kind === 'number' || kind === 'state';
  const isWrong = isNumber && !NumberPattern.test(entry) && !SpecialPattern.test(entry);
  return isWrong ? `"${entry}" is not a number such as 21.5.` : '';
}

// The text as it is shown before it is written: with the unit, once.
export function entryText(text, unit) {
  const entry = text.trim();
  return unit && /[\d.]$/.test(entry) ? `${entry} ${unit}` : entry;
}

// "8", and what it means that there is none. A program that does not say it has one perhaps.
export function priorityText({priority}) {
  if (priority === undefined) {
    return 'as the project has it';
  }
  if (priority === null) {
    return 'none';
  }
  return priority === 0 ? 'the default of the device' : String(priority);
}
