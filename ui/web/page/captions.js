// Captions with the mark of their accelerator, and the small pictures of the file buttons.
//
//   accelerator('C&argar HEX')     -> 'a'
//   putCaption(button, 'C&argar HEX')   C<u>a</u>rgar HEX

export const accelerator = (caption) => (/&(.)/u.exec(caption)?.[1] ?? '').toLowerCase();
export const plain = (caption) => caption.replace('&', '');

export function putCaption(element, caption) {
  const at = caption.indexOf('&');
  if (at < 0) {
    element.textContent = caption;
    return;
  }
  const underlined = document.createElement('u');
  underlined.textContent = caption[at + 1];
  element.replaceChildren(caption.slice(0, at), underlined, caption.slice(at + 2));
}

// On a sheet of 16 by 16.
const drawings = {
  folder: 'M1.5 13.5V3.5H6L7.5 5.5H12.5V7.5M1.5 13.5L4 7.5H15L12.5 13.5Z',
  disk: 'M2 2H11.5L14 4.5V14H2ZM5 2V5.5H10V2M4.5 14V8.5H11.5V14',
  bin: 'M2 4H14M6 4V2H10V4M3.5 4L4.2 14H11.8L12.5 4M6.5 6.5L6.7 11.5M9.5 6.5L9.3 11.5',
  chip: 'M4.5 1.5H11.5V14.5H4.5ZM1.5 4H4.5M1.5 8H4.5M1.5 12H4.5M11.5 4H14.5M11.5 8H14.5M11.5 12H14.5',
};
const drawingOf = {
  cargar: 'folder', cargarasm: 'folder', salvar: 'disk', salvarasm: 'disk', borrar: 'bin', borrarasm: 'bin',
  salvar16c84: 'chip',
};

/** The picture of a button; nothing for those without one. */
export function pictureOf(name) {
  const drawing = drawings[drawingOf[name]];
  if (!drawing) return null;
  const space = 'http://www.w3.org/2000/svg';
  const picture = document.createElementNS(space, 'svg');
  picture.setAttribute('viewBox', '0 0 16 16');
  picture.setAttribute('aria-hidden', 'true');
  const path = document.createElementNS(space, 'path');
  path.setAttribute('d', drawing);
  picture.append(path);
  return picture;
}
