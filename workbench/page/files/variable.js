// #/variables/ID: one variable. Its value in large, trend, setting, what the project says of it, the device's own data,
// the latest writes and log lines. A schedule has its view, with a heading of its own, in place of value, trend and
// setting.

import {qualityKind} from './format.js';
import {makeDeviceData} from './device-data.js';
import {PresentValue} from './present-value.js';
import {makeTrend} from './trend.js';
import {VariableRecords, makeFacts} from './variable-records.js';
import {makeWriteForm} from './write-form.js';
import {make} from './dom.js';

const RefreshMs = 400;
const hasTrend = ({kind}) => kind === 'number' || kind === 'state' || kind === 'boolean';
const isSchedule = ({kind}) => kind === 'weekly' || kind === 'exception';

const numberOf = (value) => (typeof value === 'number' ? value : typeof value === 'boolean' ? Number(value) : null);

const makeHead = ({name, description}) =>
  make('div.page-head', {}, make('h1', {}, name), description && make('p.dim', {}, description));

const makeCrumbs = ({block}) => make('nav.crumbs', {'aria-label': 'Where this is'},
  make('a', {href: '#/variables'}, 'Variables'), ' / ',
  make('a', {href: `#/variables?block=${block.id}`}, block.name));

class VariableView {
  #variable;
  #context;
  #now;
  #form;
  #trend;
  #device;
  #records = new VariableRecords();
  #unmountSchedule = null;
  #isMounted = true;
  #timer = 0;

  constructor(variable, context) {
    const {api} = context;
    this.#variable = variable;
    this.#context = context;
    this.#now = new PresentValue(variable);
    this.#form = isSchedule(variable) ? null : makeWriteForm(variable, context);
    this.#trend = hasTrend(variable) ? makeTrend(variable, api) : null;
    this.#device = makeDeviceData(variable, api);
  }

  // Returns a function that ends it.
  mount(element) {
    const variable = this.#variable;
    const schedule = isSchedule(variable) ? make('div.schedule-place') : null;
    element.append(makeCrumbs(variable), schedule ?? makeHead(variable), make('div.variable', {},
      make('div.side', {}, schedule ? null : this.#now.element, this.#form?.element, makeFacts(variable)),
      make('div.wide', {}, this.#trend?.element, this.#device.element,
        make('div.pair', {}, this.#records.elements))));
    this.#now.draw(false);
    this.#readRecords();
    if (schedule) {
      this.#mountSchedule(schedule);
    }
    const {store} = this.#context;
    const ends = [
      store.on('values', (variables) => variables.includes(variable) && this.#followValue()),
      store.on('block', (block) => block === variable.block && this.#followBlock()),
    ];
    return () => {
      ends.forEach((end) => end());
      this.#unmount();
    };
  }

  #unmount() {
    this.#isMounted = false;
    clearTimeout(this.#timer);
    this.#trend?.unmount();
    this.#device.unmount();
    this.#unmountSchedule?.();
  }

  async #mountSchedule(element) {
    const view = await import('./schedule-view.js');
    if (this.#isMounted) {
      const {api, store} = this.#context;
      this.#unmountSchedule = view.mount(element, api, store, this.#variable.id);
    }
  }

  async #readRecords() {
    this.#timer = 0;
    try {
      const answer = await this.#context.api.variable(this.#variable.id);
      if (this.#isMounted) {
        this.#records.show(answer);
      }
    } catch {
      // The lists stay as they were; the connection says what is wrong.
    }
  }

  #followValue() {
    this.#now.draw(true);
    this.#form?.draw();
    const {now, block} = this.#variable;
    this.#trend?.add(Date.parse(now.time ?? block.now.time), numberOf(now.value), qualityKind(now.status));
    this.#timer ||= setTimeout(() => this.#readRecords(), RefreshMs);
  }

  #followBlock() {
    this.#now.draw(false);
    this.#form?.draw();
    this.#trend?.advance(Date.parse(this.#variable.block.now.time));
  }
}

export function mount(element, {api, store, id}) {
  const variable = store.variables[id];
  if (!variable) {
    element.append(make('h1', {}, 'Variable'), make('p', {}, `The project has no variable ${id}.`));
    return () => {};
  }
  return new VariableView(variable, {api, store}).mount(element);
}
