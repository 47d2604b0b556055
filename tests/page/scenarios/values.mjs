// The table of all variables.
import {strict as assert} from 'node:assert';

import {Table} from '../support/table.mjs';
import {until, untilText} from '../support/wait.mjs';

const MARKUP = '<img src=/x.png onerror=alert(1)><b id=injected>bold</b>';

export async function a_search_a_filter_and_a_sort_choose_rows({visit}) {
  const {page} = await visit({path: '#/variables'});
  const table = new Table(page);
  await table.untilCount(11);

  await table.search.fill('frost');
  await table.untilNames(['Frost sensor'], 'the search for "frost"');
  await table.search.fill('');
  await table.untilCount(11);

  const bad = table.filters.getByRole('button', {name: /Bad/});
  await bad.click();
  await table.untilNames(['Frost sensor'], 'the filter "Bad"');
  assert.equal(await bad.getAttribute('aria-pressed'), 'true');
  await bad.click();
  await table.untilCount(11);

  const heading = page.getByRole('columnheader', {name: 'Name'});
  await heading.click();
  assert.equal(await heading.getAttribute('aria-sort'), 'ascending');
  const names = await table.names();
  assert.deepEqual(names, [...names].sort((one, other) => one.localeCompare(other, 'en-GB')));
  await heading.click();
  await table.untilNames(names.reverse(), 'the order downwards');
}

export async function a_value_that_moves_is_seen_to_move({visit, plant}) {
  const {page} = await visit({path: '#/variables'});
  const table = new Table(page);
  const value = table.value('Supply air');
  const first = await untilText(value, /^[12]\d.*\d °C$/, 'the value of "Supply air"');
  await until(`another value of "Supply air" than ${first}`, async () => (await value.innerText()) !== first);
  assert.match(await table.quality('Supply air').innerText(), /Good/);

  // Another client of the device.
  await untilText(table.value('Setpoint'), /^20\.5 °C$/, 'the value of "Setpoint"');
  await plant.set('AHU.Setpoint=24.5');
  await untilText(table.value('Setpoint'), /^24\.5 °C$/, 'the value of "Setpoint"');
}

export async function a_state_and_a_bad_quality_are_words({visit}) {
  const {page} = await visit({path: '#/variables'});
  const table = new Table(page);
  await untilText(table.value('Mode'), /^automatic/, 'the value of "Mode"');
  await untilText(table.quality('Frost sensor'), /Sensor failure/i, 'the quality of "Frost sensor"');
}

export async function a_text_of_a_device_is_never_markup({visit}) {
  const {page} = await visit({path: '#/variables'});
  const table = new Table(page);
  await until('the text of "Note"', async () => (await table.value('Note').textContent()).includes(MARKUP));
  await table.row('Note').getByRole('link', {name: 'Note'}).click();
  await until('the text on the page of "Note"', async () => (await page.getByRole('main').textContent()).includes(MARKUP));
  assert.equal(await page.locator('#injected, img[src="/x.png"]').count(), 0);
}

export async function ten_thousand_rows_scroll({visit}) {
  const {page} = await visit({path: '#/variables'});
  const table = new Table(page);
  await table.untilCount(10000);
  await table.grid.focus();
  for (const [key, name] of [['End', 'T10000'], ['Home', 'T1']]) {
    await page.keyboard.press(key);
    await untilText(table.value(name), name.slice(1), `the value of "${name}" after ${key}`);
    const rows = await page.getByRole('row', {includeHidden: true}).count();
    assert.ok(rows < 200, `${rows} rows are in the document`);
  }
  await page.mouse.move(600, 400);
  await page.mouse.wheel(0, 100000);
  await until('other rows after the wheel', async () => !(await table.names()).includes('T1'));
  await table.search.fill('T7777');
  await table.untilNames(['T7777'], 'the search for "T7777"');
}
