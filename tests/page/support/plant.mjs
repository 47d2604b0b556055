// What a browser cannot do: the test that started the script does it (tests/e2e/browser.py). A question is a line "ask" and
// JSON on standard output, the answer a line of JSON on standard input.
import {createInterface} from 'node:readline';

const waiting = [];

createInterface({input: process.stdin})
  .on('line', (line) => {
    const answer = JSON.parse(line);
    const {resolve, reject} = waiting.shift();
    if ('mistake' in answer) {
      reject(new Error(answer.mistake));
    } else {
      resolve(answer.result);
    }
  })
  // The test has ended, so nobody reads the result.
  .on('close', () => process.exit(1));

function ask(...question) {
  return new Promise((resolve, reject) => {
    waiting.push({resolve, reject});
    process.stdout.write(`ask ${JSON.stringify(question)}\n`);
  });
}

export const plant = {
  // The texts of properties as the device has them; a reference is "TYPE,INSTANCE,PROPERTY" in numbers.
  read: (device, ...references) => ask('read', device, ...references),
  // A command of the simulator, such as "fault * silence".
  command: (device, line) => ask('command', device, line),
  // Another client writes "BLOCK.VARIABLE=VALUE".
  set: (assignment) => ask('set', assignment),
  // Another program writes into the recording of the run.
  lockRecording: () => ask('lock_recording'),
  unlockRecording: () => ask('unlock_recording'),
  stopDevice: (device) => ask('stop_device', device),
  stopWorkbench: () => ask('stop_workbench'),
};
