// Gives what pdf.js calls the pages of files. Arguments: FILE... One line of JSON on standard output: per file the labels of its
// pages, or null where it has none.
import { readFileSync } from 'node:fs';
import { getDocument, VerbosityLevel } from 'pdfjs-dist/legacy/build/pdf.mjs';

const labels = [];
for (const file of process.argv.slice(2)) {
  const task = getDocument({ data: new Uint8Array(readFileSync(file)), verbosity: VerbosityLevel.ERRORS });
  labels.push(await (await task.promise).getPageLabels());
  await task.destroy();
}
process.stdout.write(`${JSON.stringify(labels)}\n`);
