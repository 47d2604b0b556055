// Sets a variable: a field that fits its type, a question that says what is written where, and what became of it.
//
// makeWriteForm(variable, {api, store}) returns {element, draw}; draw() shows the present state of a write. Without
// --page-writes, or for a variable without a write channel, the element says so and has no field.

import {ApiError} from './api.js';
import {Nothing, valueText} from './format.js';
import {announce, make, setAttribute, setText} from './dom.js';
import {entryText, mistakeIn, priorityText} from './write-entry.js';
import {makeSign, setWrite} from './signs.js';

const Explanations = {
  pending: 'Waits for the write, or for the cycle that reads the variable back.',
  written: 'The device holds this value.',
  unconfirmed: 'Was written without a failure, but the device holds another value.',
  differs: 'The device holds another value, because the driver sent that.',
  refused: 'The device has not taken it.',
};

function choiceField(options, now) {
  const field = make('select', {}, options.map(([value, text]) => make('option', {value}, text)));
  field.value = String(now?.value ?? '');
  return field;
}

function makeField(variable) {
  const {kind, states, unit, now} = variable;
  if (kind === 'boolean') {
    const named = ['false', 'true'].map((value, index) => [value, states?.[index] ? `${states[index]} (${value})` : value]);
    return choiceField(named, now);
  }
  if (kind === 'state' && states?.length) {
    return choiceField(states.map((text, index) => [index + 1, text ? `${text} (${index + 1})` : String(index + 1)]), now);
  }
  const isNumber = kind === 'number' || kind === 'state';
  const field = make('input', {type: 'text', inputmode: isNumber ? 'decimal' : null, autocomplete: 'off', spellcheck: 'false',
    placeholder: isNumber && unit ? `Number in ${unit}` : null});
  field.value = now?.value ?? '';
  return field;
}

function readOnlyText(variable, store) {
  if (!variable.writable) {
    return 'Read-only: the project has no Write = true for this variable.';
  }
  return store.session.writes ? '' : 'Read-only: this page cannot write. Start the program with --page-writes to set values here.';
}

// Asks in a dialog; resolves to true or false.
function ask(lines, action) {
  return new Promise((resolve) => {
    const dialog = make('dialog.ask', {'aria-labelledby': 'ask-title', onclose: () => {
      resolve(dialog.returnValue === 'yes');
      dialog.remove();
    }}, make('form', {method: 'dialog'},
      make('h2', {id: 'ask-title'}, 'Write this value?'),
      make('dl.facts', {}, lines.map(([title, text]) => [make('dt', {}, title), make('dd', {}, text)])),
      make('div.buttons', {}, make('button.main', {value: 'yes'}, action), make('button', {value: 'no'}, 'Cancel'))));
    document.body.append(dialog);
    dialog.showModal();
  });
}

export function makeWriteForm(variable, {api, store}) {
  const state = makeSign();
  const reason = make('p.dim');
  const outcome = make('div.outcome', {hidden: true}, make('div', {}, 'Last value set: ', state), reason);
  const readOnly = readOnlyText(variable, store);
  // What the program has taken, until the stream has the state of the write: that takes a cycle.
  let taken = null;
  const draw = () => {
    const cycle = variable.block.now?.cycle ?? 0;
    if (taken && (variable.now?.write?.state === 'pending' || cycle > taken.cycle + 1)) {
      taken = null;
    }
    const write = taken?.write ?? variable.now?.write;
    outcome.hidden = !write;
    if (write) {
      setWrite(state, variable, write);
      setText(reason, [Explanations[write.state], write.reason].filter(Boolean).join(' '));
    }
  };
  draw();
  if (readOnly) {
    return {draw, element: make('section.panel', {'aria-labelledby': 'set-title'}, make('h2', {id: 'set-title'}, 'Set'),
      make('p.dim', {}, readOnly), outcome)};
  }

  const field = makeField(variable);
  setAttribute(field, 'id', 'set-value');
  setAttribute(field, 'aria-describedby', 'set-mistake set-where');
  const mistake = make('p.mistake', {id: 'set-mistake', role: 'alert'});
  const shown = () => (field.tagName === 'SELECT' ? field.selectedOptions[0]?.textContent ?? ''
    : entryText(field.value, variable.unit));
  const complain = (text) => {
    setText(mistake, text);
    setAttribute(field, 'aria-invalid', text ? 'true' : null);
  };

  async function submit(event) {
    event.preventDefault();
    complain(mistakeIn(field.value, variable));
    if (mistake.textContent) {
      field.focus();
      return;
    }
    const {block} = variable;
    const agreed = await ask([
      ['Value', shown()], ['Now', valueText(variable)], ['Variable', `${block.name}.${variable.name}`],
      ['Object', `${variable.object}, ${variable.property}`], ['Device', block.address || Nothing],
      ['Priority', priorityText(block)],
    ], `Write ${shown()}`);
    if (!agreed) {
      announce('Nothing was written.');
      return;
    }
    try {
      const write = await api.write(variable.id, field.value);
      taken = {write, cycle: variable.block.now?.cycle ?? 0};
      draw();
      announce(`${shown()} is pending`);
    } catch (error) {
      complain(error instanceof ApiError ? error.body?.reason ?? error.message : error.message);
      field.focus();
    }
  }

  const element = make('section.panel', {'aria-labelledby': 'set-title'}, make('h2', {id: 'set-title'}, 'Set'),
    make('form.set', {onsubmit: submit},
      make('label', {for: 'set-value'}, 'New value'),
      make('div.set-line', {}, field, field.tagName === 'INPUT' && variable.unit && make('span.dim', {}, variable.unit),
        make('button.main', {type: 'submit'}, 'Set\u2026')),
      mistake, make('p.dim', {id: 'set-where'}, `Priority of the write: ${priorityText(variable.block)}.`)),
    outcome);
  return {draw, element};
}
