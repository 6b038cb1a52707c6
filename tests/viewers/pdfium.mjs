// Draws pages with PDFium, and finds text on them as it does. See pages.mjs for arguments and answer.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { PDFiumModule } from '@hyzyla/pdfium';
import { answer, request, writePicture } from './pages.mjs';

const OPAQUE_WHITE = 0xffffffff;
const BITMAP_WITH_ALPHA = 4;
const DRAW_ANNOTATIONS = 0x01;
const RED_FIRST = 0x10;
const FORM_INFO_SIZE = 256; // More than the structure of any version has.
const FORM_INFO_VERSION = 2;

const warnings = [];
const say = (text) => warnings.push(text);
const pdfium = await PDFiumModule({
  wasmBinary: readFileSync(createRequire(import.meta.url).resolve('@hyzyla/pdfium/pdfium.wasm')),
  print: say,
  printErr: say,
});
const { malloc, free } = pdfium.wasmExports;

function memoryFor(bytes) {
  const place = malloc(bytes.length);
  pdfium.HEAPU8.set(bytes, place);
  return place;
}

/** The environment of a document's form fields, with none of the functions by which it would ask its host for something. */
function openForms(document) {
  const info = memoryFor(new Uint8Array(FORM_INFO_SIZE));
  new DataView(pdfium.HEAPU8.buffer).setUint32(info, FORM_INFO_VERSION, true);
  return pdfium._FPDFDOC_InitFormFillEnvironment(document, info);
}

function draw(page, forms, dpi, folder, number) {
  const width = Math.max(1, Math.round((pdfium._FPDF_GetPageWidthF(page) * dpi) / 72));
  const height = Math.max(1, Math.round((pdfium._FPDF_GetPageHeightF(page) * dpi) / 72));
  const bitmap = pdfium._FPDFBitmap_CreateEx(width, height, BITMAP_WITH_ALPHA, 0, width * 4);
  if (!bitmap) {
    say('no memory for the picture of a page');
    return undefined;
  }
  pdfium._FPDFBitmap_FillRect(bitmap, 0, 0, width, height, OPAQUE_WHITE);
  pdfium._FPDF_RenderPageBitmap(bitmap, page, 0, 0, width, height, 0, DRAW_ANNOTATIONS | RED_FIRST);
  pdfium._FPDF_FFLDraw(forms, bitmap, page, 0, 0, width, height, 0, RED_FIRST);
  const pixels = pdfium._FPDFBitmap_GetBuffer(bitmap);
  const picture = writePicture(folder, number, width, height, pdfium.HEAPU8.subarray(pixels, pixels + width * height * 4));
  pdfium._FPDFBitmap_Destroy(bitmap);
  return picture;
}

function boxOf(text, first, count) {
  const place = memoryFor(new Uint8Array(32));
  const box = { left: Infinity, bottom: Infinity, right: -Infinity, top: -Infinity };
  for (let index = first; index < first + count; ++index) {
    pdfium._FPDFText_GetCharBox(text, index, place, place + 8, place + 16, place + 24);
    const [left, right, bottom, top] = new Float64Array(pdfium.HEAPU8.slice(place, place + 32).buffer);
    box.left = Math.min(box.left, left);
    box.right = Math.max(box.right, right);
    box.bottom = Math.min(box.bottom, bottom);
    box.top = Math.max(box.top, top);
  }
  free(place);
  return box;
}

/** Where the search of PDFium finds `wanted`. */
function find(page, wanted) {
  const text = pdfium._FPDFText_LoadPage(page);
  const units = new Uint16Array([...Array(wanted.length).keys()].map((index) => wanted.charCodeAt(index)).concat(0));
  const place = memoryFor(new Uint8Array(units.buffer));
  const search = pdfium._FPDFText_FindStart(text, place, 0, 0);
  const hits = [];
  while (pdfium._FPDFText_FindNext(search)) {
    hits.push(boxOf(text, pdfium._FPDFText_GetSchResultIndex(search), pdfium._FPDFText_GetSchCount(search)));
  }
  pdfium._FPDFText_FindClose(search);
  pdfium._FPDFText_ClosePage(text);
  free(place);
  return hits;
}

const { folder, data, pages } = request();
pdfium._FPDF_InitLibrary();
const document = pdfium._FPDF_LoadMemDocument(memoryFor(data), data.length, 0);
if (!document) {
  say(`the document is not opened, error ${pdfium._FPDF_GetLastError()}`);
  answer(0, [], warnings);
} else {
  const forms = openForms(document);
  const done = pages.map(({ number, dpi, text }) => {
    const page = pdfium._FPDF_LoadPage(document, number - 1);
    if (!page) {
      say('a page is not opened');
      return { number, hits: [] };
    }
    pdfium._FORM_OnAfterLoadPage(page, forms);
    const result = { number, picture: draw(page, forms, dpi, folder, number), hits: text ? find(page, text) : [] };
    pdfium._FORM_OnBeforeClosePage(page, forms);
    pdfium._FPDF_ClosePage(page);
    return result;
  });
  answer(pdfium._FPDF_GetPageCount(document), done, warnings);
}
