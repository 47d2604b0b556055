// Asks the server what it makes of the edited model, and shows its answer: mistakes, losses and changes.
//
// createCheck(api, id, onAnswer, onGo): onAnswer() is called after each answer, onGo(remark) when a remark is chosen.
// Returns:
//   element            a panel for the page
//   ask(model)         asks after a short time without another ask(); only the answer to the last one is used
//   answer             the latest answer {text, changes, losses, mistakes}; null while there is none
//   isWritable         whether it has changes, and no mistake
//   remarks(model)     the mistakes with the place of each in the model
//   stop()             asks no more, and drops an answer that is on its way

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

// A model that the server cannot read gets the answer of one mistake.
const unread = (error, model) => ({text: null, changes: [], losses: [], mistakes: [mistakeOf(error, model)]});

const title = (text) => make('h3', {}, text);

class Check {
  #api;
  #id;
  #onAnswer;
  #onGo;
  #status = make('p.schedule-check-state', {role: 'status', 'aria-live': 'polite'});
  #body = make('div');
  #timer = 0;
  #asked = 0;
  #failure = '';
  answer = null;
  element = make('section.panel.schedule-check-panel', {'aria-label': 'Changes'}, this.#status, this.#body);

  constructor(api, id, onAnswer, onGo) {
    this.#api = api;
    this.#id = id;
    this.#onAnswer = onAnswer;
    this.#onGo = onGo;
  }

  ask(model) {
    clearTimeout(this.#timer);
    const number = ++this.#asked;
    this.answer = null;
    this.#timer = setTimeout(() => this.#request(model, number), Delay);
    setText(this.#status, 'Checking …');
  }

  remarks(model) {
    return (this.answer?.mistakes ?? []).map((remark) => ({...remark, place: placeOf(remark.place, model)}));
  }

  get isWritable() {
    const {answer} = this;
    return answer !== null && answer.mistakes.length === 0 && answer.text !== null && answer.changes.length > 0;
  }

  stop() {
    clearTimeout(this.#timer);
    ++this.#asked;
  }

  async #request(model, number) {
    let answer = null;
    let failure = '';
    try {
      answer = await this.#api.composeSchedule(this.#id, model);
    } catch (error) {
      const isUnread = error.status === 400;
      answer = isUnread ? unread(error, model) : null;
      failure = isUnread ? '' : error.message;
    }
    if (number === this.#asked) {
      this.answer = answer;
      this.#failure = failure;
      this.#draw();
      this.#onAnswer();
    }
  }

  #draw() {
    const {changes, mistakes, losses} = {changes: [], mistakes: [], losses: [], ...this.answer};
    setText(this.#status, this.#stateText(changes, mistakes));
    this.#status.classList.toggle('is-mistake', this.#failure !== '' || mistakes.length > 0);
    this.#body.replaceChildren(...[
      remarks('mistakes', title('Mistakes'), mistakes.map((remark) => this.#link(remark))),
      remarks('changes', title('Changes'), changes),
      remarks('losses', title('The device will not get this as it is shown'), losses.map((loss) => this.#link(loss))),
    ].filter(Boolean));
  }

  #stateText(changes, mistakes) {
    if (this.#failure || !this.answer) {
      return this.#failure || 'Checking …';
    }
    if (mistakes.length) {
      return 'This cannot be written yet';
    }
    if (!changes.length) {
      return 'Nothing to write: this is the schedule of the device';
    }
    return `${changes.length === 1 ? 'One change' : `${changes.length} changes`} to write`;
  }

  #link(remark) {
    return make('button.schedule-link', {type: 'button', onclick: () => this.#onGo(remark)}, remarkText(remark));
  }
}

export const createCheck = (api, id, onAnswer, onGo) => new Check(api, id, onAnswer, onGo);
