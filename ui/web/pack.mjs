// Packs the page into one file: template, stylesheet, modules, the program as base64, and the examples.
//
//   node pack.mjs OUTPUT PROGRAM.js PROGRAM.wasm EXAMPLES_FOLDER ICON.png
//
// The modules are written one behind the other in the order in which they need each other, without their import and
// export lines; so two of them may not declare the same name, which the browser would refuse. The security policy of
// the file allows these scripts and this stylesheet, by their hashes, and nothing from anywhere else.
import { createHash } from 'node:crypto';
import { readFileSync, readdirSync, statSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const most_bytes = 1024 * 1024;
const here = join(dirname(fileURLToPath(import.meta.url)), 'page');
const [output, glueFile, wasmFile, examplesFolder, iconFile] = process.argv.slice(2);
const read = (name) => readFileSync(join(here, name), 'utf8');

function modulesFrom(entry, done = []) {
  const text = read(entry);
  for (const [, needed] of text.matchAll(/^import .* from '\.\/(.*)';$/gm))
    if (!done.includes(needed)) modulesFrom(needed, done);
  if (!done.includes(entry)) done.push(entry);
  return done;
}

/** What a reader needs and a browser does not. */
function bare(text) {
  return text.replace(/^import .*;\n/gm, '').replace(/^export /gm, '').replace(/^ *\/\/.*\n/gm, '')
    .replace(/^ *\/\*\*[^]*?\*\/\n/gm, '').replace(/\n{2,}/g, '\n').replace(/^ +/gm, '');
}

const hashOf = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;
// Whatever stands in a script, its end is where the file says it is.
const enclosed = (text) => text.replaceAll('</script', '<\\/script');

const style = read('style.css').replace(/\/\*[^]*?\*\//g, '').replace(/^ +/gm, '').replace(/\n+/g, '\n');
const glue = enclosed(readFileSync(glueFile, 'utf8'));
const page = enclosed(modulesFrom('main.js').map((name) => bare(read(name))).join(''));
const examples = Object.fromEntries(readdirSync(examplesFolder).filter((name) => /\.(asm|hex)$/.test(name)).sort()
  .map((name) => [name, readFileSync(join(examplesFolder, name), 'utf8')]));

const parts = {
  policy: `default-src 'none'; script-src ${hashOf(glue)} ${hashOf(page)} 'wasm-unsafe-eval'; ` +
    `style-src ${hashOf(style)}; img-src data:; base-uri 'none'; form-action 'none'`,
  icon: `data:image/png;base64,${readFileSync(iconFile).toString('base64')}`,
  style,
  program: readFileSync(wasmFile).toString('base64'),
  examples: enclosed(JSON.stringify(examples)),
  glue,
  page,
};
writeFileSync(output, read('template.html').replace(/{{(\w+)}}/g, (_, name) => parts[name]));

const { size } = statSync(output);
console.log(`${output}: ${size} bytes`);
if (size > most_bytes) {
  console.error(`${output} has more than the ${most_bytes} bytes that it may have`);
  process.exit(1);
}
