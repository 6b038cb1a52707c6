#!/usr/bin/python3
"""Writes the seeds that fuzzing starts from, the same bytes each time, into the folder seeds beside this file. Seeds of
settings are written by hand.

Usage: make_seeds.py
"""
import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def write(target, name, data):
    folder = os.path.join(HERE, "seeds", target)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as file:
        file.write(data)


def pdf(objects, version=b"1.7", root=1, trailer=b""):
    """A file of the objects given, numbered from 1. A pair is a stream's entries and its data."""
    out = b"%PDF-" + version + b"\n"
    places = []
    for number, body in enumerate(objects, 1):
        places.append(len(out))
        if isinstance(body, tuple):
            entries, data = body
            body = b"<<%s/Length %d>>stream\n%s\nendstream" % (entries, len(data), data)
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = len(out)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(places) + 1)
    out += b"".join(b"%010d 00000 n \n" % place for place in places)
    return out + b"trailer\n<</Size %d/Root %d 0 R%s>>\nstartxref\n%d\n%%%%EOF\n" % (len(places) + 1, root, trailer, table)


def page_file(page, *objects, catalog=b"", pages=b""):
    """A file of one page: objects 1 to 5 are the catalog, tree, page, content and font, `objects` begin with 6."""
    return pdf([b"<</Type/Catalog/Pages 2 0 R%s>>" % catalog, b"<</Type/Pages/Kids[3 0 R]/Count 1%s>>" % pages,
                b"<</Type/Page/Parent 2 0 R/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>%s>>" % page,
                (b"", b"BT /F 10 Tf 30 20 Td (ABC 000123) Tj ET"),
                b"<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>", *objects])


LETTER = b"/MediaBox[0 0 612 792]"


def annotation(entries, *objects):
    """A page with one annotation, object 6; `objects` begin with 7."""
    return page_file(LETTER + b"/Annots[6 0 R]", b"<</Type/Annot/Rect[100 600 300 700]" + entries + b">>", *objects)


def field(entries, *objects, form=b""):
    """A page with one form field, object 6; `objects` begin with 7."""
    return page_file(LETTER + b"/Annots[6 0 R]",
                     b"<</Type/Annot/Subtype/Widget/Rect[100 600 300 640]/T(field)" + entries + b">>", *objects,
                     catalog=b"/AcroForm<</Fields[6 0 R]/DA(/F 10 Tf 0 g)/DR<</Font<</F 5 0 R>>>>" + form + b">>")


def appearance(entries=b"", data=b"1 0 0 rg 0 0 200 100 re f"):
    return b"/Type/XObject/Subtype/Form/BBox[0 0 200 100]" + entries, data


