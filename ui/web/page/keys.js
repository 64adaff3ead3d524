// The keys of the whole page: F5 runs and stops, F7 and F8 step, F9 is the breakpoint, Ctrl+0 clears the cycles, and
// Alt with the letter that is underlined in a caption presses that button.
//
//   listenToKeys(controls, program);

import { accelerator } from './captions.js';

const buttons = {
  F5: { name: 'ejecutar', repeats: false },
  F7: { name: 'eje1', repeats: true },
  F8: { name: 'eje1', repeats: true },
  F9: { name: 'break', repeats: false },
};

export function listenToKeys(controls, program) {
  document.addEventListener('keydown', (event) => {
    if (program.isModal) return;
    const button = event.altKey || event.ctrlKey || event.metaKey || event.shiftKey ? undefined : buttons[event.key];
    if (button) {
      event.preventDefault();
      // A run would be stopped by the key that has started it.
      if (button.repeats || !event.repeat) program.act('press', controls.named(button.name).which);
    } else if (event.ctrlKey && !event.altKey && !event.shiftKey && event.code === 'Digit0') {
      event.preventDefault();
      program.act('dblclick', controls.named('ciclos').which, 0);
    } else if (event.altKey && !event.ctrlKey && !event.metaKey && !event.getModifierState('AltGraph')) {
      pressAccelerator(controls, event);
    }
  });
}

/** The letters that the event may stand for: on some systems Alt makes other signs of them. */
function lettersOf({ key, code }) {
  return [key.toLowerCase(), code.replace(/^(Key|Digit)/, '').toLowerCase()];
}

function pressAccelerator(controls, event) {
  const letters = lettersOf(event);
  const wanted = controls.find(({ kind, record, field }) => kind === 'button' && !field.disabled &&
    letters.includes(accelerator(record.text)) && getComputedStyle(field).visibility === 'visible');
  if (!wanted) return;
  event.preventDefault();
  wanted.field.focus();
  wanted.field.click();
}
