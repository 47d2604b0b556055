// Asks the server what it makes of the edited model, and shows its answer: mistakes, losses and changes.

import {make, setText} from './dom.js';
import {remarks, remarkText} from './schedule-dialog.js';
import {rows} from './schedule-model.js';
import {placeOf} from './schedule-parts.js';
import {weekdays} from './schedule-time.js';

const Delay = 250;
const Path = /^(?:model: )?((?:days|events)[^\s:]*): /;

export const withoutPath = (message) => message.replace(Path, '');

// A model that cannot be read: "model: days[0][2].value: the reason", for people "Monday 06:00: the reason".
function mistakeOf({message}, model) {
  const path = Path.exec(message)?.[1] ?? '';
  const at = path && placeOf(path, model);
  const reason = withoutPath(message);
  if (!at) {
    return {place: '', reason};
  }
  const name = model.kind === 'weekly' ? weekdays[at.row] : `event ${at.row + 1}`;
  const entry = at.index === null ? null : rows(model)[at.row]?.[at.index];
  return {place: entry ? `${name}${model.kind === 'weekly' ? '' : ','} ${entry.time}` : name, reason};
}

// onAnswer() is called after each answer; onGo(remark) when a remark is chosen.
export function createCheck(api, id, onAnswer, onGo) {
  const status = make('p.schedule-check-state', {role: 'status', 'aria-live': 'polite'});
  const body = make('div');
  const element = make('section.panel.schedule-check-panel', {'aria-label': 'Changes'}, status, body);
  let timer = 0;
  let asked = 0;
  let answer = null;
  let failure = '';

  const link = (remark) => make('button.schedule-link', {type: 'button', onclick: () => onGo(remark)}, remarkText(remark));

  function draw() {
    const changes = answer?.changes ?? [];
    const mistakes = answer?.mistakes ?? [];
    const count = changes.length === 1 ? 'One change' : `${changes.length} changes`;
    setText(status, failure || (!answer ? 'Checking …' : mistakes.length ? 'This cannot be written yet' :
      changes.length ? `${count} to write` : 'Nothing to write: this is the schedule of the device'));
    status.classList.toggle('is-mistake', failure !== '' || mistakes.length > 0);
    const title = (text) => make('h3', {}, text);
    body.replaceChildren(...[
      remarks('mistakes', title('Mistakes'), mistakes.map(link)), remarks('changes', title('Changes'), changes),
      remarks('losses', title('The device will not get this as it is shown'), (answer?.losses ?? []).map(link)),
    ].filter(Boolean));
  }

  async function request(model, number) {
    let result = null;
    let reason = '';
    try {
      result = await api.composeSchedule(id, model);
    } catch (error) {
      const isUnread = error.status === 400;
      result = isUnread ? {text: null, changes: [], losses: [], mistakes: [mistakeOf(error, model)]} : null;
      reason = isUnread ? '' : error.message;
    }
    if (number === asked) {
      answer = result;
      failure = reason;
      draw();
      onAnswer();
    }
  }

  return {
    element,
    ask(model) {
      clearTimeout(timer);
      const number = ++asked;
      answer = null;
      timer = setTimeout(() => request(model, number), Delay);
      setText(status, 'Checking …');
    },
    // The mistakes with the place of each in the model.
    remarks: (model) => (answer?.mistakes ?? []).map((remark) => ({...remark, place: placeOf(remark.place, model)})),
    get answer() { return answer; },
    get isWritable() {
      return answer !== null && answer.mistakes.length === 0 && answer.text !== null && answer.changes.length > 0;
    },
    stop() {
      clearTimeout(timer);
      ++asked;
    },
  };
}
