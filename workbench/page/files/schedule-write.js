// Writing to the device: the dialog with changes and losses, the course of the write, and the comparison with what the
// device gives afterwards.

import {list, remarks, remarkText} from './schedule-dialog.js';
import {make} from './dom.js';
import {priorityText} from './write-entry.js';

const Patience = 20000;
const Pause = 700;

const wait = (ms) => new Promise((resolve) => { setTimeout(resolve, ms); });

function content(check) {
  return [
    remarks('changes', make('h3', {}, check.changes.length === 1 ? 'One change' : `${check.changes.length} changes`),
      check.changes),
    remarks('losses', make('h3', {}, 'The device will not get this as it is shown'), check.losses.map(remarkText)),
  ];
}

// The state of the write once it is no longer pending; null if there was none in time.
async function outcome(variable, text, before) {
  for (let waited = 0; waited < Patience; waited += 100) {
    const write = variable.now?.write;
    const isOurs = variable.now !== before && write && (write.value === undefined || String(write.value) === text);
    if (isOurs && write.state !== 'pending') {
      return write;
    }
    await wait(100);
  }
  return null;
}

// What the schedule of the device lacks to be the model, in sentences; it may be a cycle late.
async function differences(api, id, model) {
  let answer = null;
  for (let attempt = 0; attempt < 8; ++attempt) {
    answer = await api.composeSchedule(id, model);
    if (!answer.changes.length) {
      break;
    }
    await wait(Pause);
  }
  return answer.changes;
}

// A device answers a message that is too long for it with an abort, which the driver takes for silence.
const adviceOn = (reason) => (/has not answered/.test(reason) ? ' A device that answers otherwise has perhaps no room for ' +
  'so long a schedule: remove entries that repeat the value before them.' : '');

const Words = {
  written: 'Written.',
  unconfirmed: 'Sent, but the device has not confirmed it.',
  differs: 'Written, but the device holds something else.',
};

async function follow({api, variable, model, text}, say) {
  const before = variable.now;
  say('Pending: waiting for the next cycle of the driver …');
  await api.write(variable.id, text);
  const write = await outcome(variable, text, before);
  if (!write) {
    return say('No outcome yet. The write is still pending; its state is on the page of the variable.', 'warn');
  }
  if (write.state === 'refused' || write.state === 'invalid') {
    const reason = write.reason ?? 'the device gives no reason';
    return say(`Refused: ${reason}. The schedule of the device is unchanged.${adviceOn(reason)}`, 'bad');
  }
  say(`${Words[write.state] ?? write.state} Reading it back …`);
  const left = await differences(api, variable.id, model);
  if (!left.length) {
    return say('Written and read back: the device has exactly this schedule.', 'good', true);
  }
  return say('Written, but the device now gives another schedule. From it to yours:', 'warn', true, left);
}

// Opens the dialog. Resolves to whether something was written.
export function confirmWrite(job) {
  return new Promise((resolve) => {
    let isWritten = false;
    const {block, name, object} = job.variable;
    const body = make('div', {}, content(job.check));
    const status = make('div.schedule-outcome', {role: 'status', 'aria-live': 'polite'});
    const cancel = make('button', {type: 'button', onclick: () => dialog.close()}, 'Cancel');
    const write = make('button.main', {type: 'button'}, 'Write now');
    const title = make('h2', {}, `Write to ${block.name}?`);
    const say = (text, kind = '', written = false, details = []) => {
      isWritten ||= written;
      status.className = `schedule-outcome ${kind}`;
      status.replaceChildren(make('p', {}, text), details.length ? list('is-changes', details) : '');
    };
    write.addEventListener('click', async () => {
      write.hidden = true;
      cancel.disabled = true;
      try {
        await follow(job, say);
      } catch (error) {
        say(`Not written: ${error.message}`, 'bad');
      }
      cancel.disabled = false;
      cancel.textContent = 'Close';
      cancel.focus();
    });
    const dialog = make('dialog.schedule-dialog', {'aria-label': 'Write to the device'}, title,
      make('p.dim', {}, `${name} (${object}) is replaced as a whole. Priority of the write: ${priorityText(block)}.`),
      body, status,
      make('div.schedule-buttons', {}, cancel, write));
    dialog.addEventListener('cancel', (event) => cancel.disabled && event.preventDefault());
    dialog.addEventListener('close', () => {
      dialog.remove();
      resolve(isWritten);
    });
    document.body.append(dialog);
    dialog.showModal();
    write.focus();
  });
}
