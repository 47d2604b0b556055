// What the page knows of the plant, and how it follows the stream.
import {strict as assert} from 'node:assert';
import {beforeEach, test} from 'node:test';

import {blockState, createStore} from '../../../workbench/page/files/store.js';

const variable = (id, name) => ({id, name, object: `analog-input ${id}`, property: 'present-value', kind: 'number', writable: false});
const plant = {blocks: [
  {id: 0, name: 'AHU', variables: [variable(0, 'Supply'), variable(1, 'Return')]},
  {id: 1, name: 'Chiller', variables: [variable(2, 'Supply')]},
]};
const good = (name, value, more = {}) => ({name, value, status: '0x00000000', quality: 'Good', time: 't', ...more});
const block = (name, variables, more = {}) => ({block: name, cycle: 1, fault: false, standby: false, causes: [], variables, ...more});

let store;
let seen;

beforeEach(() => {
  store = createStore(() => 1000);
  store.load({}, plant);
  seen = [];
  store.on('values', (variables) => seen.push(variables.map(({id}) => id)));
});

test('a variable is found by the name of its block and its own', () => {
  store.apply(block('Chiller', [good('Supply', 6)]));
  assert.equal(store.variables[2].now.value, 6);
  assert.equal(store.variables[0].now, null);
  assert.equal(store.variables[2].block.now.cycle, 1);
});

test('outlets replace the ones before, and each time is reported', () => {
  let times = 0;
  store.on('outlets', () => { times += 1; });
  assert.deepEqual(store.outlets, []);
  store.setOutlets([{outlet: 'mqtt', health: 'good'}]);
  store.setOutlets([{outlet: 'mqtt', health: 'waiting'}]);
  assert.deepEqual(store.outlets.map(({health}) => health), ['waiting']);
  assert.equal(times, 2);
});

test('only what has changed is reported, and only a change has a time', () => {
  store.apply(block('AHU', [good('Supply', 21), good('Return', 20)]));
  store.apply(block('AHU', [good('Supply', 21, {time: 'later'}), good('Return', 20.5)], {time: 'T'}));
  assert.deepEqual(seen, [[0, 1], [1]]);
  assert.deepEqual(store.variables.map(({changedAt}) => changedAt), [0, 1000, 0]);
  assert.equal(store.variables[1].changedTime, 'T');
  assert.equal(store.variables[0].now.time, 'later');
});

test('a write that goes on and a suspect that ends are changes', () => {
  store.apply(block('AHU', [good('Supply', 21, {write: {state: 'pending', value: 22}, suspect: 'device: unknown-object'})]));
  store.apply(block('AHU', [good('Supply', 21, {write: {state: 'pending', value: 22}, suspect: 'device: unknown-object'})]));
  store.apply(block('AHU', [good('Supply', 21, {write: {state: 'refused', value: 22}, suspect: 'device: unknown-object'})]));
  store.apply(block('AHU', [good('Supply', 21, {write: {state: 'refused', value: 22}})]));
  assert.deepEqual(seen, [[0], [0], [0]]);
});

test('counts follow each change, of the plant and of each block', () => {
  store.apply(block('AHU', [good('Supply', 21, {status: '0x808C0000'}), good('Return', 20, {write: {state: 'pending', value: 1}})]));
  store.apply(block('Chiller', [good('Supply', 6, {suspect: 'device: unknown-object'})]));
  assert.deepEqual(store.counts, {bad: 1, uncertain: 0, suspect: 1, pending: 1, failed: 0});
  store.apply(block('AHU', [good('Supply', 21), good('Return', 20, {write: {state: 'differs', value: 1}})]));
  assert.deepEqual(store.counts, {bad: 0, uncertain: 0, suspect: 1, pending: 0, failed: 1});
  assert.deepEqual(store.blocks[0].counts, {bad: 0, uncertain: 0, suspect: 0, pending: 0, failed: 1});
});

test('a block that the project does not have is ignored', () => {
  store.apply(block('Boiler', [good('Supply', 21)]));
  assert.deepEqual(seen, []);
});

test('the state of a block is reported when it becomes another one', () => {
  const states = [];
  store.on('state', (record, was) => states.push([record.name, was, blockState(record.now)]));
  store.apply(block('AHU', [], {cycle: 0}));
  store.apply(block('AHU', []));
  store.apply(block('AHU', [], {fault: true}));
  store.apply(block('AHU', [], {fault: true, standby: true}));
  assert.deepEqual(states, [['AHU', 'waiting', 'ok'], ['AHU', 'ok', 'fault'], ['AHU', 'fault', 'standby']]);
});

test('events are in the order of their ids, each of them once', () => {
  const reported = [];
  store.on('event', ({id}) => reported.push(id));
  [2, 4, 2, 1, 4, 3, 1].forEach((id) => store.addEvent({id}));
  assert.deepEqual(store.events.map(({id}) => id), [1, 2, 3, 4]);
  assert.deepEqual(reported, [2, 4, 1, 3]);
});

test('a listener that was removed is not called', () => {
  const remove = store.on('event', () => assert.fail());
  remove();
  store.addEvent({id: 1});
});
