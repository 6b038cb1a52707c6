"""Three files that say, in few bytes, much of what a page may say: so that there is always something to rewrite."""
import os

import pikepdf
from pikepdf import Array, Dictionary, Name, Stream, String

_STAR = b"20 2 m 32 38 l 2 14 l 38 14 l 8 38 l h f"


def _box(*sides):
    return Array(list(sides))


def _form(pdf, content, box=(0, 0, 40, 40), **entries):
    entries.setdefault("Resources", Dictionary())
    return pdf.make_indirect(Stream(pdf, content, Type=Name.XObject, Subtype=Name.Form, BBox=_box(*box), **entries))


def _font(pdf, name="Helvetica"):
    return pdf.make_indirect(Dictionary(Type=Name.Font, Subtype=Name.Type1, BaseFont=Name("/" + name),
                                        Encoding=Name.WinAnsiEncoding))


def _page(pdf, content, resources, box=(0, 0, 300, 400), **entries):
    page = pdf.make_indirect(Dictionary(Type=Name.Page, MediaBox=_box(*box), Resources=resources,
                                        Contents=Stream(pdf, content), **entries))
    pdf.pages.append(pikepdf.Page(page))
    return pdf.pages[-1].obj


def drawing(path):
    """Fonts of glyphs that are drawn, patterns, shadings, masks, pictures inside of contents and out of them; two pages
    that mean different things by the same name."""
    pdf = pikepdf.new()
    glyphs = pdf.make_indirect(Dictionary(
        Type=Name.Font, Subtype=Name.Type3, FontBBox=_box(0, 0, 40, 40), FontMatrix=Array([0.025, 0, 0, 0.025, 0, 0]),
        CharProcs=Dictionary(star=Stream(pdf, b"40 0 0 0 40 40 d1 " + _STAR)), FirstChar=65, LastChar=65, Widths=[40],
        Encoding=Dictionary(Differences=Array([65, Name.star])), Resources=Dictionary()))
    tiles = pdf.make_indirect(Stream(
        pdf, b".5 g 0 0 5 5 re f", PatternType=1, PaintType=1, TilingType=1, BBox=_box(0, 0, 10, 10), XStep=10,
        YStep=10.0, Resources=Dictionary()))
    ramp = pdf.make_indirect(Dictionary(ShadingType=2, ColorSpace=Name.DeviceRGB, Coords=Array([0, 0, 100, 0]),
                                        Extend=Array([True, False]),
                                        Function=Dictionary(FunctionType=2, Domain=Array([0, 1]), C0=Array([1, 0, 0]),
                                                            C1=Array([0, 0.25, 1]), N=1)))
    palette = Array([Name.Indexed, Name.DeviceRGB, 3, String(b"\xff\0\0\0\xff\0\0\0\xff()\\")])
    soft = pdf.make_indirect(Stream(pdf, bytes(range(0, 256, 16)), Type=Name.XObject, Subtype=Name.Image, Width=4,
                                    Height=4, BitsPerComponent=8, ColorSpace=Name.DeviceGray))
    picture = pdf.make_indirect(Stream(pdf, b"\x1b\x1b\xe4\xe4", Type=Name.XObject, Subtype=Name.Image, Width=4,
                                       Height=4, BitsPerComponent=2, ColorSpace=palette, SMask=soft))
    luminosity = Dictionary(Type=Name.Mask, S=Name.Luminosity, G=_form(
        pdf, b"1 g 5 5 30 30 re f", Group=Dictionary(S=Name.Transparency, CS=Name.DeviceGray)))
    states = Dictionary(G=Dictionary(SMask=luminosity, ca=0.75), N=Dictionary(SMask=Name("/None"), ca=1))
    inner = _form(pdf, b"0 .6 0 rg " + _STAR, Matrix=Array([1, 0, 0, 1, 2, 2]))
    outer = _form(pdf, b"q /F Do Q 1 0 0 RG 2 w 1 1 38 38 re S", Resources=Dictionary(XObject=Dictionary(F=inner)))
    resources = Dictionary(Font=Dictionary(T=_font(pdf), S=glyphs), Pattern=Dictionary(P=tiles),
                           Shading=Dictionary(R=ramp), XObject=Dictionary(I=picture, F=outer), ExtGState=states,
                           ColorSpace=Dictionary(C=palette))
    content = (b"BT /T 14 Tf 20 360 Td (A \\(plain\\) line, \\101 and \\\\) Tj 0 -20 Td [(T) 120 (wo) -300 (parts)] TJ "
               b"/S 30 Tf 0 -50 Td (AA) Tj ET\n"
               b"q /Pattern cs /P scn 20 200 100 60 re f Q\nq 1 0 0 1 150 200 cm 0 0 100 60 re W n /R sh Q\n"
               b"q 80 0 0 80 20 100 cm /I Do Q\nq 1 0 0 1 150 100 cm /G gs /F Do /N gs Q\n"
               b"/C cs 2 sc [3 1.5] .5 d 1 J 20 80 100 15 re B\n"
               b"q 40 0 0 40 200 100 cm BI /W 2 /H 2 /BPC 8 /CS /G ID \0\x80\xc0\x40 EI Q\n")
    page = _page(pdf, content, resources)
    other = Dictionary(Font=Dictionary(T=_font(pdf, "Courier-Bold")), XObject=Dictionary(F=inner))
    _page(pdf, b"BT /T 18 Tf 20 300 Td <4f74686572> Tj ET q 2 0 0 2 100 100 cm /F Do Q", other)
    third = _page(pdf, b"", resources)
    third.Contents = page.Contents
    pdf.save(path, static_id=True, compress_streams=False)