FILES = {
    "highlight": annotation(b"/Subtype/Highlight/C[1 1 0]/QuadPoints[100 700 300 700 100 600 300 600]"),
    "underline": annotation(b"/Subtype/Underline/C[0.5]/QuadPoints[100 700 300 700 100 600 300 600]"),
    "squiggly": annotation(b"/Subtype/Squiggly/C[0 1 1 0]/QuadPoints[100 700 300 700 100 600 300 600]"),
    "strike-out": annotation(b"/Subtype/StrikeOut/QuadPoints[100 700 300 700]"),
    "square": annotation(b"/Subtype/Square/C[1 0 0]/IC[0 1 0]/BS<</W 3/S/D/D[3 2]>>/RD[1 1 1 1]/BE<</S/C/I 2>>"),
    "circle": annotation(b"/Subtype/Circle/C[]/Border[0 0 2[1 1]]/CA 0.5"),
    "line": annotation(b"/Subtype/Line/L[100 600 300 700]/LE[/OpenArrow/Diamond]/IC[1 0 0]"),
    "polygon": annotation(b"/Subtype/Polygon/Vertices[100 600 200 700 300 600]/IC[1 0 0]"),
    "polyline": annotation(b"/Subtype/PolyLine/Vertices[100 600 200 700 300]"),
    "ink": annotation(b"/Subtype/Ink/InkList[[100 600 150 700 200 600][200 600]]"),
    "free-text": annotation(b"/Subtype/FreeText/Contents(A note\r(second line\\))/DA(/Helv 0 Tf 1 0 0 rg)/Q 1/CL[90 590 100 600]"),
    "note": annotation(b"/Subtype/Text/Name/Comment/Contents(read me)/Popup 6 0 R"),
    "link": annotation(b"/Subtype/Link/A<</S/Launch/F(x)>>/Border[0 0 1]"),
    "stamp": annotation(b"/Subtype/Stamp/AP<</N 7 0 R>>/F 4", appearance(b"/Matrix[0 1 -1 0 10 20]")),
    "states": annotation(b"/Subtype/Stamp/AS/On/AP<</N<</On 7 0 R/Off null>>>>", appearance()),
    "flat-matrix": annotation(b"/Subtype/Stamp/AP<</N 7 0 R>>", appearance(b"/Matrix[0 0 0 0 0 0]")),
    "own-form": annotation(b"/Subtype/Stamp/AP<</N 7 0 R>>", appearance(b"/Resources<</XObject<</X 7 0 R>>>>", b"/X Do")),
    "layer": page_file(LETTER + b"/Annots[6 0 R]",
                       b"<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]/OC 8 0 R/AP<</N 7 0 R>>>>", appearance(b"/OC 9 0 R"),
                       b"<</Type/OCG/Name(l)>>", b"<</Type/OCMD/OCGs[8 0 R null]/P/AnyOff/VE[/And 8 0 R[/Not 8 0 R]]>>",
                       catalog=b"/OCProperties<</OCGs[8 0 R]/D<</BaseState/OFF/ON[8 0 R]/AS[]>>>>"),
    "text-field": field(b"/FT/Tx/V(value)/Q 2/DA(/F 0 Tf 1 0 0 rg)/MK<</BC[0]/BG[1 1 0]/R 90>>/BS<</W 2/S/B>>",
                        form=b"/NeedAppearances true"),
    "lines-field": field(b"/FT/Tx/Ff 4096/V<FEFF00410020D83DDD12000A0042>", form=b"/NeedAppearances true"),
    "comb-field": field(b"/FT/Tx/Ff 16777216/MaxLen 8/V(1234567890)", form=b"/NeedAppearances true"),
    "rich-field": field(b"/FT/Tx/V 7 0 R", (b"", b"a value in a stream"), form=b"/NeedAppearances true"),
    "combo-field": field(b"/FT/Ch/Ff 131072/V(b)/Opt[[(a)(one)][(b)(two)](c)]", form=b"/NeedAppearances true"),
    "list-field": field(b"/FT/Ch/V[(a)(c)]/I[0 2]/TI 1/Opt[(a)(b)(c)]", form=b"/NeedAppearances true"),
    "check-field": field(b"/FT/Btn/V/Yes/AS/Yes/MK<</CA(4)>>/AP<</N<</Yes 7 0 R>>>>", appearance()),
    "radio-field": field(b"/FT/Btn/Ff 32768/V/A/AS/Off/MK<</CA(l)>>"),
    "push-field": field(b"/FT/Btn/Ff 65536/MK<</CA(Send)/BG[0.8]/BC[0]>>"),
    "field-of-itself": field(b"/Parent 6 0 R", form=b"/NeedAppearances true"),
    "empty-box": page_file(b"/MediaBox[10 10 10 10]"),
    "turned-box": page_file(b"/MediaBox[612 792 0 0]/CropBox[500 700 100 100]/Rotate -90"),
    "crop-outside": page_file(LETTER + b"/CropBox[700 800 900 1000]/Rotate 450"),
    "huge-box": page_file(b"/MediaBox[-1e9 -99999999999999999999 1e38 0.0000001]"),
    "short-box": page_file(b"/MediaBox[0 0 612]/CropBox 7/Rotate 45"),
    "inherited-box": page_file(b"", pages=b"/MediaBox[0 0 300 300]/Rotate 180/Resources<<>>"),
    "user-unit": page_file(LETTER + b"/UserUnit 2.5/TrimBox[1 2 3 4]"),
    "reference-box": page_file(b"/MediaBox[6 0 R 0 7 0 R 792]", b"0", b"8 0 R"),
    "group": page_file(LETTER + b"/Group<</S/Transparency/CS/DeviceRGB/I true>>"),
    "many-contents": page_file(LETTER + b"/Contents[4 0 R 6 0 R null 99 0 R 4 0 R]", (b"", b"q q 1 0 0 1 0 0 cm")),
    "circle-of-kids": page_file(LETTER, pages=b"/Kids[3 0 R 2 0 R 3 0 R]/Count 99"),
    "lost-page": page_file(LETTER, pages=b"/Kids[77 0 R 3 0 R]/Count -1"),
    "no-table": page_file(LETTER).replace(b"startxref", b"startxxxx").replace(b"xref\n0", b"gone\n0"),
    "encrypted": pdf([b"<</Type/Catalog/Pages 2 0 R>>", b"<</Type/Pages/Kids[]/Count 0>>",
                      b"<</Filter/Standard/V 1/R 2/P -4/O(%s)/U(%s)>>" % (b"o" * 32, b"u" * 32)],
                     trailer=b"/Encrypt 3 0 R/ID[(12)(34)]"),
}


