// Asks whether a value is to be written, in a dialog that says what is written where.
//
// ask(lines, action): lines are [title, text], and action the words of the button that agrees. Resolves to true or
// false.

import {make} from './dom.js';

export function ask(lines, action) {
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
