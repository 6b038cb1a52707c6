#!/usr/bin/python3
"""Writes the sample files beside it: the same bytes every time. Needs python3-pikepdf.

The names in them are invented.
"""
import os

import pikepdf
from pikepdf import Array, Dictionary, Name, Pdf, String

HERE = os.path.dirname(os.path.abspath(__file__))
LETTER, A4, LEGAL = (612, 792), (595, 842), (612, 1008)

CLAUSES = (
    "The Landlord lets to the Tenant the premises known as Suite 410, 18 Harbor Street, for the term and at the",
    "rent set out in Schedule A, and the Tenant takes them in the condition in which they are on the first day.",
    "Rent is payable in advance on the first business day of each month, without deduction or set-off.",
    "The Tenant keeps the premises in good repair, fair wear and tear excepted, and makes no alteration without",
    "the written consent of the Landlord, which is not to be withheld without reason.",
    "Either party may give notice of termination not less than ninety days before the end of any year.",
)


def text(x, y, words, size=11, font="F1"):
    escaped = words.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
    return f"BT /{font} {size} Tf {x} {y} Td ({escaped}) Tj ET\n"


def paragraph(x, top, lines, leading=16, size=11):
    return "".join(text(x, top - leading * index, line, size) for index, line in enumerate(lines))


class Writer:
    """A document with Helvetica and its bold, page by page."""

    def __init__(self):
        self.pdf = Pdf.new()
        self.fonts = Dictionary({
            f"/{key}": self.pdf.make_indirect(Dictionary(Type=Name.Font, Subtype=Name.Type1, BaseFont=Name(f"/{base}"),
                                                         Encoding=Name.WinAnsiEncoding))
            for key, base in (("F1", "Times-Roman"), ("F2", "Helvetica-Bold"), ("Helv", "Helvetica"))})

    def page(self, content, size=LETTER, **entries):
        box = entries.pop("MediaBox", [0, 0, *size])
        page = Dictionary(Type=Name.Page, MediaBox=Array(box), Resources=Dictionary(Font=self.fonts),
                          Contents=self.pdf.make_stream(content.encode("cp1252")), **entries)
        self.pdf.pages.append(pikepdf.Page(self.pdf.make_indirect(page)))
        return self.pdf.pages[-1].obj

    def save(self, name, **options):
        self.pdf.save(os.path.join(HERE, name), static_id=True, compress_streams=True, **options)


def lease():
    """Letter, A4 and legal pages, one turned, one cropped with its corner elsewhere."""
    writer = Writer()
    writer.page(text(72, 700, "Exhibit A", 22, "F2") + text(72, 670, "Lease of Suite 410, 18 Harbor Street", 14)
                + paragraph(72, 620, CLAUSES))
    writer.page(text(72, 760, "Schedule A: Rent", 16, "F2") + paragraph(72, 720, CLAUSES[2:]), A4)
    writer.page(text(72, 930, "Schedule B: Inventory", 16, "F2") + paragraph(72, 890, CLAUSES[:4]), LEGAL)
    # Drawn sideways, shown upright after a turn: a floor plan.
    plan = ("0 1 -1 0 612 0 cm\n" + text(72, 520, "Schedule C: Floor plan", 16, "F2")
            + "2 w 72 80 640 400 re S 300 80 m 300 360 l S 300 280 m 712 280 l S\n"
            + text(130, 260, "Reception") + text(460, 380, "Open office") + text(460, 170, "Conference"))
    writer.page(plan, Rotate=90)
    survey = ("0.5 w -260 -180 520 340 re S -260 -180 m 260 160 l S\n" + text(-250, 170, "Schedule D: Survey", 14, "F2")
              + text(-60, 0, "Parcel 7"))
    writer.page(survey, MediaBox=[-400, -300, 400, 300], CropBox=Array([-300, -220, 300, 220]))
    writer.save("Exhibit A - Lease.pdf")


