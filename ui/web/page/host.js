// What the program needs from the desktop, as the page gives it: boxes, files, clipboard, beep and the end.
//
//   const host = makeHost(program, () => files);

import { askBox } from './dialogs.js';

const kinds = ['ok', 'ok-right', 'yesno', 'yesnocancel', 'fault'];
const answers = ['yes', 'no', 'cancel', 'ok'];

export function makeHost(program, files) {
  /** What was copied here, for browsers that keep the clipboard to themselves. */
  let copied = '';
  let sound = null;
  return {
    box: async (kind, text) => {
      // Whoever reads the box sees the page as it stands.
      program.copy();
      return answers.indexOf(await askBox({ kind: kinds[kind], text }));
    },
    chooseFile: async (what) => {
      program.copy();
      return files().choose(what);
    },
    handOver: (chosen, written) => files().handOver(chosen, written),
    readClipboard: async () => {
      try {
        copied = await navigator.clipboard.readText();
      } catch { /* Refused, or not to be had. */ }
      return copied;
    },
    writeClipboard: async (text) => {
      copied = text;
      try {
        await navigator.clipboard.writeText(text);
      } catch { /* The same. */ }
      return 0;
    },
    beep: () => {
      sound ??= new AudioContext();
      const tone = sound.createOscillator();
      const volume = sound.createGain();
      volume.gain.value = 0.1;
      tone.connect(volume).connect(sound.destination);
      tone.start();
      tone.stop(sound.currentTime + 0.15);
    },
    end: () => {
      document.body.classList.add('ended');
      window.close();
    },
  };
}
