// Usage: node make-streams.js FOLDER [NAME...]: writes NAME.bin and NAME.json for each receipt and
// target, or for those named. The streams depend on nothing but the packages' versions.

import { mkdir, readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import * as encoder from './receipt-printer-encoder.js';
import * as receiptline from './receiptline.js';
import * as thermal from './node-thermal-printer.js';
import { receipts } from './receipts.js';

const { dependencies } = JSON.parse(await readFile(new URL('package.json', import.meta.url)));
const makers = [
  ['receiptline', receiptline],
  ['@point-of-sale/receipt-printer-encoder', encoder],
  ['node-thermal-printer', thermal],
];

/** The lines of an object, each value on one of its own, and so those of `content`. */
function textOf({ content, ...facts }) {
  const lines = Object.entries(facts).filter(([, value]) => value !== undefined)
    .map(([key, value]) => ` ${JSON.stringify(key)}: ${JSON.stringify(value)},`);
  const printed = content.map((each) => `  ${JSON.stringify(each)}`).join(',\n');
  return ['{', ...lines, ' "content": [', printed, ' ]', '}', ''].join('\n');
}

async function write(folder, name, stream, description) {
  await writeFile(join(folder, `${name}.bin`), stream);
  await writeFile(join(folder, `${name}.json`), textOf(description));
}

const [folder, ...names] = process.argv.slice(2);
if (folder === undefined || folder.startsWith('-')) {
  console.error('Usage: node make-streams.js FOLDER [NAME...]');
  process.exit(2);
}
await mkdir(folder, { recursive: true });
let count = 0;
for (const [packageName, { targets, streamOf }] of makers) {
  for (const [targetName, target] of Object.entries(targets)) {
    for (const [receiptName, steps] of Object.entries(receipts)) {
      const name = `${targetName}-${receiptName}`;
      if (names.length > 0 && !names.includes(name)) continue;
      if (target.skips?.includes(receiptName)) continue;
      if (target.letters && !target.letters.test(JSON.stringify(steps))) continue;
      const { bytes, content, options } = await streamOf(target, steps);
      // A target that can do none of the steps but cut.
      if (content.every(({ kind }) => kind === 'cut')) continue;
      const { model, paper, columns, isTurned } = target;
      await write(folder, name, bytes, {
        encoder: `${packageName} ${dependencies[packageName]}`, command: `node make-streams.js FOLDER ${name}`,
        options, model, paper, columns, isTurned, content,
      });
      count++;
    }
  }
}
console.log(`${count} streams in ${folder}`);
