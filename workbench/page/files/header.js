// The bar at the top and the notices below it: project, present page, connection, blocks in fault, outlets, lost updates.

import {announce, make, everyFrame, setAttribute, setText} from './dom.js';
import {countText, offsetMs} from './format.js';
import {startOutlets} from './outlets.js';
import {makeSign, setSign} from './signs.js';
import {blockState} from './store.js';
import {pointTime} from './trend-figures.js';

const NoticeMs = 10000;

const Words = {
  connecting: ['plain', '\u2026', 'connecting'],
  live: ['good', '\u25CF', 'live'],
  renewing: ['good', '\u25CB', 'renewing'],
  lost: ['bad', '\u2715', 'no connection'],
  refused: ['bad', '\u2715', 'no access'],
  ended: ['plain', '\u25A0', 'ended'],
};

// What a state of the connection means for the values that are shown; empty while they are current.
function explanation({state, since, reason}, offset) {
  const time = pointTime(since, offset);
  const because = reason ? ` (${reason})` : '';
  return {
    lost: `No connection since ${time}, values are old. The page tries to connect again${because}.`,
    refused: `The program does not know this browser${because}. Open the link that the program has printed.`,
    ended: `The run ended at ${time}. The values are the last ones; the next run prints a link of its own.`,
  }[state] ?? '';
}

function startConnectionSign(store) {
  const sign = makeSign();
  const notice = make('p.notice.bad', {hidden: true});
  document.getElementById('connection').append(sign);
  document.getElementById('notice').append(notice);
  let wasOld = false;
  const draw = () => {
    const {connection} = store;
    setSign(sign, ...Words[connection.state]);
    document.documentElement.dataset.connection = connection.state;
    const text = explanation(connection, offsetMs(store.plant?.started));
    notice.hidden = !text;
    setText(notice, text);
    if (text || wasOld) {
      announce(text || 'The connection is back, values are current.');
    }
    wasOld = Boolean(text) || (wasOld && connection.state !== 'live');
  };
  store.on('connection', draw);
  draw();
}

function startLostNotice(store) {
  let timer = 0;
  const text = make('span');
  const notice = make('div.notice', {hidden: true}, text,
    make('button.quiet', {type: 'button', onclick: () => { notice.hidden = true; }}, 'Close'));
  document.getElementById('notice').append(notice);
  store.on('lost', (updates) => {
    setText(text, `${countText(updates, 'update was', 'updates were')} skipped, because this browser or the network was too slow. ` +
      'The values are current again.');
    notice.hidden = false;
    clearTimeout(timer);
    timer = setTimeout(() => { notice.hidden = true; }, NoticeMs);
  });
}

// "2 blocks in fault" on every page, and a sentence when a block changes its state.
function startFaults(store) {
  const link = make('a.faults', {href: '#/', hidden: true}, makeSign());
  document.getElementById('connection').before(link);
  const draw = everyFrame(() => {
    const number = store.blocks.filter(({now}) => blockState(now) === 'fault').length;
    link.hidden = !number;
    setSign(link.firstChild, 'bad', '\u2715', countText(number, 'block in fault', 'blocks in fault'));
  });
  store.on('state', (block, was) => {
    draw();
    const state = blockState(block.now);
    if (state === 'fault') {
      announce(`${block.name} is in fault: ${block.now.error}`);
    } else if (was === 'fault') {
      announce(`${block.name} is ${state === 'ok' ? 'OK again' : state}`);
    }
  });
}

// Results of writes are said on every page.
function startWrites(store) {
  const known = new Map();
  store.on('values', (variables) => {
    for (const variable of variables) {
      const state = variable.now.write?.state;
      if (known.get(variable) !== state) {
        if (known.get(variable) === 'pending' && state) {
          const {reason} = variable.now.write;
          announce(`${variable.block.name}.${variable.name}: ${state}${reason ? `, ${reason}` : ''}`);
        }
        known.set(variable, state);
      }
    }
  });
}

export function startHeader(store) {
  const name = () => store.plant.project.replace(/^.*[/\\]/, '').replace(/\.lua$/, '');
  store.on('plant', () => {
    setText(document.getElementById('project'), name());
    setAttribute(document.getElementById('project'), 'title', store.plant.project);
  });
  startConnectionSign(store);
  startLostNotice(store);
  startFaults(store);
  startOutlets(store);
  startWrites(store);
  return {
    // The link of the page is marked, and the title of the window names page and project.
    showPage(path, title) {
      for (const link of document.querySelectorAll('.tabs a')) {
        const target = link.getAttribute('href').slice(1);
        const isPage = target === '/' ? path === '/' : path === target || path.startsWith(`${target}/`);
        setAttribute(link, 'aria-current', isPage ? 'page' : null);
      }
      document.title = store.plant ? `${title} \u2013 ${name()}` : title;
    },
  };
}
