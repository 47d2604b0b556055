// Waiting for a condition, with a text for people when it does not come true.
import {setTimeout as pause} from 'node:timers/promises';

// Longest wait for a condition in milliseconds. Conditions come true within a few cycles of 100 ms, and much later on a
// machine that has other work.
export const LONGEST = 40000;

// Calls `condition` until its result is true, and returns that. `what` is what did not happen; a function is called for it.
export async function until(what, condition, longest = LONGEST) {
  const end = Date.now() + longest;
  for (;;) {
    const result = await condition();
    if (result) {
      return result;
    }
    if (Date.now() > end) {
      throw new Error(`not within ${longest / 1000} s: ${typeof what === "function" ? await what() : what}`);
    }
    await pause(20);
  }
}

// Waits until the text of an element matches, and returns it.
export async function untilText(locator, pattern, what) {
  let text = '';
  const matches = (candidate) => (pattern instanceof RegExp ? pattern.test(candidate) : candidate.includes(pattern));
  return until(
    () => `${what}: the text is "${text}", expected ${pattern}`,
    async () => {
      text = (await locator.count()) ? (await locator.first().innerText()).replace(/\s+/g, ' ').trim() : '(nothing)';
      return matches(text) && text;
    },
  );
}
