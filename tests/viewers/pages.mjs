// What the programs of all viewers here share: their arguments, their pictures and what they give back.
//
// Arguments: FILE PICTURES [PAGE:DPI[:TEXT]]... ; PICTURES is a folder for the pictures, PAGE counts from 1, TEXT is looked
// for on the page. One line of JSON on standard output tells what came of it:
//   count     pages of the file, 0 when the viewer does not open it
//   pages     per page asked for: number, picture (a PPM file, absent when the page is not drawn), hits: where TEXT was
//             found, each with left, bottom, right and top in the page's units
//   warnings  what the viewer said of the file, in its own words
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';

/** The file and the pages that the program's arguments ask for. */
export function request() {
  const [file, folder, ...pages] = process.argv.slice(2);
  return {
    folder,
    data: new Uint8Array(readFileSync(file)),
    pages: pages.map((page) => {
      const [number, dpi, ...text] = page.split(':');
      return { number: Number(number), dpi: Number(dpi), text: text.join(':') };
    }),
  };
}

/** Writes a picture of four bytes to a pixel, red first, as a PPM file; gives its name. */
export function writePicture(folder, number, width, height, pixels) {
  const header = Buffer.from(`P6\n${width} ${height}\n255\n`);
  const data = Buffer.alloc(header.length + width * height * 3);
  header.copy(data);
  for (let from = 0, to = header.length; from < width * height * 4; from += 4) {
    data[to++] = pixels[from];
    data[to++] = pixels[from + 1];
    data[to++] = pixels[from + 2];
  }
  const name = join(folder, `${number}.ppm`);
  writeFileSync(name, data);
  return name;
}

/** Ends the program with its answer. */
export function answer(count, pages, warnings) {
  process.stdout.write(`${JSON.stringify({ count, pages, warnings })}\n`, () => process.exit(0));
}
