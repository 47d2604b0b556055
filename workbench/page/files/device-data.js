// What the device itself says of the object of a variable, read by the BACnet standard when a person asks for it.

import {announce, make, setAttribute, setText} from './dom.js';
import {shortTime} from './format.js';

const AgainMs = 500;
const MostAttempts = 60;
const NoAnswer = `The device has not answered in ${AgainMs * MostAttempts / 1000} s: ask it again later.`;

export function makeDeviceData(variable, api) {
  let isMounted = true;
  let isAsking = false;
  const message = make('p.dim', {role: 'status'}, 'All properties of the object, read from the device by the BACnet standard.');
  const list = make('dl.facts.properties');
  const button = make('button', {type: 'button', onclick: () => isAsking || read(MostAttempts)}, 'Ask the device');
  const element = make('section.panel', {'aria-labelledby': 'device-title'},
    make('div.panel-head', {}, make('h2', {id: 'device-title'}, 'The device\u2019s own data'), button), message, list);

  function show({state, reason, time, properties}) {
    list.replaceChildren(...properties.map(({name, value}) => [make('dt', {}, name), make('dd', {}, value)]).flat());
    setText(message, state === 'failed' ? `Not read: ${reason}` : `Read at ${shortTime(time)}${reason ? `, ${reason}` : ''}`);
    announce(message.textContent);
  }

  // The button stays enabled, because a disabled one loses the focus.
  function setAsking(asking) {
    isAsking = asking;
    setAttribute(button, 'aria-disabled', asking || null);
  }

  // The answer is "reading" until the device has answered; then it is asked for again.
  async function read(attempts) {
    setAsking(true);
    setText(message, `Asking ${variable.block.address || 'the device'} for ${variable.object}\u2026`);
    try {
      const answer = await api.device(variable.id);
      if (!isMounted) {
        return;
      }
      if (answer.state === 'reading' && attempts > 0) {
        setTimeout(() => isMounted && read(attempts - 1), AgainMs);
        return;
      }
      answer.state === 'reading' ? setText(message, NoAnswer) : show(answer);
    } catch (error) {
      setText(message, error.message);
    }
    setAsking(false);
  }

  return {element, unmount: () => { isMounted = false; }};
}
