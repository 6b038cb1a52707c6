#!/usr/bin/python3
"""Tests same_objects.py: it finds nothing in a good copy, and each fault that is put into one.

Usage: same_objects_test.py PRODUCE
"""
import os
import subprocess
import sys
import tempfile
import unittest

import pikepdf
from pikepdf import Array, Dictionary, Name, Stream, String

from rewriting.rewriting import rewrite
from rewritten import made_files
from same_objects import findings

PRODUCE = None
SAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "samples")
SECRET = b"what nobody can see on this page"


def write_original(path):
    """One page with a font, a picture, a mask, a layer, a drawn annotation, and things that are not seen."""
    pdf = pikepdf.new()

    def form(content, **entries):
        return pdf.make_indirect(Stream(pdf, content, Type=Name.XObject, Subtype=Name.Form,
                                        BBox=Array([0, 0, 20, 20]), **entries))

    layer = pdf.make_indirect(Dictionary(Type=Name.OCG, Name=String("Layer")))
    lent = form(b"/X Do")
    picture = pdf.make_indirect(Stream(pdf, bytes(range(12)), Type=Name.XObject, Subtype=Name.Image, Width=2, Height=2,
                                       BitsPerComponent=8, ColorSpace=pdf.make_indirect(Name.DeviceRGB),
                                       Decode=Array([0, 1, 0, 1, 0, 1]),
                                       Metadata=Stream(pdf, SECRET + b" of the picture")))
    mask = Dictionary(Type=Name.Mask, S=Name.Luminosity, G=form(b"0 g 0 0 9 9 re f", Resources=Dictionary()))
    font = pdf.make_indirect(Dictionary(Type=Name.Font, Subtype=Name.Type1, BaseFont=Name.Helvetica,
                                        Widths=Array([500, 600.5, 700]), FirstChar=65))
    note = pdf.make_indirect(Dictionary(
        Type=Name.Annot, Subtype=Name.Stamp, Rect=Array([20, 20, 40, 40]), Contents=String(SECRET),
        AP=Dictionary(N=form(b"1 0 0 rg 0 0 20 20 re f", OC=layer, Matrix=Array([1, 0]),
                             Group=Dictionary(S=Name.Transparency, I=True),
                             Resources=Dictionary(ProcSet=Array([Name.PDF]))))))
    hidden = pdf.make_indirect(Dictionary(
        Type=Name.Annot, Subtype=Name.Stamp, Rect=Array([60, 20, 80, 40]), F=2,
        AP=Dictionary(N=form(b"% " + SECRET + b" either"))))
    link = pdf.make_indirect(Dictionary(
        Type=Name.Annot, Subtype=Name.Link, Rect=Array([100, 20, 120, 40]),
        AP=Dictionary(N=form(b"/G Do /I Do", Group=Dictionary(S=Name.Transparency, K=True),
                             Resources=Dictionary(XObject=Dictionary(
                                 G=form(b"0 0 1 rg 0 0 20 20 re f", Resources=Dictionary(),
                                        Group=Dictionary(S=Name.Transparency)),
                                 I=form(b"0 0 1 rg 0 0 20 20 re f", Resources=Dictionary(),
                                        Group=Dictionary(S=Name.Transparency, I=True))))))))
    page = Dictionary(
        Type=Name.Page, MediaBox=Array([0, 0, 200, 200]), Annots=Array([note, hidden, link]),
        Group=Dictionary(S=Name.Transparency, CS=Name.DeviceRGB),
        Resources=Dictionary(
            Font=Dictionary(F=font), XObject=Dictionary(X=picture, Lent=lent), Properties=Dictionary(L=layer),
            ExtGState=Dictionary(G=pdf.make_indirect(Dictionary(SMask=mask, ca=0.5)))),
        Contents=Stream(pdf, b"/OC /L BDC BT /F 9 Tf (AB) Tj ET EMC /G gs /X Do"))
    pdf.pages.append(pikepdf.Page(page))
    pdf.Root.OCProperties = Dictionary(OCGs=Array([layer]), D=Dictionary(OFF=Array([layer])))
    pdf.Root.Names = Dictionary(JavaScript=Dictionary(JS=String(SECRET + b" and no viewer does")))
    pdf.save(path)