def request(kind, *parts, file=0):
    """A request to the reader with which file comes along, as fuzz_requests reads it."""
    message = struct.pack("<Bi", kind, parts[0]) + b"".join(parts[1:])
    return struct.pack("<BI", file, len(message)) + message


OPEN, CROP_BOX, MEDIA_SIZE, TEXT, RENDER = range(5)
AREA = struct.pack("<4d", 0, 0, 200, 100)
OPENED = request(OPEN, 0, file=1)
REQUESTS = {
    "open": OPENED,
    "open-nothing": request(OPEN, 0) + request(CROP_BOX, 0),
    "open-twice": OPENED + OPENED + request(OPEN, 0, file=2) + request(MEDIA_SIZE, 0),
    "boxes": OPENED + request(CROP_BOX, 0) + request(CROP_BOX, 2) + request(MEDIA_SIZE, 1) + request(MEDIA_SIZE, -1),
    "text": OPENED + request(TEXT, 0, struct.pack("<I", 2), AREA, AREA),
    "text-of-many": OPENED + request(TEXT, 1, struct.pack("<I", 0xffffffff), AREA * 70),
    "text-of-none": OPENED + request(TEXT, 0),
    "render": OPENED + request(RENDER, 0, struct.pack("<iid", 64, 64, 0.3), file=2),
    "render-nowhere": OPENED + request(RENDER, 0, struct.pack("<iid", 32, 32, 0.3)),
    "render-too-large": OPENED + request(RENDER, 0, struct.pack("<iid", 200, 200, 1), file=2),
    "render-onto-the-file": OPENED + request(RENDER, 0, struct.pack("<iid", 10, 10, float("nan")), file=1),
    "unknown": OPENED + request(200, 0) + b"\0\5\0\0\0abc",
    "endless": b"\0\xff\xff\xff\xff" + b"x" * 20,
}

TEXT_MESSAGE = b"\4\1" + struct.pack("<i4dI", 3, 0, 0, 612, 792, 3) + "ABC".encode("utf-16-le")
MESSAGES = {"text": TEXT_MESSAGE, "texts": TEXT_MESSAGE * 3,
            "long-text": b"\0\2" + struct.pack("<i4dI", -1, float("nan"), float("inf"), -0.0, 1e300, 0xffffffff) + b"ab"}

URI_LISTS = {
    "plain": b"file:///home/user/Exhibit%20A.pdf\r\nfile:///tmp/b.pdf\r\n",
    "comments": b"# a comment\r\nfile://localhost/a\nFILE:/b\nhttps://example.com/c\nfile://other/d",
    "odd": b"file:///%ff%00\nfile:///%e9%2\nfile:///100%\nfile:relative\nfile://\n\n \tfile:///x \n",
}

FEED = """<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel><title>Tallyfold</title>
<item><title>Version 1.10</title><link>https://example.com/1.10</link><sparkle:version>110</sparkle:version>
<sparkle:shortVersionString>1.10.0-beta2</sparkle:shortVersionString><sparkle:os>linux</sparkle:os>
<description><![CDATA[<h1>New</h1><p>A &amp; B<br/>C&nbsp;&#x1F512;&#0;</p><ul><li>one<li>two</ul><script>x<y</script>]]></description>
<enclosure url="https://example.com/t.tar.gz" sparkle:version="110" length="1" type="application/octet-stream"/></item>
<item><title>Old &lt;b&gt;</title><sparkle:channel>beta</sparkle:channel><sparkle:version>v1.0-rc.1</sparkle:version></item>
</channel></rss>
"""
APPCASTS = {
    "feed": FEED.encode(),
    "doctype": b"<!DOCTYPE rss [<!ENTITY a 'b'>]><rss><channel>&a;</channel></rss>",
    "notes": b"<p>one<p>two<!-- three --><style>a{}</style><pre>  x\n y</pre>&lt;&#60;&#x3c;&bogus;<a href='x>y'>z</a",
    "versions": b"1.0\nv1.0.0\n1.0-beta.2\n1.0-beta10\n00.1\n1..2\n9999999999999999999999.1\n-1\nV2",
    "bom": b"\xef\xbb\xbf<rss xmlns:a=\"x\"><channel><item><a:version>1</a:version></item></channel></rss>",
    "other": b"<html><body/></html>",
}


def main():
    for target, seeds, ending in (("stamp", FILES, ".pdf"), ("requests", REQUESTS, ""), ("messages", MESSAGES, ""),
                                  ("uri_list", URI_LISTS, ".txt"), ("appcast", APPCASTS, ".xml")):
        for name, data in seeds.items():
            write(target, name + ending, data)


if __name__ == "__main__":
    main()
