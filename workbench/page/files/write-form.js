// Sets a variable: a field that fits its type, a question that says what is written where, and what became of it.
//
// makeWriteForm(variable, {api, store}) returns {element, draw}; draw() shows the present state of a write. Without
// --page-writes, or for a variable without a write channel, the element says so and has no field.

import {ApiError} from './api.js';
import {Nothing, valueText} from './format.js';
import {announce, make, setAttribute, setText} from './dom.js';
import {mistakeIn, priorityText} from './write-entry.js';
import {fieldText, makeField} from './write-field.js';
import {ask} from './write-question.js';
import {makeSign, setWrite} from './signs.js';

const Explanations = {
  pending: 'Waits for the write, or for the cycle that reads the variable back.',
  written: 'The device holds this value.',
  unconfirmed: 'Was written without a failure, but the device holds another value.',
  differs: 'The device holds another value, because the driver sent that.',
  refused: 'The device has not taken it.',
};

function readOnlyText(variable, store) {
  if (!variable.writable) {
    return 'Read-only: the project has no Write = true for this variable.';
  }
  return store.session.writes ? ''
    : 'Read-only: this page cannot write. Start the program with --page-writes to set values here.';
}

// What became of the value that was set last.
class WriteOutcome {
  #variable;
  #state = makeSign();
  #reason = make('p.dim');
  element = make('div.outcome', {hidden: true}, make('div', {}, 'Last value set: ', this.#state), this.#reason);
  // What the program has taken, until the stream has the state of the write: that takes a cycle.
  #taken = null;

  constructor(variable) {
    this.#variable = variable;
    this.draw();
  }

  take(write) {
    this.#taken = {write, cycle: this.#variable.block.now?.cycle ?? 0};
    this.draw();
  }

  draw() {
    const {now, block} = this.#variable;
    if (this.#taken && (now?.write?.state === 'pending' || (block.now?.cycle ?? 0) > this.#taken.cycle + 1)) {
      this.#taken = null;
    }
    const write = this.#taken?.write ?? now?.write;
    this.element.hidden = !write;
    if (write) {
      setWrite(this.#state, this.#variable, write);
      setText(this.#reason, [Explanations[write.state], write.reason].filter(Boolean).join(' '));
    }
  }
}

// The form for a new value. What the program has taken goes to the outcome.
class WriteEntry {
  #variable;
  #api;
  #outcome;
  #field;
  #mistake = make('p.mistake', {id: 'set-mistake', role: 'alert'});

  constructor(variable, api, outcome) {
    this.#variable = variable;
    this.#api = api;
    this.#outcome = outcome;
    this.#field = makeField(variable);
    setAttribute(this.#field, 'id', 'set-value');
    setAttribute(this.#field, 'aria-describedby', 'set-mistake set-where');
    const unit = this.#field.tagName === 'INPUT' && variable.unit;
    this.element = make('form.set', {onsubmit: (event) => this.#submit(event)},
      make('label', {for: 'set-value'}, 'New value'),
      make('div.set-line', {}, this.#field, unit && make('span.dim', {}, unit),
        make('button.main', {type: 'submit'}, 'Set\u2026')),
      this.#mistake, make('p.dim', {id: 'set-where'}, `Priority of the write: ${priorityText(variable.block)}.`));
  }

  get #text() {
    return fieldText(this.#field, this.#variable.unit);
  }

  async #submit(event) {
    event.preventDefault();
    const mistake = mistakeIn(this.#field.value, this.#variable);
    this.#complain(mistake);
    if (mistake) {
      this.#field.focus();
    } else if (await this.#isAgreed()) {
      await this.#write();
    } else {
      announce('Nothing was written.');
    }
  }

  #isAgreed() {
    const {name, block, object, property} = this.#variable;
    return ask([
      ['Value', this.#text], ['Now', valueText(this.#variable)], ['Variable', `${block.name}.${name}`],
      ['Object', `${object}, ${property}`], ['Device', block.address || Nothing], ['Priority', priorityText(block)],
    ], `Write ${this.#text}`);
  }

  async #write() {
    try {
      this.#outcome.take(await this.#api.write(this.#variable.id, this.#field.value));
      announce(`${this.#text} is pending`);
    } catch (error) {
      this.#complain(error instanceof ApiError ? error.body?.reason ?? error.message : error.message);
      this.#field.focus();
    }
  }

  #complain(text) {
    setText(this.#mistake, text);
    setAttribute(this.#field, 'aria-invalid', text ? 'true' : null);
  }
}

export function makeWriteForm(variable, {api, store}) {
  const outcome = new WriteOutcome(variable);
  const readOnly = readOnlyText(variable, store);
  const content = readOnly ? make('p.dim', {}, readOnly) : new WriteEntry(variable, api, outcome).element;
  return {
    draw: () => outcome.draw(),
    element: make('section.panel', {'aria-labelledby': 'set-title'}, make('h2', {id: 'set-title'}, 'Set'), content,
      outcome.element),
  };
}
