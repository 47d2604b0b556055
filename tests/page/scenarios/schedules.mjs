// Schedules: shown, edited by mouse and by keyboard, and found in the device.
import {strict as assert} from 'node:assert';

import {until, untilText} from '../support/wait.mjs';

const WEEK = '17,1,123';
const EXCEPTIONS = '17,1,38';

async function openSchedule(visitor, name) {
  const {page} = visitor;
  await visitor.go('#/schedules');
  await page.getByRole('main').getByRole('link', {name, exact: true}).click();
  await page.getByRole('heading', {level: 1, name}).waitFor();
}

async function edit(visitor, name) {
  await openSchedule(visitor, name);
  await visitor.page.getByRole('button', {name: 'Edit', exact: true}).click();
  await visitor.page.getByRole('group', {name: 'Editing'}).waitFor();
}

// The bar of an entry: a slider whose value is "Monday 06:00, 21.5 °C".
const bar = (page, words) => page.locator(`[role="slider"][aria-valuetext="${words}"]`);
const selected = (page) => page.getByRole('form', {name: 'Selected entry'});

async function write(page) {
  const button = page.getByRole('button', {name: /^Write to the device/});
  await until('the button "Write to the device" can be pressed', () => button.isEnabled());
  await button.click();
  await confirm(page);
}

async function confirm(page) {
  const dialog = page.getByRole('dialog', {name: 'Write to the device'});
  await dialog.getByRole('button', {name: 'Write now'}).click();
  await untilText(dialog.getByRole('status'), 'Written and read back', 'what became of the write');
  await dialog.getByRole('button', {name: 'Close'}).click();
  await dialog.waitFor({state: 'detached'});
}

export async function a_week_is_shown_with_its_values_and_what_is_in_force({visit}) {
  const visitor = await visit();
  const {page} = visitor;
  await openSchedule(visitor, 'Programme, week');
  await untilText(page.getByRole('region', {name: 'Now', exact: true}), /\d °C|default/, 'what is in force now');
  await untilText(page.getByRole('region', {name: 'Next', exact: true}), /\d °C|default/, 'what is in force next');
  const rows = page.getByRole('table', {name: 'Entries of the week'}).getByRole('row');
  for (const [day, time, value] of [['Monday', '06:00', '21.5 °C'], ['Monday', '20:00', '17 °C'], ['Saturday', '08:00', '19 °C']]) {
    await until(`a row of the table for ${day} ${time}`, async () =>
      (await rows.filter({hasText: day}).filter({hasText: time}).filter({hasText: value}).count()) === 1);
  }
  assert.ok(!(await page.getByRole('main').innerText()).includes('06000000'), 'the text of the driver is not shown');
}

