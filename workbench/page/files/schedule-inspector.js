// The form of the selected entry: time and value, and what can be done with it.

import {make, setText} from './dom.js';
import {typedTime} from './schedule-time.js';
import {choices, firstValue, hasUnit, TypeWords, typedValue, valueMistake} from './schedule-value.js';

function field(id, label, control, side) {
  control.id = id;
  return make('div.schedule-field', {}, make('label', {for: id}, label), make('span.schedule-control', {}, control, side));
}

const option = ([value, text]) => make('option', {value}, text);

function valueControl(entry, info) {
  const options = choices(entry.type, info);
  if (!options) {
    return make('input', {type: 'text', inputmode: hasUnit(entry.type) ? 'decimal' : null, autocomplete: 'off',
      disabled: entry.type === 'null'});
  }
  const isKnown = options.some(([value]) => value === entry.value);
  return make('select', {}, (isKnown ? options : [...options, [entry.value, entry.value]]).map(option));
}

// Whether the control can show the value: an input all, a select those that it lists.
const canShow = (control, value) => !control.options || [...control.options].some((each) => each.value === value);

// `on` has set(change), which returns a mistake or nothing; remove(), add(), back().
export class Inspector {
  #shown = null;

  constructor(info, on) {
    Object.assign(this, {info, on});
    this.element = make('form.schedule-inspector', {'aria-label': 'Selected entry', novalidate: true});
    this.mistake = make('p.schedule-mistake', {role: 'alert'});
    this.name = make('h3.schedule-selected');
    this.element.addEventListener('submit', (event) => event.preventDefault());
    this.element.addEventListener('keydown', (event) => this.#onKey(event));
  }

  // The fields stay in the page while they show the same kind of value, so that they keep the focus.
  show(entry, name, remark) {
    // What was typed and is wrong stays until it is typed again.
    if (this.#shown === entry && this.element.querySelector('[aria-invalid="true"]')) {
      return;
    }
    if (this.#shown?.type !== entry.type || !canShow(this.value, entry.value)) {
      this.#build(entry);
    }
    this.#shown = entry;
    for (const [control, text] of [[this.time, entry.time], [this.value, entry.value], [this.type, entry.type]]) {
      control.value = text;
      control.removeAttribute('aria-invalid');
    }
    setText(this.name, name);
    setText(this.mistake, remark ?? '');
  }

  hint(text, wideText) {
    this.#shown = null;
    this.element.replaceChildren(make('p.dim', {}, text, make('span.schedule-wide', {}, wideText)));
  }

  focus() {
    this.time?.select();
  }

  #build(entry) {
    const unit = hasUnit(entry.type) && this.info.unit ? make('span', {}, this.info.unit) : null;
    this.time = make('input.schedule-time-field', {type: 'text', autocomplete: 'off', onchange: () => this.#setTime()});
    this.value = valueControl(entry, this.info);
    this.value.addEventListener('change', () => this.#setValue());
    this.type = make('select', {onchange: () => this.#setType()}, Object.entries(TypeWords).map(option));
    this.element.replaceChildren(this.name, field('schedule-time', 'Time', this.time),
      field('schedule-value', 'Value', this.value, unit),
      field('schedule-type', 'Kind of value', this.type), make('div.schedule-buttons', {},
        make('button', {type: 'button', onclick: this.on.add}, 'Add another'),
        make('button', {type: 'button', onclick: this.on.remove}, 'Remove entry')), this.mistake);
  }

  #onKey(event) {
    const isAccepted = event.key === 'Enter' && event.target.matches('input');
    if (isAccepted) {
      event.preventDefault();
    }
    if (event.key === 'Escape' || (isAccepted && this.#setTime() && this.#setValue())) {
      this.on.back();
    }
  }

  // Returns whether nothing is wrong.
  #report(control, mistake) {
    control.setAttribute('aria-invalid', String(mistake !== ''));
    setText(this.mistake, mistake);
    return mistake === '';
  }

  #setTime() {
    const time = typedTime(this.time.value);
    if (!time) {
      return this.#report(this.time, `“${this.time.value}” is not a time of day: 00:00 to 23:59 is allowed, such as 06:30`);
    }
    return time === this.#shown.time || this.#report(this.time, this.on.set({time}) ?? '');
  }

  #setValue() {
    const value = typedValue(this.#shown.type, this.value.value);
    const mistake = valueMistake(this.#shown.type, value);
    if (mistake) {
      return this.#report(this.value, mistake);
    }
    return value === this.#shown.value || this.#report(this.value, this.on.set({value}) ?? '');
  }

  #setType() {
    const type = this.type.value;
    const {type: before, value} = this.#shown;
    const isKept = hasUnit(type) && hasUnit(before) && !valueMistake(type, value);
    this.on.set({type, value: type === 'null' ? '' : isKept ? value : firstValue(type, this.info)});
  }
}
