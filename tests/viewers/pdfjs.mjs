// Draws pages with pdf.js, and finds text on them as Firefox does. See pages.mjs for arguments and answer.
import { createRequire } from 'node:module';
import { dirname, join } from 'node:path';
import { format } from 'node:util';
import { answer, request, writePicture } from './pages.mjs';

const warnings = [];
console.log = console.warn = console.error = (...parts) => warnings.push(format(...parts)); // Its only ways to tell.
const { createCanvas } = await import('@napi-rs/canvas');
const { getDocument, VerbosityLevel } = await import('pdfjs-dist/legacy/build/pdf.mjs');
warnings.length = 0; // What it says of the machine is not about a file.

const folderOfViewer = dirname(createRequire(import.meta.url).resolve('pdfjs-dist/package.json'));
const part = (name) => join(folderOfViewer, name, '/');

async function draw(page, dpi, folder, number) {
  const viewport = page.getViewport({ scale: dpi / 72 });
  // Its own viewer leaves out what is less than a pixel as well.
  const width = Math.max(1, Math.floor(viewport.width + 0.001));
  const height = Math.max(1, Math.floor(viewport.height + 0.001));
  const canvas = createCanvas(width, height);
  await page.render({ canvas, canvasContext: canvas.getContext('2d'), viewport }).promise;
  return writePicture(folder, number, width, height, canvas.data());
}

/** Where `wanted` is found in the items of a page's text, joined as the search of Firefox joins them. */
async function find(page, wanted) {
  const { items } = await page.getTextContent({ disableNormalization: true });
  let text = '';
  const starts = items.map((item) => {
    const start = text.length;
    text += item.str + (item.hasEOL ? '\n' : '');
    return start;
  });
  const hits = [];
  for (let at = text.indexOf(wanted); at >= 0; at = text.indexOf(wanted, at + wanted.length)) {
    const box = { left: Infinity, bottom: Infinity, right: -Infinity, top: -Infinity };
    items.forEach((item, index) => {
      const first = Math.max(at, starts[index]) - starts[index];
      const end = Math.min(at + wanted.length, starts[index] + item.str.length) - starts[index];
      if (first < end) {
        const [, , , , x, y] = item.transform;
        box.left = Math.min(box.left, x + (item.width * first) / item.str.length);
        box.right = Math.max(box.right, x + (item.width * end) / item.str.length);
        box.bottom = Math.min(box.bottom, y);
        box.top = Math.max(box.top, y + item.height);
      }
    });
    hits.push(box);
  }
  return hits;
}

const { folder, data, pages } = request();
try {
  const document = await getDocument({
    data,
    cMapUrl: part('cmaps'),
    cMapPacked: true,
    standardFontDataUrl: part('standard_fonts'),
    wasmUrl: part('wasm'),
    iccUrl: part('iccs'),
    useSystemFonts: false,
    verbosity: VerbosityLevel.WARNINGS,
  }).promise;
  const done = [];
  for (const { number, dpi, text } of pages) {
    const result = { number, hits: [] };
    done.push(result);
    try {
      const page = await document.getPage(number);
      result.hits = text ? await find(page, text) : [];
      result.picture = await draw(page, dpi, folder, number);
      page.cleanup();
    } catch (error) {
      warnings.push(`a page is not drawn: ${error.message}`);
    }
  }
  answer(document.numPages, done, warnings);
} catch (error) {
  warnings.push(`the document is not opened: ${error.message}`);
  answer(0, [], warnings);
}
