// Plays one scenario against the page of a workbench that runs: node play.mjs FILE.NAME.
//
// PAGE_LINK is the link that the workbench printed, PAGE_BROWSER the path of Chromium. A scenario is an exported function
// of scenarios/FILE.mjs that takes {visit, plant, link}: `visit` opens the page as a new visitor (support/visitor.mjs),
// `plant` does what a browser cannot (support/plant.mjs). Exit code 0: it passed, and no visitor noted a fault. Otherwise
// the output has the reason.
import {stripVTControlCharacters} from 'node:util';

import {chromium} from 'playwright-core';

import {plant} from './support/plant.mjs';
import {Visitor} from './support/visitor.mjs';

const [file, name] = process.argv[2].split('.');
const link = process.env.PAGE_LINK;
const scenario = (await import(`./scenarios/${file}.mjs`))[name];
if (typeof scenario !== 'function') {
  throw new Error(`scenarios/${file}.mjs has no scenario '${name}'`);
}

const isRoot = process.getuid() === 0;
const browser = await chromium.launch({executablePath: process.env.PAGE_BROWSER, args: isRoot ? ['--no-sandbox'] : []});
const visitors = [];

async function visit(options = {}) {
  const visitor = await Visitor.open(browser, link, options);
  visitors.push(visitor);
  return visitor;
}

let failure = null;
try {
  await scenario({visit, plant, link});
  for (const visitor of visitors) {
    visitor.assertFaultless();
  }
} catch (error) {
  failure = error;
  console.log(`${process.argv[2]}: ${stripVTControlCharacters(error.stack)}`);
  for (const visitor of visitors) {
    console.log(await visitor.report());
  }
}
await browser.close();
process.exit(failure ? 1 : 0);
