// Dialogs of the schedule editor.

import {make} from './dom.js';

// Asks a question with some answers, [key, text, class]. Resolves to a key; to the first one if it is closed by Escape.
export function ask(title, content, answers) {
  return new Promise((resolve) => {
    const dialog = make('dialog.schedule-dialog', {'aria-label': title}, make('h2', {}, title), content,
      make('div.schedule-buttons', {}, answers.map(([key, text, kind]) =>
        make(`button${kind ? `.${kind}` : ''}`, {type: 'button', onclick: () => dialog.close(key)}, text))));
    dialog.addEventListener('close', () => {
      dialog.remove();
      resolve(dialog.returnValue || answers[0][0]);
    });
    document.body.append(dialog);
    dialog.showModal();
  });
}

// Which days take the entries of a day. Resolves to indices, or null.
export async function askDays(from, names) {
  const boxes = names.map((name, row) => make('input', {type: 'checkbox', id: `schedule-copy-${row}`, disabled: row === from}));
  const choose = (wanted) => () => boxes.forEach((box, row) => { box.checked = row !== from && wanted(row); });
  const content = make('div.schedule-copy', {}, make('p', {}, 'Their entries are replaced.'),
    make('div.schedule-buttons.is-left', {},
      make('button', {type: 'button', onclick: choose((row) => row < 5)}, 'Monday to Friday'),
      make('button', {type: 'button', onclick: choose(() => true)}, 'All days')),
    names.map((name, row) => make('div.schedule-check', {}, boxes[row], make('label', {for: `schedule-copy-${row}`}, name))));
  const answer = await ask(`Copy ${names[from]} to`, content, [['cancel', 'Cancel'], ['copy', 'Copy', 'main']]);
  return answer === 'copy' ? boxes.flatMap((box, row) => (box.checked ? [row] : [])) : null;
}

export function list(kind, texts) {
  return make(`ul.schedule-list.${kind}`, {}, texts.map((text) => make('li', {}, text)));
}

// A list with a title and a coloured edge, which `kind` decides; null without items.
export function remarks(kind, title, items) {
  return items.length ? make(`section.schedule-remarks.is-${kind}`, {}, title, list(`is-${kind}`, items)) : null;
}

export const remarkText = ({place, reason}) => (place ? `${place}: ${reason}` : reason);
