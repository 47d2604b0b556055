// The pictures of the documents, taken of the demo plant. PAGE_PICTURES is their folder; the run is as old as
// PAGE_RUN_SECONDS when they are taken, so that trends have a line.
import {mkdir} from 'node:fs/promises';

import {until, untilText} from '../support/wait.mjs';

const folder = process.env.PAGE_PICTURES;
const age = Number(process.env.PAGE_RUN_SECONDS);

async function idsOf(page) {
  return page.evaluate(async () => {
    const {blocks} = await (await fetch('/api/plant')).json();
    return Object.fromEntries(blocks.flatMap(({variables}) => variables).map(({name, id}) => [name, id]));
  });
}

// Waits until the plant is shown and nothing moves in.
async function settle(page, text) {
  await untilText(page.getByRole('main'), text, 'the view of the picture');
  await page.evaluate(() => document.fonts.ready);
  await page.evaluate(() => new Promise((resolve) => { requestAnimationFrame(() => requestAnimationFrame(resolve)); }));
}

export async function are_taken({visit}) {
  await mkdir(folder, {recursive: true});
  const begin = Date.now();
  const light = await visit();
  const ids = await idsOf(light.page);
  await until('the age of the run', () => Date.now() - begin > age * 1000, age * 1000 + 10000);

  const dark = await visit({theme: 'dark'});
  const phone = await visit({width: 390, height: 780, isMobile: true, hasTouch: true, deviceScaleFactor: 1.5});
  async function take({page}, name, path, text) {
    await page.goto(`${new URL(page.url()).origin}/${path}`);
    await settle(page, text);
    if (/#\/variables\/\d/.test(path)) {
      await page.getByRole('button', {name: 'All', exact: true}).click();
      await page.locator('canvas').first().waitFor();
      await page.getByRole('button', {name: 'Ask the device'}).click();
      await settle(page, 'object-name');
    }
    await page.screenshot({path: `${folder}/${name}.png`});
  }
  await take(light, 'page-overview', '#/', /Meter.*cycle/);
  await take(dark, 'page-overview-dark', '#/', /Meter.*cycle/);
  await take(light, 'page-variables', '#/variables', /Supply air temperature/);
  await take(dark, 'page-variables-dark', '#/variables', /Supply air temperature/);
  await take(light, 'page-variable', `#/variables/${ids['Supply air temperature']}`, /Supply air temperature/);
  await take(dark, 'page-variable-dark', `#/variables/${ids['Supply air setpoint']}`, /Supply air setpoint/);
  await take(light, 'page-week', `#/schedules/${ids['Setpoint programme']}`, /Monday.*°C/);
  await take(light, 'page-calendar', `#/schedules/${ids['Setpoint exceptions']}`, /December.*°C/);
  await take(light, 'page-events', '#/events', /refused/);
  await take(phone, 'page-phone', '#/', /Meter.*cycle/);
  await take(phone, 'page-phone-week', `#/schedules/${ids['Setpoint programme']}`, /Monday.*°C/);
}