def notes(path):
    """Layers that are seen and not, marks and a form, one field of it without an appearance."""
    pdf = pikepdf.new()
    seen, unseen = (pdf.make_indirect(Dictionary(Type=Name.OCG, Name=String(name))) for name in ("seen", "unseen"))
    page = _page(pdf, b"/OC /On BDC 1 0 0 rg 20 300 60 60 re f EMC /OC /Off BDC 0 0 1 rg 100 300 60 60 re f EMC "
                      b"/Span <</ActualText (two words) /MCID 0>> BDC BT /T 12 Tf 20 260 Td (Two words) Tj ET EMC",
                 Dictionary(Font=Dictionary(T=_font(pdf)), Properties=Dictionary(On=seen, Off=unseen)))
    pdf.Root.OCProperties = Dictionary(OCGs=Array([seen, unseen]),
                                       D=Dictionary(Order=Array([seen, unseen]), OFF=Array([unseen])))
    helvetica = _font(pdf)
    stamp = pdf.make_indirect(Dictionary(Type=Name.Annot, Subtype=Name.Stamp, Rect=_box(200, 300, 280, 380), F=4,
                                         AP=Dictionary(N=_form(pdf, b"0 .5 .5 rg " + _STAR))))
    square = pdf.make_indirect(Dictionary(Type=Name.Annot, Subtype=Name.Square, Rect=_box(20, 150, 80, 200), F=4,
                                          C=Array([1, 0, 0]), IC=Array([1, 1, 0.5]), BS=Dictionary(W=3)))
    check = pdf.make_indirect(Dictionary(
        Type=Name.Annot, Subtype=Name.Widget, FT=Name.Btn, T=String("check"), V=Name.Yes, AS=Name.Yes, F=4,
        Rect=_box(100, 160, 140, 200),
        AP=Dictionary(N=Dictionary(Yes=_form(pdf, _STAR), Off=_form(pdf, b"1 1 38 38 re S")))))
    line = pdf.make_indirect(Dictionary(
        Type=Name.Annot, Subtype=Name.Widget, FT=Name.Tx, T=String("line"), V=String("Filled (in)"), F=4,
        Rect=_box(20, 100, 200, 120), DA=String("/Helv 11 Tf 0 g")))
    page.Annots = pdf.make_indirect(Array([stamp, square, check, line]))
    pdf.Root.AcroForm = Dictionary(Fields=Array([check, line]), NeedAppearances=True,
                                   DR=Dictionary(Font=Dictionary(Helv=helvetica)), DA=String("/Helv 0 Tf 0 g"))
    pdf.save(path, static_id=True)


def boxes(path):
    """Pages that inherit from two nodes, turned and cropped, with a unit of their own, with contents in parts."""
    pdf = pikepdf.new()
    resources = Dictionary(Font=Dictionary(T=_font(pdf, "Times-Roman")))
    text = b"BT /T 24 Tf 40 150 Td (Page %d) Tj ET 1 w 30 140 100 50 re S"
    pages = [_page(pdf, text % number, resources, box=(0, 0, 400, 300)) for number in range(1, 6)]
    pages[1].Rotate = 90
    pages[2].CropBox = _box(20, 100, 200, 250.5)
    pages[3].UserUnit = 1.5
    pages[4].Contents = Array([Stream(pdf, b"BT /T 24"), Stream(pdf, b"Tf 40 150 Td (In parts) Tj ET")])
    pages[4].Rotate = -90
    for page in pages:
        del page.Resources
        del page.MediaBox
    root = pdf.Root.Pages
    node = pdf.make_indirect(Dictionary(Type=Name.Pages, Parent=root, Kids=Array(pages[2:]), Count=3,
                                        MediaBox=_box(-10, 0, 390, 300)))
    for page in pages[2:]:
        page.Parent = node
    root.Kids = Array([*pages[:2], node])
    root.MediaBox, root.Resources = _box(0, 0, 400, 300), resources
    pdf.save(path, static_id=True, object_stream_mode=pikepdf.ObjectStreamMode.generate)


def write_into(folder):
    """Writes the three files and gives their paths."""
    paths = []
    for make in (drawing, notes, boxes):
        paths.append(os.path.join(folder, make.__name__ + ".pdf"))
        make(paths[-1])
    return paths