def form():
    """A form filled in by a program that leaves it to viewers to show the values."""
    writer = Writer()
    labels = ("Name", "Matter", "Claim number", "State", "Notes")
    content = text(72, 720, "Client intake", 20, "F2") + text(72, 700, "Ashdown & Pell LLP", 11)
    content += "".join(text(72, 648 - 44 * index, label) for index, label in enumerate(labels))
    content += text(92, 390, "Conflicts were checked") + text(92, 362, "By telephone") + text(202, 362, "In person")
    page = writer.page(content)
    pdf = writer.pdf
    look = Dictionary(BC=Array([0.6]), BG=Array([0.96, 0.97, 1]))

    def field(rect, **entries):
        return pdf.make_indirect(Dictionary(Type=Name.Annot, Subtype=Name.Widget, Rect=Array(rect), F=4, P=page, **entries))

    def text_field(name, value, top, **entries):
        return field([180, top, 500, top + 22], FT=Name.Tx, T=String(name), V=String(value), MK=look, **entries)

    fields = [
        text_field("name", "Harriet Okonkwo-Vane", 640),
        text_field("matter", "Okonkwo v. Harbor Street Holdings", 596),
        text_field("claim", "20261107", 552, Ff=1 << 24, MaxLen=12),
        field([180, 508, 500, 530], FT=Name.Ch, T=String("state"), Ff=1 << 17, V=String("ma"), MK=look,
              Opt=Array([Array([String("ct"), String("Connecticut")]), Array([String("ma"), String("Massachusetts")])])),
        field([180, 420, 500, 486], FT=Name.Tx, T=String("notes"), Ff=1 << 12, MK=look,
              V=String("Water damage in the conference room since March; photographs are in the box marked 3. "
                       "Prefers letters to calls.")),
    ]
    frame = "0.6 G 0.5 0.5 13 13 re S\n"
    cross = frame + "0 G 1.5 w 3 3 m 11 11 l S 3 11 m 11 3 l S\n"

    def box(drawing):
        return pdf.make_stream(drawing.encode(), Type=Name.XObject, Subtype=Name.Form, BBox=Array([0, 0, 14, 14]))

    on, off = box(cross), box(frame)
    fields.append(field([72, 388, 86, 402], FT=Name.Btn, T=String("checked"), V=Name.Yes, AS=Name.Yes,
                        AP=Dictionary(N=Dictionary(Yes=on, Off=off))))
    radio = pdf.make_indirect(Dictionary(FT=Name.Btn, T=String("how"), Ff=1 << 15, V=Name("/phone"), Kids=Array()))
    for x, state in ((72, "/phone"), (182, "/person")):
        kid = field([x, 360, x + 14, 374], Parent=radio, AS=Name("/phone") if state == "/phone" else Name.Off,
                    AP=Dictionary(N=Dictionary({state: on, "/Off": off})))
        radio.Kids.append(kid)
    page.Annots = Array(fields + list(radio.Kids))
    pdf.Root.AcroForm = Dictionary(Fields=Array(fields + [radio]), NeedAppearances=True,
                                   DA=String("/Helv 0 Tf 0 0 0.5 rg"), DR=Dictionary(Font=writer.fonts))
    writer.save("Intake form.pdf")


def minutes():
    """Pages that bear a number already, from an earlier production."""
    writer = Writer()
    for page in range(3):
        writer.page(text(72, 700, f"Minutes of the board, page {page + 1}", 16, "F2") + paragraph(72, 660, CLAUSES)
                    + text(500, 24, f"ACME{17 + page:06d}", 10, "Helv"))
    writer.save("Board minutes.pdf")


def deposition():
    """Marked up by a reader, without appearances; what the note says stays out of a copy."""
    writer = Writer()
    lines = ("Q.  When did you first see the water on the floor?", "A.  It must have been the second week of March.",
             "Q.  Whom did you tell?", "A.  I called the landlord's office the same day.", "Q.  Did anybody come?",
             "A.  Not until April.")
    page = writer.page(text(72, 700, "Deposition of H. Okonkwo-Vane, excerpt", 16, "F2") + paragraph(90, 650, lines, 24, 12))

    def quad(left, bottom, right, top):
        return {"Rect": Array([left, bottom, right, top]),
                "QuadPoints": Array([left, top, right, top, left, bottom, right, bottom])}

    def mark(subtype, color, **entries):
        return writer.pdf.make_indirect(Dictionary(Type=Name.Annot, Subtype=Name(subtype), F=4, C=Array(color), **entries))

    page.Annots = Array([
        mark("/Highlight", [1, 0.9, 0.3], **quad(110, 622, 348, 638)),
        mark("/Underline", [0.8, 0, 0], **quad(110, 574, 360, 588)),
        mark("/StrikeOut", [0.8, 0, 0], **quad(110, 526, 212, 540)),
        mark("/Square", [0, 0.3, 0.8], Rect=Array([84, 520, 380, 548]), BS=Dictionary(W=1.5)),
        mark("/Text", [1, 0.9, 0.3], Rect=Array([400, 620, 420, 640]), Contents=String("Ask about the date again.")),
    ])
    writer.save("Deposition excerpt.pdf")


def protected():
    """One that needs a password to open (sealed), and one that may not be printed."""
    writer = Writer()
    writer.page(text(72, 700, "Sealed letter", 20, "F2") + paragraph(72, 660, CLAUSES[:3]))
    writer.save("Sealed letter.pdf", encryption=pikepdf.Encryption(user="sealed", owner="owner", R=3, aes=False, metadata=False))
    writer = Writer()
    writer.page(text(72, 700, "Term sheet", 20, "F2") + paragraph(72, 660, CLAUSES[3:]))
    writer.save("Term sheet.pdf", encryption=pikepdf.Encryption(
        user="", owner="owner", R=3, aes=False, metadata=False, allow=pikepdf.Permissions(print_lowres=False, print_highres=False)))


if __name__ == "__main__":
    lease()
    form()
    minutes()
    deposition()
    protected()
