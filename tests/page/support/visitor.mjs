// A visitor of the page: a browser context of its own, which notes everything that must not happen.
import {readFile} from 'node:fs/promises';
import {createRequire} from 'node:module';

import {LONGEST} from './wait.mjs';

const AXE = createRequire(import.meta.url).resolve('axe-core/axe.min.js');

export class Visitor {
  // Opens the link. Options: theme "light" or "dark", width and height, path (such as "#/variables"), and those of a
  // browser context.
  static async open(browser, link, {theme = 'light', width = 1280, height = 800, path = '', ...options} = {}) {
    const context = await browser.newContext({
      colorScheme: theme, viewport: {width, height}, locale: 'en-GB', reducedMotion: 'reduce', ...options});
    const page = await context.newPage();
    page.setDefaultTimeout(LONGEST);
    const visitor = new Visitor(page, new URL(link).origin);
    await page.addInitScript(() => addEventListener('securitypolicyviolation', (event) =>
      console.error(`security policy: ${event.violatedDirective} ${event.blockedURI} ${event.sourceFile}`)));
    await page.goto(link);
    if (path) {
      await visitor.go(path);
    }
    return visitor;
  }

  constructor(page, origin) {
    this.page = page;
    this.origin = origin;
    this.faults = [];
    this.allowed = [];
    page.on('console', (message) => ['error', 'warning'].includes(message.type()) && this.note(`console: ${message.text()}`));
    page.on('pageerror', (error) => this.note(`exception: ${error.stack}`));
    page.on('crash', () => this.note('the tab crashed'));
    page.on('dialog', (dialog) => this.note(`dialog: ${dialog.message()}`));
    page.on('request', (request) => {
      const url = new URL(request.url());
      if (url.origin !== this.origin && url.protocol !== 'data:') {
        this.note(`request to another origin: ${request.url()}`);
      }
    });
    page.on('response', (response) => {
      if (response.status() >= 400) {
        this.note(`status ${response.status()} of ${response.request().method()} ${response.url()}`);
      }
    });
  }

  note(fault) {
    this.faults.push(fault);
  }

  // Faults that match are part of the scenario.
  allow(...patterns) {
    this.allowed.push(...patterns);
  }

  assertFaultless() {
    const faults = this.faults.filter((fault) => !this.allowed.some((pattern) => pattern.test(fault)));
    if (faults.length) {
      throw new Error(`the browser noted ${faults.length} faults:\n  ${faults.slice(0, 10).join('\n  ')}`);
    }
  }

  async go(path) {
    await this.page.goto(`${this.origin}/${path}`);
  }

  // What axe-core finds in the page as it is, one line each.
  async accessibilityFindings() {
    const source = await readFile(AXE, 'utf8');
    const session = await this.page.context().newCDPSession(this.page);
    await session.send('Runtime.evaluate', {expression: source});
    await session.detach();
    const {violations} = await this.page.evaluate(() => window.axe.run(document, {resultTypes: ['violations']}));
    return violations.flatMap(({id, help, nodes}) =>
      nodes.map((node) => `${id}: ${help}: ${node.target.join(" ")}: ${node.html.slice(0, 120)}`));
  }

  // What the visitor sees, for the text of a failure.
  async report() {
    const text = await this.page.locator('body').innerText({timeout: 1000}).catch(() => '(no page)');
    return [`at ${this.page.url()}`, ...this.faults.slice(0, 10), "the page:", text.slice(0, 3000)].join('\n');
  }
}
