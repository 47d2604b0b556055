// Everybody can use the page: with a keyboard, a screen reader, a phone.
import {strict as assert} from 'node:assert';

import {Table} from '../support/table.mjs';
import {until, untilText} from '../support/wait.mjs';

// Addresses of all views, with the variables of the plant by name.
async function views(visitor) {
  const ids = await visitor.page.evaluate(async () => {
    const {blocks} = await (await fetch('/api/plant')).json();
    return Object.fromEntries(blocks.flatMap(({variables}) => variables).map(({name, id}) => [name, id]));
  });
  return ['#/', '#/variables', `#/variables/${ids.Setpoint}`, `#/variables/${ids['Supply air']}`,
    `#/variables/${ids['Programme, week']}`, '#/schedules', `#/schedules/${ids['Programme, week']}`,
    `#/schedules/${ids['Programme, exceptions']}`, '#/events'];
}

async function open(visitor, path) {
  const {page} = visitor;
  await visitor.go(path);
  await page.getByRole('heading', {level: 1}).first().waitFor({state: 'attached'});
  await page.waitForLoadState('networkidle', {timeout: 500}).catch(() => {});
}

async function examine(visitor) {
  const found = [];
  for (const path of await views(visitor)) {
    await open(visitor, path);
    found.push(...(await visitor.accessibilityFindings()).map((finding) => `${path}: ${finding}`));
  }
  assert.equal(found.length, 0, `axe-core found\n  ${found.join('\n  ')}`);
}

export async function axe_finds_nothing_in_the_light({visit}) {
  await examine(await visit({theme: 'light'}));
}

export async function axe_finds_nothing_in_the_dark({visit}) {
  await examine(await visit({theme: 'dark'}));
}

export async function nothing_needs_a_mouse({visit, plant}) {
  const {page} = await visit();
  const key = (name) => page.keyboard.press(name);
  const focused = () => page.evaluate(() => document.activeElement.textContent.trim() || document.activeElement.getAttribute('aria-label'));
  async function tabTo(name) {
    const passed = [];
    for (let step = 0; step < 40; ++step) {
      await key('Tab');
      passed.push(await focused());
      if (passed.at(-1)?.startsWith(name)) {
        const outline = await page.evaluate(() => {
          const {outlineStyle, boxShadow} = getComputedStyle(document.activeElement);
          return outlineStyle !== 'none' || boxShadow !== 'none';
        });
        assert.ok(outline, `the focus on "${name}" cannot be seen`);
        return;
      }
    }
    throw new Error(`Tab does not reach "${name}", only ${JSON.stringify(passed)}`);
  }

  await page.getByRole('heading', {level: 1, name: 'Overview'}).waitFor();
  await key('Tab');
  assert.equal(await focused(), 'Skip to the content');
  await tabTo('Variables');
  await key('Enter');
  const table = new Table(page);
  await table.untilCount(11);
  await key('/');
  await page.keyboard.type('setpoint');
  await table.untilNames(['Setpoint'], 'the search');
  await key('ArrowDown');
  await key('ArrowDown');
  await key('Enter');
  await page.getByRole('heading', {level: 1, name: 'Setpoint'}).waitFor();

  const field = page.getByLabel('New value');
  await field.waitFor();
  for (let step = 0; step < 40 && !(await field.evaluate((element) => element === document.activeElement)); ++step) {
    await key('Tab');
  }
  await key('Control+a');
  await page.keyboard.type('23.5');
  await key('Enter');
  await page.getByRole('dialog').waitFor();
  await until('the focus in the question', () => page.evaluate(() => Boolean(document.activeElement.closest('dialog'))));
  await key('Enter');
  await untilText(page.getByRole('region', {name: 'Set'}), /23\.5 °C written/, 'the state of the write');
  assert.deepEqual(await plant.read('ahu', '2,1,85'), ['23.5']);
}

export async function a_phone_shows_everything_without_scrolling_sideways({visit}) {
  const visitor = await visit({width: 360, height: 740, isMobile: true, hasTouch: true, deviceScaleFactor: 2});
  const {page} = visitor;
  const wide = [];
  for (const path of await views(visitor)) {
    await open(visitor, path);
    const {width, room} = await page.evaluate(() => ({
      width: document.scrollingElement.scrollWidth, room: document.documentElement.clientWidth}));
    if (width > room || room !== 360) {
      wide.push(`${path} is ${width} pixels wide, the screen ${room}`);
    }
  }
  assert.deepEqual(wide, []);
  const table = new Table(page);
  await visitor.go('#/variables');
  await untilText(table.row('Setpoint'), /20\.5 °C/, 'the row "Setpoint"');
  await table.row('Setpoint').tap();
  await page.getByRole('heading', {level: 1, name: 'Setpoint'}).waitFor();
}