class SameObjects(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.original = os.path.join(cls.folder.name, "original.pdf")
        write_original(cls.original)
        written = os.path.join(cls.folder.name, "written")
        os.mkdir(written)
        subprocess.run([PRODUCE, "--no-index", written, cls.original], check=True, stdout=subprocess.DEVNULL)
        cls.copy = os.path.join(written, os.listdir(written)[0])
        cls.damaged = os.path.join(cls.folder.name, "damaged.pdf")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def findings_after(self, change):
        """What is found when `change` was made to the copy, given the file, its page, and the page's form."""
        with pikepdf.open(self.copy) as pdf:
            page = pdf.Root.Pages.Kids[0]
            while "/Kids" in page:
                page = page.Kids[0]
            change(pdf, page, page.Resources.XObject.P)
            pdf.save(self.damaged)
        return findings(self.original, self.damaged)

    def assert_found(self, part, change):
        """`part` is found and nothing else; it may be met by way of the form that borrows the page's resources."""
        found = [line.replace("/Resources/XObject/Lent/Resources(borrowed)", "/Resources")
                 for line in self.findings_after(change)]
        self.assertEqual([line for line in found if part not in line], [])
        self.assertNotEqual(found, [])

    def test_nothing_is_found_in_a_copy(self):
        self.assertEqual(findings(self.original, self.copy), [])

    def test_nothing_is_found_in_a_copy_written_anew(self):
        self.assertEqual(self.findings_after(lambda pdf, page, form: None), [])

    def test_what_was_indirect_may_be_direct(self):
        def change(pdf, page, form):
            form.Resources.XObject.X.ColorSpace = Name.DeviceRGB
            form.Resources.Font.F = Dictionary(dict(form.Resources.Font.F.items()))
        self.assertEqual(self.findings_after(change), [])

    def test_another_name(self):
        self.assert_found("page 1 /Resources/XObject/X/ColorSpace: /DeviceRGB became /DeviceGray",
                          lambda pdf, page, form: form.Resources.XObject.X.__setitem__("/ColorSpace", Name.DeviceGray))

    def test_a_number_in_an_array(self):
        self.assert_found("page 1 /Resources/Font/F/Widths[1]: 600.5 became 600",
                          lambda pdf, page, form: form.Resources.Font.F.Widths.__setitem__(1, 600))

    def test_a_shorter_array(self):
        self.assert_found("/Resources/Font/F/Widths: 3 items became 2",
                          lambda pdf, page, form: form.Resources.Font.F.Widths.__delitem__(2))

    def test_another_type(self):
        self.assert_found("/Resources/Font/F/FirstChar: 65 became /A",
                          lambda pdf, page, form: form.Resources.Font.F.__setitem__("/FirstChar", Name.A))

    def test_a_lost_key(self):
        self.assert_found("/Resources/ExtGState/G/ca: 0.5 became nothing",
                          lambda pdf, page, form: form.Resources.ExtGState.G.__delitem__("/ca"))

    def test_one_key_more(self):
        self.assert_found("/Resources/ExtGState/G/CA: 1 in the copy",
                          lambda pdf, page, form: form.Resources.ExtGState.G.__setitem__("/CA", 1))

    def test_a_lost_resource(self):
        self.assert_found("/Resources/XObject", lambda pdf, page, form: form.Resources.__delitem__("/XObject"))

    def test_a_lost_name_of_a_resource(self):
        self.assert_found("/Resources/Font/F", lambda pdf, page, form: form.Resources.Font.__delitem__("/F"))

    def test_data_of_a_picture(self):
        self.assert_found("/Resources/XObject/X: stream data differs",
                          lambda pdf, page, form: form.Resources.XObject.X.write(bytes(12)))

    def test_data_deep_down(self):
        self.assert_found("/Resources/ExtGState/G/SMask/G: stream data differs",
                          lambda pdf, page, form: form.Resources.ExtGState.G.SMask.G.write(b"0 g"))

    def test_resources_that_were_borrowed(self):
        self.assert_found("/Resources/XObject/Lent/Resources: missing, and the original took",
                          lambda pdf, page, form: form.Resources.XObject.Lent.__delitem__("/Resources"))

    def test_other_resources_than_the_borrowed_ones(self):
        def change(pdf, page, form):
            form.Resources.XObject.Lent.Resources = Dictionary(XObject=Dictionary())
        self.assert_found("page 1 /Resources/", change)

    def test_a_filter(self):
        def change(pdf, page, form):
            picture = form.Resources.XObject.X
            picture.write(picture.read_raw_bytes(), filter=Name.RunLengthDecode)
        self.assert_found("/Resources/XObject/X/Filter", change)

    def test_the_content(self):
        self.assert_found("page 1 /Contents: stream data differs", lambda pdf, page, form: form.write(b"q Q"))

    def test_a_lost_group(self):
        self.assert_found("page 1 /Group", lambda pdf, page, form: page.__delitem__("/Group"))

    def test_a_lost_appearance(self):
        self.assert_found("page 1 /Annots[0]: the copy does not draw its appearance",
                          lambda pdf, page, form: page.Resources.XObject.__delitem__("/A0"))

    def test_an_appearance_with_other_resources(self):
        self.assert_found("page 1 /Annots[0]/AP/N/Resources/ProcSet",
                          lambda pdf, page, form: page.Resources.XObject.A0.Resources.__delitem__("/ProcSet"))

    def test_an_appearance_that_hides_with_a_layer(self):
        def change(pdf, page, form):
            page.Resources.XObject.A0.OC = form.Resources.Properties.L
        self.assert_found("page 1 /Annots[0]/AP/N/OC: copied", change)

    def test_an_appearance_that_is_a_group_of_its_own(self):
        def change(pdf, page, form):
            page.Resources.XObject.A0.Group = Dictionary(S=Name.Transparency, I=True)
        self.assert_found("page 1 /Annots[0]/AP/N/Group: copied", change)

    def test_a_lost_knockout_group_of_an_appearance(self):
        self.assert_found("page 1 /Annots[2]/AP/N/Group",
                          lambda pdf, page, form: page.Resources.XObject.A1.__delitem__("/Group"))

    def test_a_group_that_an_appearance_paints_plainly(self):
        def change(pdf, page, form):
            page.Resources.XObject.A1.Resources.XObject.G.Group = Dictionary(S=Name.Transparency)
        self.assert_found("page 1 /Annots[2]/AP/N/Resources/XObject/G/Group: copied", change)

    def test_a_lost_isolated_group_in_an_appearance(self):
        self.assert_found("page 1 /Annots[2]/AP/N/Resources/XObject/I/Group",
                          lambda pdf, page, form: page.Resources.XObject.A1.Resources.XObject.I.__delitem__("/Group"))

    def test_a_link_without_its_picture(self):
        self.assert_found("page 1 /Annots[2]: the copy does not draw its appearance",
                          lambda pdf, page, form: page.Resources.XObject.__delitem__("/A1"))

    def test_a_layer_that_is_shown(self):
        self.assert_found("/OCProperties/D/OFF: layer",
                          lambda pdf, page, form: pdf.Root.OCProperties.D.__delitem__("/OFF"))

    def test_a_page_more(self):
        self.assertEqual(self.findings_after(lambda pdf, page, form: pdf.pages.append(pdf.pages[0])),
                         ["1 pages became 2"])

    def test_a_text_of_an_annotation(self):
        found = self.findings_after(lambda pdf, page, form: page.__setitem__("/Note", String(SECRET)))
        self.assertIn("the copy says what only", " ".join(found))

    def test_a_script(self):
        found = self.findings_after(
            lambda pdf, page, form: pdf.Root.__setitem__("/OpenAction", String(SECRET + b" and no viewer does")))
        self.assertIn("the copy says what only", " ".join(found))

    def test_an_appearance_of_a_hidden_annotation(self):
        found = self.findings_after(
            lambda pdf, page, form: page.Contents.write(page.Contents.read_bytes() + b"\n% " + SECRET + b" either"))
        self.assertIn("the copy says what only", " ".join(found))

    def test_data_of_a_picture_that_is_not_seen(self):
        def change(pdf, page, form):
            form.Resources.XObject.X.Metadata = Stream(pdf, SECRET + b" of the picture")
        self.assertIn("/Metadata: copied, though it is not seen", " ".join(self.findings_after(change)))

    def with_update(self, objects, entries=b""):
        """The copy with `objects`, by number, appended to it."""
        with open(self.copy, "rb") as file:
            data = file.read()
        start = int(data[data.rindex(b"startxref") + len(b"startxref"):].split()[0])
        with pikepdf.open(self.copy) as pdf:
            root = "{} {} R".format(*pdf.Root.objgen).encode()
            size = max(len(pdf.objects) + 1, max(objects) + 1)
        data += b"\n"
        table = b"xref\n"
        for number, syntax in objects.items():
            table += b"%d 1\n%010d 00000 n \n" % (number, len(data))
            data += b"%d 0 obj\n%s\nendobj\n" % (number, syntax)
        place = len(data)
        data += table + b"trailer\n<</Size %d/Root %s/Prev %d%s>>\nstartxref\n%d\n%%%%EOF\n" % (
            size, root, start, entries, place)
        with open(self.damaged, "wb") as file:
            file.write(data)
        return findings(self.original, self.damaged)

    def number_of_objects(self):
        with pikepdf.open(self.copy) as pdf:
            return len(pdf.objects)

    def test_an_object_that_nothing_leads_to(self):
        number = self.number_of_objects() + 5
        self.assertEqual(self.with_update({number: b"<</Lost true>>"}), [f"nothing leads to {number} 0 R"])

    def test_a_reference_that_leads_nowhere(self):
        number = self.number_of_objects() + 5
        self.assertEqual(self.with_update({number: b"<</Lost 99999 0 R>>"}, b"/Kept %d 0 R" % number),
                         ["a reference to 99999 0 R, which is nothing"])


class OtherFiles(unittest.TestCase):
    """Nothing is found in good copies of files that are said in another way."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.drawing, _, self.boxes = made_files.write_into(self.folder)

    def findings_of(self, original):
        written = os.path.join(self.folder, "written")
        os.mkdir(written)
        subprocess.run([PRODUCE, "--no-index", written, original], check=True, stdout=subprocess.DEVNULL)
        return findings(original, os.path.join(written, os.listdir(written)[0]))

    def findings_of_rewritten(self, original, kind):
        path = os.path.join(self.folder, "rewritten.pdf")
        rewrite(original, path, [kind])
        return self.findings_of(path)

    def test_numbers_that_are_none_in_json(self):
        self.assertEqual(self.findings_of_rewritten(self.drawing, "odd-numbers"), [])

    def test_contents_of_run_lengths(self):
        path = os.path.join(self.folder, "joined.pdf")
        with pikepdf.open(self.boxes) as pdf:
            for part in pdf.pages[4].obj.Contents:
                data = part.read_bytes()
                part.write(bytes((len(data) - 1,)) + data + b"\x80", filter=Name.RunLengthDecode)
            pdf.save(path)
        self.assertEqual(self.findings_of(path), [])

    def test_a_button_of_a_form_that_calls_its_appearances_outdated(self):
        self.assertEqual(self.findings_of(os.path.join(SAMPLES, "Intake form.pdf")), [])


if __name__ == "__main__":
    PRODUCE = sys.argv.pop(1)
    unittest.main()
