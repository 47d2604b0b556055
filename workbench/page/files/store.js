// What the page knows of the plant: the blocks and variables of the project, their latest state, and the events.
//
// `blocks` and `variables` are records by id. A variable has the fields of /api/plant, `block`, its record, and `now`:
// the object of the latest stream event (name, value, quality, status, time, write, suspect...), or null before the
// first. A block has the fields of /api/plant, `variables`, its records, and `now`: the same without the variables.
// Records keep their identity; `now` is replaced, so a record that has changed has another `now`. `changedAt`, in ms of
// this browser, and `changedTime`, in ISO 8601 of the plant, are of the latest change that the page has seen; 0 and
// null before one.
//
// `counts` of the plant and of each block are kept up to date by each change, in a time that depends on what has
// changed only: variables that are bad, uncertain, suspect, and writes that are pending or failed.
//
// `outlets` are those of /api/values: what the run feeds besides this page.
//
// load(session, plant) begins with /api/session and /api/plant. The connection feeds the objects of the stream to
// apply(), addEvent(), setOutlets() and skip(), and its own state to connect().
//
// on(kind, listener) returns a function that removes the listener. Kinds and what a listener is called with:
//   'plant'       ()            after load()
//   'values'      (variables)   an array of the records that have changed: value, quality, suspect or write
//   'times'       (variables)   records that only have another time; no one has to draw them at once
//   'block'       (block)       after each cycle of a block
//   'state'       (block, was)  the state of a block is another one: 'ok', 'fault', 'standby' or 'waiting'
//   'event'       (event)       a new event, as in /api/events
//   'outlets'     ()            another state or figure of an outlet
//   'connection'  (connection)  {state, since, reason}; see connection.js
//   'lost'        (updates)     so many updates were skipped

import {qualityKind} from './format.js';

const MostEvents = 5000;

const NoCounts = () => ({bad: 0, uncertain: 0, suspect: 0, pending: 0, failed: 0});

export function blockState(now) {
  if (!now) {
    return 'waiting';
  }
  if (now.standby) {
    return 'standby';
  }
  if (now.fault) {
    return 'fault';
  }
  return now.cycle ? 'ok' : 'waiting';
}

// What a variable contributes to the counts.
export function marksOf(now) {
  const kind = now ? qualityKind(now.status) : 'good';
  const write = now?.write?.state;
  return {
    bad: kind === 'bad',
    uncertain: kind === 'uncertain',
    suspect: Boolean(now?.suspect),
    pending: write === 'pending',
    failed: write === 'refused' || write === 'differs' || write === 'unconfirmed',
  };
}

function sameWrite(one, other) {
  return one === other || (one && other && one.state === other.state && one.value === other.value &&
    one.reason === other.reason && one.device === other.device);
}

export function isChange(was, now) {
  return was.value !== now.value || was.status !== now.status || was.suspect !== now.suspect ||
    !sameWrite(was.write, now.write);
}

function count(counts, marks, step) {
  for (const name in counts) {
    if (marks[name]) {
      counts[name] += step;
    }
  }
}

class Store {
  session = null;
  plant = null;
  blocks = [];
  variables = [];
  events = [];
  outlets = [];
  counts = NoCounts();
  #blocksByName = new Map();
  #listeners = new Map();
  #clock;

  constructor(clock) {
    this.#clock = clock;
    this.connection = {state: 'connecting', since: clock(), reason: ''};
  }

  on(kind, listener) {
    if (!this.#listeners.has(kind)) {
      this.#listeners.set(kind, new Set());
    }
    this.#listeners.get(kind).add(listener);
    return () => this.#listeners.get(kind).delete(listener);
  }

  load(session, plant) {
    this.session = session;
    this.plant = plant;
    this.variables = [];
    this.counts = NoCounts();
    this.#blocksByName.clear();
    this.blocks = plant.blocks.map((described) => this.#addBlock(described));
    this.#emit('plant');
  }

  // The object of `block` or `changes`.
  apply({variables, ...now}) {
    const block = this.#blocksByName.get(now.block);
    if (!block) {
      return;
    }
    const was = blockState(block.now);
    block.now = now;
    this.#applyStates(block, variables);
    this.#emit('block', block);
    if (blockState(now) !== was) {
      this.#emit('state', block, was);
    }
  }

  // Events are kept in the order of their ids, whatever the order in which they come; one that is known already is
  // ignored.
  addEvent(event) {
    const before = this.events.findLastIndex(({id}) => id <= event.id);
    if (this.events[before]?.id === event.id) {
      return;
    }
    this.events.splice(before + 1, 0, event);
    if (this.events.length > MostEvents) {
      this.events.splice(0, this.events.length - MostEvents);
    }
    this.#emit('event', event);
  }

  setOutlets(outlets) {
    this.outlets = outlets;
    this.#emit('outlets');
  }

  skip(updates) {
    this.#emit('lost', updates);
  }

  connect(state, reason = '') {
    if (state !== this.connection.state || reason !== this.connection.reason) {
      this.connection = {state, since: this.#clock(), reason};
      this.#emit('connection', this.connection);
    }
  }

  #emit(kind, ...values) {
    this.#listeners.get(kind)?.forEach((listener) => listener(...values));
  }

  #addBlock(described) {
    const block = {...described, now: null, counts: NoCounts(), byName: new Map()};
    block.variables = described.variables.map((variable) =>
      ({...variable, block, now: null, changedAt: 0, changedTime: null}));
    for (const variable of block.variables) {
      block.byName.set(variable.name, variable);
      this.variables[variable.id] = variable;
    }
    this.#blocksByName.set(block.name, block);
    return block;
  }

  #applyStates(block, states) {
    const changed = [];
    const aged = [];
    for (const state of states) {
      const variable = block.byName.get(state.name);
      if (variable) {
        (this.#update(variable, state) ? changed : aged).push(variable);
      }
    }
    if (changed.length) {
      this.#emit('values', changed);
    }
    if (aged.length) {
      this.#emit('times', aged);
    }
  }

  // Returns whether somebody has to draw it.
  #update(variable, now) {
    const was = variable.now;
    const changed = !was || isChange(was, now);
    if (changed) {
      this.#recount(variable, now);
    }
    if (was && changed) {
      variable.changedAt = this.#clock();
      variable.changedTime = variable.block.now.time;
    }
    variable.now = now;
    return changed;
  }

  #recount(variable, now) {
    const was = marksOf(variable.now);
    const is = marksOf(now);
    for (const counts of [this.counts, variable.block.counts]) {
      count(counts, was, -1);
      count(counts, is, 1);
    }
  }
}

export const createStore = (clock = () => Date.now()) => new Store(clock);
