// What the run feeds besides the page: a recording that another program locks. Its name would be markup.
import {strict as assert} from 'node:assert';

import {until, untilText} from '../support/wait.mjs';

const Name = '<img src=x onerror=alert(1)><b id=injected>.sqlite';

const sign = (page) => page.getByRole('banner').getByRole('link', {name: /^recording/});
const notice = (page) => page.locator('p.notice').filter({hasText: 'recording'});

async function untilItWaits(page, plant) {
  await untilText(page.getByRole('region', {name: 'Outlets'}), /recording.*records into/, 'the panel of the overview');
  await plant.lockRecording();
  await untilText(notice(page), /^recording waiting since \d\d:\d\d:\d\d: /, 'the notice');
}

export async function one_that_waits_is_a_notice_with_the_reason({visit, plant}) {
  const {page} = await visit();
  await untilText(sign(page), /^\W*recording$/, 'the bar');
  assert.equal(await notice(page).count(), 0);
  await untilItWaits(page, plant);
  await untilText(sign(page), /^\W*recording waiting$/, 'the bar');
  await untilText(page.locator('#announcer'), /^recording waiting: /, 'what a screen reader says');
  const panel = page.getByRole('region', {name: 'Outlets'});
  for (const [place, text] of [['the notice', notice(page)], ['the panel', panel]]) {
    assert.ok((await text.innerText()).includes(Name), `${place} has the name as it is: ${await text.innerText()}`);
  }
  assert.equal(await page.locator('#injected, img').count(), 0, 'a text of an outlet has become markup');

  await page.getByRole('navigation', {name: 'Pages'}).getByRole('link', {name: 'Events'}).click();
  await untilText(notice(page), Name, 'the notice of another view');

  await plant.unlockRecording();
  await until('a bar without a notice', async () => !(await notice(page).count()));
  await untilText(sign(page), /^\W*recording$/, 'the bar');
  await sign(page).click();
  await untilText(panel, /records into.*\d+ values.*since \d\d:\d\d:\d\d/, 'the panel of the overview');
}

export async function axe_finds_nothing_while_one_waits({visit, plant}) {
  const visitors = [await visit({theme: 'light'}), await visit({theme: 'dark'})];
  await untilItWaits(visitors[0].page, plant);
  for (const visitor of visitors) {
    await untilText(notice(visitor.page), Name, 'the notice');
    assert.deepEqual(await visitor.accessibilityFindings(), []);
  }
}

export async function a_phone_shows_one_that_waits({visit, plant}) {
  const {page} = await visit({width: 320, height: 740, isMobile: true, hasTouch: true, deviceScaleFactor: 2});
  await untilItWaits(page, plant);
  await untilText(sign(page), /^\W*recording waiting$/, 'the bar');
  for (const spacing of ['0', '.06em', '.2em']) {  // fonts as wide as a machine may have
    const {width, room} = await page.evaluate((letters) => {
      document.documentElement.style.letterSpacing = letters;
      return {width: document.scrollingElement.scrollWidth, room: document.documentElement.clientWidth};
    }, spacing);
    assert.deepEqual([width <= room, room], [true, 320], `${width} pixels wide, the screen ${room}, ${spacing}`);
  }
}
