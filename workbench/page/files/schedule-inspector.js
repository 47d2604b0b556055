// The form of the selected entry: time and value, and what can be done with it.

import {make, setText} from './dom.js';
import {typedTime} from './schedule-time.js';
import {choices, firstValue, hasUnit, TypeWords, typedValue, valueMistake} from './schedule-value.js';

function field(id, label, control, side) {
  control.id = id;
  return make('div.schedule-field', {}, make('label', {for: id}, label), make('span.schedule-control', {}, control, side));
}

function valueControl(entry, info) {
  const options = choices(entry.type, info);
  if (!options) {
    return make('input', {type: 'text', inputmode: hasUnit(entry.type) ? 'decimal' : null,
      autocomplete: 'off', disabled: entry.type === 'null'});
  }
  const known = options.some(([value]) => value === entry.value) ? options : [...options, [entry.value, entry.value]];
  return make('select', {}, known.map(([value, text]) => make('option', {value}, text)));
}

// `on` has set(change), which returns a mistake or nothing; remove(), add(), back().
export function createInspector(info, on) {
  const element = make('form.schedule-inspector', {'aria-label': 'Selected entry', novalidate: true});
  const mistake = make('p.schedule-mistake', {role: 'alert'});
  let shown = null;
  const controlFor = (id) => element.querySelector(`#${id}`);

  function report(control, text) {
    control.setAttribute('aria-invalid', String(text !== ''));
    setText(mistake, text);
    return text === '';
  }

  function setTime(input) {
    const time = typedTime(input.value);
    if (!time) {
      return report(input, `“${input.value}” is not a time of day: 00:00 to 23:59 is allowed, such as 06:30`);
    }
    return time === shown.entry.time || report(input, on.set({time}) ?? '');
  }

  function setValue(control) {
    const value = typedValue(shown.entry.type, control.value);
    const wrong = valueMistake(shown.entry.type, value);
    return wrong ? report(control, wrong) : value === shown.entry.value || report(control, on.set({value}) ?? '');
  }

  function typeControl() {
    const select = make('select', {}, Object.entries(TypeWords).map(([type, words]) => make('option', {value: type}, words)));
    select.addEventListener('change', () => {
      const type = select.value;
      const {entry} = shown;
      const keeps = !valueMistake(type, entry.value) && hasUnit(type) && hasUnit(entry.type);
      on.set({type, value: type === 'null' ? '' : keeps ? entry.value : firstValue(type, info)});
    });
    return select;
  }

  // A form with several fields and no submit button is not submitted by Enter.
  element.addEventListener('submit', (event) => event.preventDefault());
  function accept() {
    if (setTime(controlFor('schedule-time')) && setValue(controlFor('schedule-value'))) {
      on.back();
    }
  }
  element.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') {
      on.back();
    } else if (event.key === 'Enter' && event.target.matches('input')) {
      event.preventDefault();
      accept();
    }
  });

  function build(entry) {
    const time = make('input.schedule-time-field', {type: 'text', autocomplete: 'off'});
    const value = valueControl(entry, info);
    time.addEventListener('change', () => setTime(time));
    value.addEventListener('change', () => setValue(value));
    element.replaceChildren(make('h3.schedule-selected'), field('schedule-time', 'Time', time),
      field('schedule-value', 'Value', value, hasUnit(entry.type) && info.unit ? make('span', {}, info.unit) : null),
      field('schedule-type', 'Kind of value', typeControl()),
      make('div.schedule-buttons', {}, make('button', {type: 'button', onclick: on.add}, 'Add another'),
        make('button', {type: 'button', onclick: on.remove}, 'Remove entry')), mistake);
  }

  const hasChoice = ({value}) => {
    const {options} = controlFor('schedule-value');
    return !options || [...options].some((option) => option.value === value);
  };

  // Fields stay in the page while they show the same kind of value, so that they keep the focus.
  function show(place, entry, name, remark) {
    const isOther = shown?.entry.type !== entry.type || !hasChoice(entry);
    shown = {place, entry};
    if (isOther) {
      build(entry);
    }
    setText(element.querySelector('.schedule-selected'), name);
    for (const [id, text] of [['schedule-time', entry.time], ['schedule-value', entry.value], ['schedule-type', entry.type]]) {
      const control = controlFor(id);
      control.value = text;
      control.removeAttribute('aria-invalid');
    }
    setText(mistake, remark ?? '');
  }

  function hint(text, wideText) {
    shown = null;
    element.replaceChildren(make('p.dim', {}, text, make('span.schedule-wide', {}, wideText)));
  }
  return {element, show, hint, focus: () => controlFor('schedule-time')?.select()};
}
