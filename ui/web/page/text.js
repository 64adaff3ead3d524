// Text between the program and the page. The program holds UTF-8 with CR LF line ends and counts characters, a line
// end being two; elements hold UTF-16 with one unit a line end. This is the one place that converts.
//
//   shown('uno\r\ndos')                 -> 'uno\ndos'
//   recorded('uno\ndos')                -> 'uno\r\ndos'
//   unitOfChar('uno\ndos', 5)           -> 4
//   charOfUnit('uno\ndos', 4)           -> 5
//   difference('uno dos', 'uno X dos', 4)   -> { start: 4, end: 4, text: 'X ' }

export const shown = (text) => text.replaceAll('\r\n', '\n');
export const recorded = (text) => text.replace(/\r\n|\r|\n/g, '\r\n');

/** How many characters the unit at a place stands for: none for the second half of a pair. */
function charsAt(text, unit) {
  const code = text.charCodeAt(unit);
  if (code === 10) return 2;
  return code >= 0xdc00 && code < 0xe000 ? 0 : 1;
}

/** The unit at which a character stands; within a line end, the place before it. */
export function unitOfChar(text, char) {
  let unit = 0;
  for (let chars = 0; unit < text.length; ++unit) {
    chars += charsAt(text, unit);
    if (chars > char) break;
  }
  return unit;
}

export function charOfUnit(text, unit) {
  let chars = 0;
  for (let at = 0; at < unit && at < text.length; ++at) chars += charsAt(text, at);
  return chars;
}

/** The least that was changed between two texts; where it could have been in several places, nearest to the caret. */
export function difference(before, after, caret) {
  const shorter = Math.min(before.length, after.length);
  let head = 0;
  while (head < shorter && before[head] === after[head]) ++head;
  let tail = 0;
  while (tail < shorter && before[before.length - 1 - tail] === after[after.length - 1 - tail]) ++tail;
  let start = head;
  if (head + tail > shorter) start = Math.min(Math.max(caret, shorter - tail), head);
  tail = Math.min(tail, shorter - start);
  return { start, end: before.length - tail, text: after.slice(start, after.length - tail) };
}