export async function a_week_is_edited_with_the_mouse({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  await edit(visitor, 'Programme, week');

  // Moved by two hours.
  const monday = bar(page, 'Monday 06:00, 21.5 °C');
  await monday.click();
  await selected(page).getByLabel('Time').waitFor();
  // An answer of the program draws the week again: there is no box at the moment when the bar is exchanged.
  const {x, y, width, height} = await until('a bar that can be seen', () => monday.boundingBox());
  const hours = width / 14;
  await page.mouse.move(x + hours, y + height / 2);
  await page.mouse.down();
  await page.mouse.move(x + 2 * hours, y + height / 2, {steps: 4});
  await page.mouse.move(x + 3 * hours, y + height / 2, {steps: 4});
  await page.mouse.up();
  await bar(page, 'Monday 08:00, 21.5 °C').waitFor();

  // Removed.
  await bar(page, 'Saturday 08:00, 19 °C').click();
  await selected(page).getByRole('button', {name: 'Remove entry'}).click();
  await bar(page, 'Saturday 08:00, 19 °C').waitFor({state: 'detached'});

  // Added, and given a value.
  const sunday = page.getByRole('group', {name: 'Sunday'});
  await sunday.getByRole('button', {name: /^Add an entry/}).click();
  await selected(page).getByLabel('Time').fill('12:30');
  await selected(page).getByLabel('Value', {exact: true}).fill('19.5');
  await selected(page).getByLabel('Value', {exact: true}).press('Enter');
  await bar(page, 'Sunday 12:30, 19.5 °C').waitFor();

  // The program explains the changes before they are written.
  const changes = page.getByRole('region', {name: 'Changes'});
  await untilText(changes, /Monday.*08:00/, 'the changes');
  await untilText(changes, /Saturday.*removed/i, 'the changes');
  await untilText(changes, /Sunday.*12:30 19\.5 °C/, 'the changes');
  await write(page);
  assert.deepEqual(await plant.read('ahu', WEEK), [
    '[0] {08:00:00.00, 21.5, 20:00:00.00, 17}, [0] {}, [0] {}, [0] {}, [0] {}, [0] {}, [0] {12:30:00.00, 19.5}']);
}

export async function a_week_is_edited_with_the_keyboard({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  await edit(visitor, 'Programme, week');
  const key = async (...names) => {
    for (const name of names) {
      await page.keyboard.press(name);
    }
  };
  const isFocused = (locator) => locator.evaluate((element) => element === document.activeElement);

  // The first bar of the week is reached with Tab, and moved by an hour and a minute.
  const monday = bar(page, 'Monday 06:00, 21.5 °C');
  await until('Tab reaches Monday 06:00', async () => (await isFocused(monday)) || (await key('Tab')), 5000);
  await key('ArrowRight', 'ArrowRight', 'ArrowRight', 'ArrowRight', 'Shift+ArrowRight');
  await bar(page, 'Monday 07:01, 21.5 °C').waitFor();

  // To the Saturday below and away with it; a new entry, typed; undone and done again.
  await key('ArrowDown');
  await until('the focus is on Saturday', () => isFocused(bar(page, 'Saturday 08:00, 19 °C')));
  await key('n');
  await until('the focus is in the form of the new entry', () => isFocused(selected(page).getByLabel('Time')));
  await key('Control+a');
  await page.keyboard.type('1530');
  await key('Tab', 'Control+a');
  await page.keyboard.type('18,5');
  await key('Enter');
  const typed = bar(page, 'Saturday 15:30, 18.5 °C');
  await until('the focus is on the new entry', async () => (await typed.count()) === 1 && isFocused(typed));
  await key('Control+z');
  await typed.waitFor({state: 'detached'});
  await key('Control+y');
  await typed.waitFor();
  await bar(page, 'Saturday 08:00, 19 °C').focus();
  await key('Delete');
  await bar(page, 'Saturday 08:00, 19 °C').waitFor({state: 'detached'});

  const button = page.getByRole('button', {name: /^Write to the device/});
  await until('the button "Write to the device" can be pressed', () => button.isEnabled());
  await until('Shift and Tab reach the button', async () => (await isFocused(button)) || (await key('Shift+Tab')), 5000);
  await key('Enter');
  const dialog = page.getByRole('dialog', {name: 'Write to the device'});
  await until('the focus is on "Write now"', () => isFocused(dialog.getByRole('button', {name: 'Write now'})));
  await key('Enter');
  await untilText(dialog.getByRole('status'), 'Written and read back', 'what became of the write');
  await key('Enter');
  await dialog.waitFor({state: 'detached'});
  assert.deepEqual(await plant.read('ahu', WEEK), [
    '[0] {07:01:00.00, 21.5, 20:00:00.00, 17}, [0] {}, [0] {}, [0] {}, [0] {}, [0] {15:30:00.00, 18.5}, [0] {}']);
}

export async function exceptions_are_words_and_days_of_the_year({visit}) {
  const visitor = await visit();
  const {page} = visitor;
  await openSchedule(visitor, 'Programme, exceptions');
  const exceptions = page.getByRole('region', {name: 'Exceptions'});
  await untilText(exceptions, /25 December 2026/, 'the exceptions');
  await untilText(exceptions, /last Friday in December/, 'the exceptions');
  const calendar = page.getByRole('region', {name: 'Calendar of the year'});
  while (!/2026/.test(await calendar.getByRole('heading').innerText())) {
    await calendar.getByRole('button', {name: 'Year before'}).click();
  }
  const day = calendar.getByRole('gridcell', {name: /25 December 2026: event/});
  await day.waitFor();
  await day.hover();
  await untilText(calendar.getByRole('status'), /25 December 2026.*16 °C/, 'the words of the day');
}

export async function an_exception_is_added({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  await edit(visitor, 'Programme, exceptions');
  await page.getByRole('button', {name: 'Add an exception'}).click();
  const dialog = page.getByRole('dialog', {name: 'Add an exception'});
  await dialog.getByLabel('Day', {exact: true}).selectOption('24');
  await dialog.getByLabel('Month').selectOption({label: 'December'});
  await dialog.getByLabel('Year').fill('2026');
  await dialog.getByLabel('Priority').selectOption('9');
  await untilText(dialog.getByRole('status'), '24 December 2026', 'the words of the period');
  await dialog.getByRole('button', {name: 'Apply'}).click();
  await dialog.waitFor({state: 'detached'});
  await selected(page).getByLabel('Value', {exact: true}).fill('15');
  await selected(page).getByLabel('Value', {exact: true}).press('Enter');
  await untilText(page.getByRole('region', {name: 'Changes'}), /24 December 2026.*15 °C/, 'the changes');
  await write(page);
  const [text] = await plant.read('ahu', EXCEPTIONS);
  assert.ok(text.includes('[0] {[0] 7e0c1804}, [2] {00:00:00.00, 15}, [3] 09'), `the device has ${text}`);
  assert.ok(text.includes('[0] {[0] 7e0c1905}, [2] {00:00:00.00, 16}, [3] 0a'), `the device has ${text}`);
  assert.ok(text.includes('[0] {[2] 0c0605}, [2] {06:00:00.00, 24}, [3] 0c'), `the device has ${text}`);
}

export async function a_loss_is_said_before_it_is_written({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  await edit(visitor, 'Programme, week');
  await bar(page, 'Saturday 08:00, 19 °C').click();
  await selected(page).getByLabel('Kind of value').selectOption('unsigned');
  const changes = page.getByRole('region', {name: 'Changes'});
  await untilText(changes, /The device will not get this as it is shown.*Saturday.*\b1\b/, 'the loss');
  await page.getByRole('button', {name: 'Discard'}).click();
  await page.getByRole('dialog').getByRole('button', {name: 'Discard'}).click();
  await page.getByRole('button', {name: 'Edit', exact: true}).waitFor();
  const [text] = await plant.read('ahu', WEEK);
  assert.ok(text.includes('{08:00:00.00, 19}'), `the device has ${text}`);
}

export async function a_change_by_somebody_else_is_seen_before_a_write({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  await edit(visitor, 'Programme, week');
  await until('the first entry has the focus', () =>
    bar(page, 'Monday 06:00, 21.5 °C').evaluate((element) => element === document.activeElement));
  await page.keyboard.press('ArrowRight');
  const changes = page.getByRole('region', {name: 'Changes'});
  await untilText(changes, /One change to write.*moved to 06:15/, 'the change');
  await plant.set('AHU.Programme, week=Mon-Tue 05:30 20');
  await untilText(page.getByRole('alert'), /has changed while you edit it/, 'the notice');
  await untilText(changes, /Tuesday: 05:30 20 °C removed/, 'the changes from what the device has now');
  await write(page);
  const [text] = await plant.read('ahu', WEEK);
  assert.ok(text.startsWith('[0] {06:15:00.00, 21.5, 20:00:00.00, 17}, [0] {}'), `the device has ${text}`);
}

export async function a_schedule_is_read_only_without_writes({visit}) {
  const visitor = await visit();
  const {page} = visitor;
  await openSchedule(visitor, 'Programme, week');
  await untilText(page.getByRole('region', {name: 'Week'}), /Read-only.*--page-writes/, 'the week');
  assert.equal(await page.getByRole('button', {name: 'Edit', exact: true}).count(), 0);
}
