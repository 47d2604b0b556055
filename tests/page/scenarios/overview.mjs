// The first page: opened by the link, blocks with their state, the themes, the end of devices and of the program.
import {strict as assert} from 'node:assert';

import {until, untilText} from '../support/wait.mjs';

// The card of a block.
const card = (page, name) => page.getByRole('listitem').filter({has: page.getByRole('link', {name, exact: true})});

export async function the_link_opens_it({visit, link}) {
  const {page} = await visit();
  await page.getByRole('heading', {level: 1, name: 'Overview'}).waitFor();
  assert.ok(!page.url().includes('token'), `the address has the token still: ${page.url()}`);
  for (const [name, variables] of [['AHU', 9], ['Chiller', 2]]) {
    await untilText(card(page, name), 'OK', `block ${name}`);
    await untilText(card(page, name), `${variables} variables`, `block ${name}`);
    await untilText(card(page, name), /cycle [1-9]/, `block ${name}`);
    await untilText(card(page, name), /127\.0\.0\.1:\d+/, `block ${name}`);
  }
  assert.match(await page.title(), /Overview.*plant/);

  const cookies = await page.context().cookies();
  assert.deepEqual(cookies.map(({httpOnly, sameSite}) => ({httpOnly, sameSite})), [{httpOnly: true, sameSite: 'Strict'}]);

  // A browser that has not opened the link sees nothing of the plant.
  const stranger = await page.context().browser().newPage();
  const response = await stranger.goto(new URL(link).origin);
  assert.ok([401, 403].includes(response.status()), `a browser without the link gets status ${response.status()}`);
  assert.ok(!(await stranger.content()).includes('Chiller'));
}

export async function a_device_that_is_lost_is_explained({visit, plant}) {
  const {page} = await visit();
  await untilText(card(page, 'Chiller'), 'OK', 'block Chiller');
  await plant.stopDevice('chiller');
  await untilText(card(page, 'Chiller'), 'FAULT No connection', 'block Chiller');
  await untilText(card(page, 'Chiller'), /no answer|silent|nobody|unreachable/i, 'the cause of block Chiller');
  await untilText(card(page, 'AHU'), 'OK', 'block AHU');
  await untilText(page.getByRole('banner'), '1 block in fault', 'the bar of every page');

  await page.getByRole('navigation', {name: 'Pages'}).getByRole('link', {name: 'Events'}).click();
  const event = page.getByRole('row').filter({hasText: 'Chiller'}).first();
  await untilText(event, /fault.*No connection/i, 'the events');
  const download = page.waitForEvent('download');
  await page.getByRole('link', {name: 'Events as CSV'}).click();
  const stream = await (await download).createReadStream();
  let text = '';
  for await (const part of stream) {
    text += part;
  }
  assert.match(text, /fault.*Chiller/i);
}

export async function the_end_of_the_program_is_said({visit, plant}) {
  const visitor = await visit();
  const {page} = visitor;
  await untilText(page.getByRole('banner'), 'live', 'the connection');
  visitor.allow(/ERR_CONNECTION_REFUSED/, /ERR_INCOMPLETE_CHUNKED_ENCODING/, /ERR_CONNECTION_RESET/, /ERR_EMPTY_RESPONSE/);
  await plant.stopWorkbench();
  await untilText(page.locator('body'), /(No connection since|The run ended at) \d\d:\d\d:\d\d/, 'the page');
  await untilText(page.getByRole('banner'), /no connection|ended/, 'the connection');
}

const groundOf = (page) => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
const brightness = (colour) => colour.match(/\d+/g).slice(0, 3).reduce((sum, part) => sum + Number(part), 0);

export async function both_themes_can_be_chosen({visit}) {
  const light = await visit({theme: 'light'});
  const dark = await visit({theme: 'dark'});
  for (const {page} of [light, dark]) {
    await page.getByRole('heading', {level: 1, name: 'Overview'}).waitFor();
  }
  assert.ok(brightness(await groundOf(light.page)) > 600, 'the ground is bright if the system is');
  assert.ok(brightness(await groundOf(dark.page)) < 200, 'the ground is dark if the system is');

  const {page} = light;
  const button = page.getByRole('button', {name: /^Theme/});
  for (let press = 0; press < 3 && !/dark/.test(await button.innerText()); ++press) {
    await button.click();
  }
  await until('a dark ground after "Theme: dark"', async () => brightness(await groundOf(page)) < 200);
  await page.reload();
  await page.getByRole('heading', {level: 1, name: 'Overview'}).waitFor();
  assert.ok(brightness(await groundOf(page)) < 200, 'the theme is kept');
}
