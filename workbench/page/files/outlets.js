// The systems that the run feeds besides this page, such as a broker: signs in the bar, a notice for each that waits or has
// failed, and a panel for the overview. Nothing of it is there without outlets.

import {announce, make, everyFrame, setAttribute, setText} from './dom.js';
import {groupedText, shortTime} from './format.js';
import {makeSign, setSign} from './signs.js';

const Signs = {
  starting: ['plain', '\u2026'],
  good: ['good', '\u25CF'],
  waiting: ['warn', '\u25B2'],
  failed: ['bad', '\u2715'],
};

const isTroubled = ({health}) => health === 'waiting' || health === 'failed';

// "mqtt", "mqtt waiting".
function setOutlet(element, {outlet, health}) {
  setSign(element, ...(Signs[health] ?? ['plain', '\u00B7']), health === 'good' ? outlet : `${outlet} ${health}`);
}

// Keeps as many children as there are outlets, and updates each.
function drawEach(list, outlets, makeOne, drawOne) {
  while (list.children.length > outlets.length) {
    list.lastChild.remove();
  }
  outlets.forEach((outlet, index) => {
    if (index === list.children.length) {
      list.append(makeOne());
    }
    drawOne(list.children[index], outlet);
  });
}

const makeLink = () => make('a', {href: '#/'}, makeSign());

function drawLink(link, outlet) {
  setOutlet(link.firstChild, outlet);
  link.classList.toggle('calm', !isTroubled(outlet));
  setAttribute(link, 'title', outlet.text);
}

function drawNotice(notice, {outlet, health, text, since}) {
  notice.classList.toggle('bad', health === 'failed');
  setText(notice, `${outlet} ${health} since ${shortTime(since)}: ${text}`);
}

function announceChanges(outlets, known) {
  for (const {outlet, health, text} of outlets) {
    const was = known.get(outlet);
    known.set(outlet, health);
    if (was && was !== health) {
      announce(`${outlet} ${health}: ${text}`);
    }
  }
}

export function startOutlets(store) {
  const links = make('span.outlets');
  const notices = make('div', {hidden: true});
  document.getElementById('connection').before(links);
  document.getElementById('notice').append(notices);
  const known = new Map();
  const draw = everyFrame(() => {
    const troubled = store.outlets.filter(isTroubled);
    drawEach(links, store.outlets, makeLink, drawLink);
    drawEach(notices, troubled, () => make('p.notice'), drawNotice);
    notices.hidden = !troubled.length;
    announceChanges(store.outlets, known);
  });
  store.on('outlets', draw);
}

const makeRow = () => make('li', {}, makeSign(), make('span.outlet-text'), make('span.dim'));

// "1,234 messages, 3 commands, since 12:34:56"
const figuresText = ({counts, since}) =>
  [...Object.entries(counts).map(([name, count]) => `${groupedText(count)} ${name}`), `since ${shortTime(since)}`].join(', ');

function drawRow(row, outlet) {
  const [state, text, figures] = row.children;
  setOutlet(state, outlet);
  setText(text, outlet.text);
  setText(figures, figuresText(outlet));
}

// A section for the overview; draw() brings it up to date.
export function makeOutlets(store) {
  const list = make('ul.outlet-list.panel');
  const element = make('section', {'aria-labelledby': 'outlets-title', hidden: true},
    make('div.panel-head', {}, make('h2', {id: 'outlets-title'}, 'Outlets')), list);
  return {
    element,
    draw() {
      drawEach(list, store.outlets, makeRow, drawRow);
      element.hidden = !store.outlets.length;
    },
  };
}
