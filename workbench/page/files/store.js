// What the page knows of the plant: the blocks and variables of the project, their latest state, and the events.
//
// `blocks` and `variables` are records by id. A variable has the fields of /api/plant, `block`, its record, and `now`: the
// object of the latest stream event (name, value, quality, status, time, write, suspect...), or null before the first. A
// block has the fields of /api/plant, `variables`, its records, and `now`: the same without the variables. Records keep
// their identity; `now` is replaced, so a record that has changed has another `now`. `changedAt`, in ms of this browser,
// and `changedTime`, in ISO 8601 of the plant, are of the latest change that the page has seen; 0 and null before one.
//
// `counts` of the plant and of each block are kept up to date by each change, in a time that depends on what has changed
// only: variables that are bad, uncertain, suspect, and writes that are pending or failed.
//
// on(kind, listener) returns a function that removes the listener. Kinds and what a listener is called with:
//   'plant'       ()            after load()
//   'values'      (variables)   an array of the records that have changed: value, quality, suspect or write
//   'times'       (variables)   records that only have another time; no one has to draw them at once
//   'block'       (block)       after each cycle of a block
//   'state'       (block, was)  the state of a block is another one: 'ok', 'fault', 'standby' or 'waiting'
//   'event'       (event)       a new event, as in /api/events
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

export function createStore(clock = () => Date.now()) {
  const listeners = new Map();
  const blocksByName = new Map();
  const emit = (kind, ...values) => listeners.get(kind)?.forEach((listener) => listener(...values));

  function addBlock(described) {
    const block = {...described, now: null, counts: NoCounts(), byName: new Map()};
    block.variables = described.variables.map((variable) =>
      ({...variable, block, now: null, changedAt: 0, changedTime: null}));
    for (const variable of block.variables) {
      block.byName.set(variable.name, variable);
      store.variables[variable.id] = variable;
    }
    blocksByName.set(block.name, block);
    return block;
  }

  function recount(variable, now) {
    const was = marksOf(variable.now);
    const is = marksOf(now);
    for (const counts of [store.counts, variable.block.counts]) {
      count(counts, was, -1);
      count(counts, is, 1);
    }
  }

  // Returns whether somebody has to draw it.
  function update(variable, now) {
    const was = variable.now;
    const changed = !was || isChange(was, now);
    if (changed) {
      recount(variable, now);
    }
    if (was && changed) {
      variable.changedAt = clock();
      variable.changedTime = variable.block.now.time;
    }
    variable.now = now;
    return changed;
  }

  const store = {
    session: null,
    plant: null,
    blocks: [],
    variables: [],
    events: [],
    counts: NoCounts(),
    connection: {state: 'connecting', since: clock(), reason: ''},

    on(kind, listener) {
      if (!listeners.has(kind)) {
        listeners.set(kind, new Set());
      }
      listeners.get(kind).add(listener);
      return () => listeners.get(kind).delete(listener);
    },

    load(session, plant) {
      store.session = session;
      store.plant = plant;
      store.variables = [];
      store.counts = NoCounts();
      blocksByName.clear();
      store.blocks = plant.blocks.map(addBlock);
      emit('plant');
    },

    // The object of `block` or `changes`.
    apply({variables, ...now}) {
      const block = blocksByName.get(now.block);
      if (!block) {
        return;
      }
      const was = blockState(block.now);
      block.now = now;
      const changed = [];
      const aged = [];
      for (const state of variables) {
        const variable = block.byName.get(state.name);
        if (variable) {
          (update(variable, state) ? changed : aged).push(variable);
        }
      }
      if (changed.length) {
        emit('values', changed);
      }
      if (aged.length) {
        emit('times', aged);
      }
      emit('block', block);
      if (blockState(now) !== was) {
        emit('state', block, was);
      }
    },

    // Events are kept in the order of their ids, whatever the order in which they come; one that is known already is
    // ignored.
    addEvent(event) {
      const before = store.events.findLastIndex(({id}) => id <= event.id);
      if (store.events[before]?.id === event.id) {
        return;
      }
      store.events.splice(before + 1, 0, event);
      if (store.events.length > MostEvents) {
        store.events.splice(0, store.events.length - MostEvents);
      }
      emit('event', event);
    },

    skip(updates) {
      emit('lost', updates);
    },

    connect(state, reason = '') {
      if (state !== store.connection.state || reason !== store.connection.reason) {
        store.connection = {state, since: clock(), reason};
        emit('connection', store.connection);
      }
    },
  };
  return store;
}
