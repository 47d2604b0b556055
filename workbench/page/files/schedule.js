// #/schedules/ID: the view of a schedule.

import {mount as mountSchedule} from './schedule-view.js';

export function mount(element, {api, store, id}) {
  return mountSchedule(element, api, store, id);
}
