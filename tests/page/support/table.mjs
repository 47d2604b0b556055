// The table of variables, by roles and names.
import {until} from './wait.mjs';

const VALUE = 1;
const QUALITY = 2;
const WRITE = 3;

export class Table {
  constructor(page) {
    this.page = page;
    this.grid = page.getByRole('grid', {name: 'Variables'});
    this.search = page.getByRole('searchbox', {name: 'Search the variables'});
    this.filters = page.getByRole('group', {name: 'Show only'});
  }

  row(name) {
    return this.grid.getByRole('row').filter({has: this.page.getByRole('link', {name, exact: true})});
  }

  cell = (name, column) => this.row(name).getByRole('gridcell').nth(column);
  value = (name) => this.cell(name, VALUE);
  quality = (name) => this.cell(name, QUALITY);
  write = (name) => this.cell(name, WRITE);

  // Names of the rows that can be seen, from top to bottom.
  async names() {
    const rows = await this.grid.getByRole('row').filter({has: this.page.getByRole('link')}).evaluateAll((elements) =>
      elements.map((row) => [Number(row.getAttribute('aria-rowindex')), row.querySelector('a').textContent]));
    return rows.sort(([one], [other]) => one - other).map(([, name]) => name);
  }

  async untilNames(expected, what) {
    let names = [];
    await until(() => `${what}: the rows are ${JSON.stringify(names)}, expected ${JSON.stringify(expected)}`, async () => {
      names = await this.names();
      return JSON.stringify(names) === JSON.stringify(expected);
    });
  }

  // How many rows there are, visible or not; the heading is one of aria-rowcount.
  async untilCount(expected) {
    let count = '';
    await until(() => `the table has ${count} rows, expected ${expected}`, async () => {
      count = Number(await this.grid.getAttribute('aria-rowcount')) - 1;
      return count === expected;
    });
  }
}
