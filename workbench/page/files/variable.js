// #/variables/ID: one variable. Its value in large, trend, setting, what the project says of it, the device's own data,
// the latest writes and log lines. A schedule has its view, with a heading of its own, in place of value, trend and setting.

import {qualityKind, shortTime, valueParts} from './format.js';
import {makeDeviceData} from './device-data.js';
import {makeTrend} from './trend.js';
import {makeWriteForm} from './write-form.js';
import {make, setText} from './dom.js';
import {eventSign, makeSign, setBlockState, setQuality, setSuspect} from './signs.js';
import {blockState} from './store.js';

const Refresh = 400;
const hasTrend = ({kind}) => kind === 'number' || kind === 'state' || kind === 'boolean';
const isSchedule = ({kind}) => kind === 'weekly' || kind === 'exception';

const numberOf = (value) => (typeof value === 'number' ? value : typeof value === 'boolean' ? Number(value) : null);

function makeFacts({object, property, type, unit, states, description, writable, block}) {
  const facts = [
    ['Description', description], ['Object', object], ['Property', property], ['Type', type], ['Unit', unit],
    ['States', states?.map((text, index) => `${type.includes('Boolean') ? Boolean(index) : index + 1} ${text}`).join(', ')],
    ['Can be set', writable ? 'yes' : 'no'], ['Device', block.address], ['Task', block.task],
  ];
  const shown = facts.filter(([, text]) => text);
  return make('section.panel.project-facts', {'aria-labelledby': 'facts-title'},
    make('h2', {id: 'facts-title'}, 'In the project'),
    make('dl.facts', {}, shown.map(([title, text]) => [make('dt', {}, title), make('dd', {}, text)])));
}

const makeHead = ({name, description}) =>
  make('div.page-head', {}, make('h1', {}, name), description && make('p.dim', {}, description));

// A line of the log is a text, or an object with the time and the text.
const logLine = (line) => (typeof line === 'string' ? make('li', {}, line)
  : make('li', {}, make('time.dim', {}, shortTime(line.time)), ' ', line.text));

const writeLine = ({time, kind, text}) => make('li.event-line', {}, make('time.dim', {}, shortTime(time)), eventSign(kind),
  make('span.event-text', {}, text));

function makeRecords() {
  const writes = make('ol.records');
  const log = make('ol.records.log');
  const fill = (list, lines, none) => list.replaceChildren(...(lines.length ? lines : [make('li.dim', {}, none)]));
  return {
    show(answer) {
      fill(writes, answer.writes.map(writeLine).reverse(), 'It has not been written in this run.');
      fill(log, answer.log.map(logLine).reverse(), 'The log has no line about it.');
    },
    elements: [
      make('section.panel', {'aria-labelledby': 'writes-title'}, make('h2', {id: 'writes-title'}, 'Last writes'), writes),
      make('section.panel', {'aria-labelledby': 'log-title'}, make('h2', {id: 'log-title'}, 'Last log lines'), log),
    ],
  };
}

function changeText({now, changedTime}) {
  if (!now?.time) {
    return 'Not read yet';
  }
  return changedTime ? `Changed at ${shortTime(changedTime)}` : 'No change since the page was opened';
}

function makeNow(variable) {
  const main = make('span.big-value');
  const side = make('span.big-side.dim');
  const quality = makeSign();
  const suspect = makeSign();
  const block = makeSign();
  const time = make('span.dim');
  const element = make('section.panel.now', {'aria-label': 'Present value'},
    make('div.big', {}, main, side), make('div.now-line', {}, quality, suspect), make('div.now-line', {}, time),
    make('div.now-line', {}, make('span.dim', {}, 'Block'), block));
  let flash = 'a';
  return {
    element,
    draw(hasChanged) {
      const {now} = variable;
      const parts = valueParts(variable);
      setText(main, parts.main);
      setText(side, parts.side);
      setQuality(quality, now);
      if (now && qualityKind(now.status) === 'good') {
        quality.className = 'sign good';
        setText(quality.firstChild, '\u2713');
      }
      setSuspect(suspect, now);
      main.classList.toggle('long', parts.main.length > 12);
      main.classList.toggle('text', parts.main.length > 60);
      setText(time, changeText(variable));
      setBlockState(block, blockState(variable.block.now), variable.block.now?.error);
      if (hasChanged) {
        flash = flash === 'a' ? 'b' : 'a';
        element.querySelector('.big').className = `big flash-${flash}`;
      }
    },
  };
}

export function mount(element, {api, store, id}) {
  const variable = store.variables[id];
  if (!variable) {
    element.append(make('h1', {}, 'Variable'), make('p', {}, `The project has no variable ${id}.`));
    return () => {};
  }
  let isMounted = true;
  let timer = 0;
  const now = makeNow(variable);
  const form = isSchedule(variable) ? null : makeWriteForm(variable, {api, store});
  const trend = hasTrend(variable) ? makeTrend(variable, api) : null;
  const device = makeDeviceData(variable, api);
  const records = makeRecords();
  const schedule = isSchedule(variable) ? make('div.schedule-place') : null;
  let unmountSchedule = null;

  async function readRecords() {
    timer = 0;
    try {
      const answer = await api.variable(id);
      if (isMounted) {
        records.show(answer);
      }
    } catch {
      // The lists stay as they were; the connection says what is wrong.
    }
  }

  function follow() {
    now.draw(true);
    form?.draw();
    const {time, value, status} = variable.now;
    const kind = qualityKind(status);
    trend?.add(Date.parse(time ?? variable.block.now.time), numberOf(value), kind);
    timer ||= setTimeout(readRecords, Refresh);
  }

  element.append(
    make('nav.crumbs', {'aria-label': 'Where this is'}, make('a', {href: '#/variables'}, 'Variables'), ' / ',
      make('a', {href: `#/variables?block=${variable.block.id}`}, variable.block.name)),
    schedule ?? makeHead(variable),
    make('div.variable', {},
      make('div.side', {}, schedule ? null : now.element, form?.element, makeFacts(variable)),
      make('div.wide', {}, trend?.element, device.element, make('div.pair', {}, records.elements))));
  now.draw(false);
  readRecords();
  if (schedule) {
    import('./schedule-view.js').then((view) => {
      if (isMounted) {
        unmountSchedule = view.mount(schedule, api, store, id);
      }
    });
  }
  const ends = [
    store.on('values', (variables) => variables.includes(variable) && follow()),
    store.on('block', (block) => {
      if (block === variable.block) {
        now.draw(false);
        form?.draw();
        trend?.advance(Date.parse(block.now.time));
      }
    }),
  ];
  return () => {
    isMounted = false;
    ends.forEach((end) => end());
    clearTimeout(timer);
    trend?.unmount();
    device.unmount();
    unmountSchedule?.();
  };
}
