"""Makes the files that show what no file of a collection may happen to show."""
import os


def make_samples(folder):
    """Writes the samples into `folder`; gives their names."""
    names = []
    for name, data in samples():
        with open(os.path.join(folder, name), "wb") as file:
            file.write(data)
        names.append(name)
    return names


def pdf(objects):
    """A file of `objects`, number 1 its catalog: dictionaries as text, or pairs of a dictionary's entries and the data of
    a stream."""
    data = b"%PDF-1.7\n"
    places = []
    for number, item in enumerate(objects, 1):
        places.append(len(data))
        if isinstance(item, tuple):
            entries, content = item
            content = content if isinstance(content, bytes) else content.encode()
            body = f"<<{entries}/Length {len(content)}>>stream\n".encode() + content + b"\nendstream"
        else:
            body = item.encode()
        data += f"{number} 0 obj\n".encode() + body + b"\nendobj\n"
    table = len(data)
    data += f"xref\n0 {len(objects) + 1}\n0000000000 65535 f \n".encode()
    data += b"".join(f"{place:010d} 00000 n \n".encode() for place in places)
    return data + f"trailer<</Size {len(objects) + 1}/Root 1 0 R>>\nstartxref\n{table}\n%%EOF\n".encode()


def page(content, fonts="", size=(612, 792), further=(), entries=""):
    """A file of one page with Helvetica as /F and further `fonts`; `further` objects are numbered from 5."""
    return pdf(["<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
                f"<</Type/Page/Parent 2 0 R/MediaBox[0 0 {size[0]} {size[1]}]/Contents 4 0 R/Resources<<"
                f"/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>{fonts}>>>>{entries}>>",
                ("", content), *further])


def from_the_right(first):
    """Objects 5 and 6: a font whose letters a to h are those of another script from `first` on."""
    return ("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/ToUnicode 6 0 R>>",
            ("", "begincmap 1 begincodespacerange<00><ff>endcodespacerange 1 beginbfrange<61><68>"
                 f"<{first:04x}>endbfrange endcmap"))


def texts_from_the_right():
    """Text from the right at the height of the stamp: the last that the page draws, in one piece and in several, small and
    large, alone and around digits."""
    for script, first in (("hebrew", 0x5d0), ("arabic", 0x628)):
        font = from_the_right(first)
        yield f"{script}-one.pdf", page("BT /R 10 Tf 300 20 Td (dcba hgfe) Tj ET", fonts="/R 5 0 R", further=font)
        yield f"{script}-words.pdf", page("BT /R 10 Tf 72 20 Td (dcba) Tj 60 0 Td (hgfe) Tj 60 0 Td (dcba) Tj ET",
                                          fonts="/R 5 0 R", further=font)
        yield f"{script}-large.pdf", page("BT /R 30 Tf 72 22 Td (dcba hgfe) Tj ET", fonts="/R 5 0 R", further=font)
        yield f"{script}-digits.pdf", page("BT /R 10 Tf 300 20 Td (dcba) Tj /F 10 Tf 40 0 Td (123) Tj /R 10 Tf 40 0 Td "
                                           "(dcba) Tj ET", fonts="/R 5 0 R", further=font)


TEXT_BELOW = "BT /F 24 Tf 72 700 Td (What is marked can be read) Tj ET"
MARK = "/S gs 1 1 0 rg 0 0 300 30 re f"
MULTIPLY = "/Resources<</ExtGState<</S<</BM/Multiply/ca 1>>>>>>"
BOX = "/Type/XObject/Subtype/Form/BBox[0 0 300 30]"


def highlight(appearance, further=()):
    """A highlight over text; its appearance is object 5, `further` ones are numbered from 7."""
    annotation = ("<</Type/Annot/Subtype/Highlight/F 4/C[1 1 0]/Rect[70 695 370 725]"
                  "/QuadPoints[70 725 370 725 70 695 370 695]/AP<</N 5 0 R>>>>")
    return page(TEXT_BELOW, further=(appearance, annotation, *further), entries="/Annots[6 0 R]")


def highlights():
    """Highlights that multiply with what is below, in a group of each kind, right in the appearance and one form deeper."""
    for name, group in (("none", ""), ("plain", "/Group<</S/Transparency>>"),
                        ("said", "/Group<</S/Transparency/I false/K false/CS/DeviceRGB>>"),
                        ("isolated", "/Group<</S/Transparency/I true>>"),
                        ("knockout", "/Group<</S/Transparency/K true>>")):
        yield f"highlight-{name}.pdf", highlight((BOX + group + MULTIPLY, MARK))
        yield f"highlight-{name}-deeper.pdf", highlight((BOX + group + "/Resources<</XObject<</D 7 0 R>>>>", "q /D Do Q"),
                                                        [(BOX + group + MULTIPLY, MARK)])
        yield f"highlight-{name}-outside.pdf", highlight(
            (BOX + group + "/Resources<</XObject<</D 7 0 R>>/ExtGState<</S<</BM/Multiply>>>>>>", "q /S gs /D Do Q"),
            [(BOX + "/Group<</S/Transparency>>", MARK[6:])])


def fractions():
    """Pages of no whole number of pixels, filled beyond their edges."""
    for name, box in (("half", (612.5, 792.5)), ("little", (612.04, 792.03)), ("most", (611.97, 791.96))):
        for turn in (0, 90):
            yield f"fraction-{name}-{turn}.pdf", page("1 0 0 rg -100 -100 2000 2000 re f 0 0 1 rg 300 -100 9 2000 re f",
                                                      size=box, entries=f"/Rotate {turn}")
    yield "fraction-cropped.pdf", page("0 .5 0 rg -100 -100 2000 2000 re f",
                                       entries="/CropBox[.3 .7 500.6 600.4]")


def leftovers():
    """Operands that no operator takes at the end of a page's content, or before another one."""
    yield "leftover-end.pdf", page("BT /F 12 Tf 72 700 Td (A number at the end) Tj ET 7")
    yield "leftover-colour.pdf", page(".5 .5 .5 sc BT /F 12 Tf 72 700 Td (Two too many) Tj ET")
    yield "leftover-mark.pdf", page("/A /B BMC BT /F 12 Tf 72 700 Td (Marked) Tj ET EMC /C /D MP")


def open_asides():
    """Texts that stand for others and are never ended: of the page, of a form it draws, and one in another."""
    text = "/Span<</ActualText(aside)>>BDC BT /F 12 Tf 72 20 Td (Left open) Tj ET"
    form = ("/Type/XObject/Subtype/Form/BBox[0 0 612 792]/Resources<</Font<</F<</Type/Font/Subtype/Type1"
            "/BaseFont/Helvetica>>>>>>", text)
    yield "aside-page.pdf", page(text)
    yield "aside-twice.pdf", page("/Span<</ActualText()>>BDC " + text)
    # The page's fonts are the last entry of its resources.
    yield "aside-form.pdf", page("/D Do", fonts=">>/XObject<</D 5 0 R", further=[form])


def samples():
    """Pairs of a name and the file's bytes."""
    yield "plain.pdf", page("BT /F 12 Tf 72 700 Td (Plain) Tj ET")
    yield from texts_from_the_right()
    yield from highlights()
    yield from fractions()
    yield from leftovers()
    yield from open_asides()
