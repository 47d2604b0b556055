// A variable's page: setting its value.
import {strict as assert} from 'node:assert';

import {Table} from '../support/table.mjs';
import {until, untilText} from '../support/wait.mjs';

const SETPOINT = '2,1,85';
const PRIORITIES = '2,1,87';

async function openVariable(visitor, name) {
  const {page} = visitor;
  await visitor.go('#/variables');
  await new Table(page).row(name).getByRole('link', {name, exact: true}).click();
  await page.getByRole('heading', {level: 1, name, exact: true}).waitFor();
  return page.getByRole('region', {name: 'Set'});
}

async function set(page, region, value) {
  await region.getByLabel('New value').fill(value);
  await region.getByRole('button', {name: /^Set/}).click();
  const question = page.getByRole('dialog', {name: /Write/});
  await untilText(question, /priority:? 8/i, 'the question before the write');
  await question.getByRole('button', {name: /^Write/}).click();
  await question.waitFor({state: 'detached'});
}

export async function a_value_arrives_in_the_device({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  const region = await openVariable(visitor, 'Setpoint');
  await set(page, region, '24.5');
  await untilText(region, /24\.5 °C written/, 'the state of the write');
  await untilText(page.getByRole('region', {name: 'Present value'}), '24.5 °C', 'the value');
  await untilText(page.getByRole('region', {name: 'Last writes'}), '24.5', 'the list of writes');
  const [value, priorities] = await plant.read('ahu', SETPOINT, PRIORITIES);
  assert.equal(value, '24.5');
  assert.equal(priorities.split(', ')[7], '24.5', `the priority array is ${priorities}`);

  await visitor.go('#/variables');
  await untilText(new Table(page).write('Setpoint'), /24\.5 °C written/, 'the column "Write"');
}

export async function a_state_is_set_by_its_name({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  const region = await openVariable(visitor, 'Mode');
  await region.getByLabel('New value').selectOption({label: 'maintenance (3)'});
  await region.getByRole('button', {name: /^Set/}).click();
  await page.getByRole('dialog').getByRole('button', {name: /^Write maintenance/}).click();
  await untilText(region, /maintenance.* written/, 'the state of the write');
  assert.deepEqual(await plant.read('ahu', '19,1,85'), ['3']);
}

export async function a_refusal_has_its_reason({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  const region = await openVariable(visitor, 'Setpoint');
  await set(page, region, '99');
  await untilText(region, /99 °C refused/, 'the state of the write');
  await untilText(region, /value.?out.?of.?range/i, 'the reason');
  assert.deepEqual(await plant.read('ahu', SETPOINT), ['20.5']);
  await visitor.go('#/events');
  await untilText(page.getByRole('row').filter({hasText: 'Setpoint'}).first(), /refused.*value.?out.?of.?range/i, 'the events');
}

export async function a_value_that_is_not_one_is_not_written({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  const region = await openVariable(visitor, 'Setpoint');
  await region.getByLabel('New value').fill('warm');
  await region.getByRole('button', {name: /^Set/}).click();
  await untilText(region.getByRole('alert'), /warm.*number/, 'the mistake');
  assert.equal(await page.getByRole('dialog').count(), 0);
  assert.equal(await region.getByLabel('New value').getAttribute('aria-invalid'), 'true');
  assert.deepEqual(await plant.read('ahu', SETPOINT), ['20.5']);
}

export async function a_question_that_is_cancelled_writes_nothing({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  const region = await openVariable(visitor, 'Setpoint');
  await region.getByLabel('New value').fill('24.5');
  await region.getByRole('button', {name: /^Set/}).click();
  await page.getByRole('dialog').getByRole('button', {name: 'Cancel'}).click();
  await page.getByRole('dialog').waitFor({state: 'detached'});
  // A write that follows is the first one that the device has.
  await set(page, region, '25');
  await untilText(region, /25 °C written/, 'the state of the write');
  const writes = page.getByRole('region', {name: 'Last writes'}).getByRole('listitem');
  await untilText(writes, '25', 'the list of writes');
  assert.equal(await writes.filter({hasText: '24.5'}).count(), 0);
  assert.deepEqual(await plant.read('ahu', SETPOINT), ['25']);
}

export async function read_only_means_that_nothing_can_be_set({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  const region = await openVariable(visitor, 'Setpoint');
  await untilText(region, /Read-only.*--page-writes/, 'the field to set a value');
  assert.equal(await region.getByRole('button').count(), 0);
  assert.equal(await region.getByRole('textbox').count(), 0);

  // Somebody who makes the request by hand gets no further, with the token that the page has.
  visitor.allow(/status.* 403/);
  const status = await page.evaluate(async () => {
    const {token} = await (await fetch('/api/session')).json();
    const {blocks} = await (await fetch('/api/plant')).json();
    const {id} = blocks.flatMap(({variables}) => variables).find(({name}) => name === 'Setpoint');
    const response = await fetch(`/api/variables/${id}/write`, {
      method: 'POST', headers: {'Content-Type': 'application/json', 'X-Page-Token': token}, body: '{"value":"30"}'});
    return response.status;
  });
  assert.equal(status, 403);
  assert.deepEqual(await plant.read('ahu', SETPOINT), ['20.5']);
}

export async function a_page_of_a_variable_has_its_trend_and_the_device_s_data({visit}) {
  const visitor = await visit();
  const {page} = visitor;
  await openVariable(visitor, 'Supply air');
  const data = page.getByRole('region', {name: /device.s own data/});
  await data.getByRole('button', {name: 'Ask the device'}).click();
  await untilText(data, /object-name.*Supply air/, 'the data of the device');
  await untilText(data, /Read at \d\d:\d\d:\d\d/, 'when the device was asked');
  await until('a trend with a picture', async () => (await page.getByRole('main').locator('canvas').count()) > 0);
}

export async function a_graph_follows_the_values_after_another_theme({visit}) {
  const {page} = await visit({path: '#/variables/0'});
  await page.waitForFunction(() => window.Dygraph);
  await page.evaluate(() => {
    window.drawn = [];
    const {updateOptions} = window.Dygraph.prototype;
    window.Dygraph.prototype.updateOptions = function (options, ...more) {
      window.drawn.push('dateWindow' in options ? 'moved' : 'kept');
      return updateOptions.call(this, options, ...more);
    };
  });
  const draws = (number) => page.waitForFunction((least) => window.drawn.length >= least, number);
  await draws(1);
  const value = await page.locator('.big-value').innerText();
  await until('another value after the graph was drawn', async () =>
    (await page.locator('.big-value').innerText()) !== value);
  await page.getByRole('button', {name: /^Theme/}).click();
  await draws(3);
  assert.ok((await page.evaluate(() => window.drawn)).every((range) => range === 'moved'), 'the range of time moves');
}
