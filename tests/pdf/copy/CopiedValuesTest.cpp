#include "pdf/copy/ObjectCopier.h"

#include "files/MemorySink.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace tallyfold::pdf {

using tests::PdfBuilder;
using tests::reference;

namespace {

/// Copies objects of a file under construction, without any page around them.
class CopiedValues : public testing::Test {
protected:
    /// Ends the construction.
    ObjectCopier &copier()
    {
        if (!m_copier) {
            m_builder.addPage("/MediaBox[0 0 9 9]");
            tests::writeFile(m_folder / "a.pdf", m_builder.file());
            Document::Opened opened = Document::open(m_folder / "a.pdf");
            m_source = std::move(std::get<std::unique_ptr<Document>>(opened));
            m_copier = std::make_unique<ObjectCopier>(*m_source, m_output);
        }
        return *m_copier;
    }

    /// A reference to the object `number` of the source, or any other value of it.
    QPDFObjectHandle value(const std::string &syntax)
    {
        (void)copier();
        return QPDFObjectHandle::parse(&m_source->parsed(), "[" + syntax + "]").getArrayItem(0);
    }

    std::string appended(const std::string &syntax)
    {
        std::string out;
        copier().append(out, value(syntax));
        return out;
    }

    /// The output with the object `root` for a catalogue.
    QPDF &written(int root)
    {
        copier().drain();
        m_output.finish(root);
        m_bytes = std::move(m_sink).bytes();
        m_written.setSuppressWarnings(true);
        m_written.processMemoryFile("written", m_bytes.data(), m_bytes.size());
        return m_written;
    }

    PdfBuilder m_builder;

private:
    tests::TemporaryFolder m_folder;
    files::MemorySink m_sink;
    StreamingOutput m_output{m_sink};
    std::unique_ptr<Document> m_source;
    std::unique_ptr<ObjectCopier> m_copier;
    std::vector<char> m_bytes;
    QPDF m_written;
};

} // namespace

TEST_F(CopiedValues, DirectValuesAreWrittenWhereTheyStand)
{
    EXPECT_EQ(appended("[1 -2.50 (a\\)) /A#20B true null [] <</K[/V]>>]"),
              "[1 -2.50 (a\\)) /A#20B true null [] <</K [/V]>>]");
}

TEST_F(CopiedValues, AReferenceGetsOneNumberOfTheOutput)
{
    const std::string first = reference(m_builder.add("<</A 1>>"));
    const std::string second = reference(m_builder.add("(b)"));
    EXPECT_EQ(appended("[" + second + " " + first + " " + second + "]"), "[1 0 R 2 0 R 1 0 R]");
    EXPECT_EQ(appended(first), "2 0 R");
    QPDF &copy = written(2);
    EXPECT_EQ(copy.getObjectByID(1, 0).unparseResolved(), "(b)");
    EXPECT_EQ(copy.getObjectByID(2, 0).getKey("/A").unparse(), "1");
}

TEST_F(CopiedValues, WhatIsReferredToComesAlongAndALoopEnds)
{
    const int last = m_builder.add("<</Leaf(x)>>");
    const int loop = m_builder.reserve();
    m_builder.set(loop, "<</Self " + reference(loop) + "/Next " + reference(last) + ">>");
    EXPECT_EQ(appended(reference(loop)), "1 0 R");
    QPDF &copy = written(1);
    EXPECT_EQ(copy.getObjectByID(1, 0).getKey("/Self").getObjGen().getObj(), 1);
    EXPECT_EQ(copy.getObjectByID(1, 0).getKey("/Next").getKey("/Leaf").unparse(), "(x)");
}

TEST_F(CopiedValues, WhatCannotBeSeenIsNull)
{
    const std::string page = reference(m_builder.add("<</Type/Page/Rotate 90>>"));
    const std::string untyped = reference(m_builder.add("<</Parent null/Kids[]/MediaBox[0 0 1 1]>>"));
    const std::string node = reference(m_builder.add("<</Parent 1 0 R/Kids[]>>"));
    const std::string file = reference(m_builder.addStream("/Type/EmbeddedFile", "secret"));
    EXPECT_EQ(appended(page), "null");
    EXPECT_EQ(appended(node), "null");
    EXPECT_EQ(appended(file), "null");
    EXPECT_EQ(appended("999 0 R"), "null");
    EXPECT_EQ(appended("[<</Type/Action/S/URI>> 7]"), "[null 7]");
    EXPECT_EQ(appended(untyped), "1 0 R") << "a dictionary without a parent is no node of the tree";
}

TEST_F(CopiedValues, ANumberIsKnownOnceAnythingRefersToTheObject)
{
    const std::string group = reference(m_builder.add("<</Type/OCG/Name(l)>>"));
    EXPECT_EQ(copier().copiedNumber(value(group)), std::nullopt);
    EXPECT_EQ(appended(group), "1 0 R");
    EXPECT_EQ(copier().copiedNumber(value(group)), 1);
}

TEST_F(CopiedValues, NamesOfResourcesMeanNothingByThemselves)
{
    const std::string state = reference(m_builder.add("<</ca 0.5>>"));
    std::string out;
    copier().appendResources(
        out, value("<</ExtGState<</Parent " + state + "/MediaBox " + state + ">>/ProcSet[/PDF]/Odd 7>>"));
    EXPECT_EQ(out, "<</ExtGState<</MediaBox 1 0 R/Parent 1 0 R>>/ProcSet [/PDF]>>");
}

TEST_F(CopiedValues, AnAppearanceIsCopiedApartFromWhatElseItsStreamIs)
{
    const std::string stream = reference(m_builder.addStream("/BBox[0 0 1 1]/Resources<<>>", "n"));
    const int form = copier().copyForm(value(stream), value("<<>>"));
    EXPECT_EQ(copier().copyForm(value(stream), value("<<>>")), form);
    EXPECT_NE(appended(stream), reference(form));
    QPDF &copy = written(form);
    EXPECT_EQ(copy.getObjectByID(form, 0).getDict().getKey("/Subtype").unparse(), "/Form");
    EXPECT_FALSE(copy.getObjectByID(3 - form, 0).getDict().hasKey("/Subtype"));
}

TEST_F(CopiedValues, EntriesOfAStreamAreThoseThatAreAskedFor)
{
    const int number =
        m_builder.addStream("/Subtype/Form/BBox[0 0 1 1]/Metadata 1 0 R/Filter/ASCIIHexDecode", "00>");
    const QPDFObjectHandle stream = value(reference(number));
    const auto entries = [&](ObjectCopier::StreamEntries which) {
        std::string out;
        copier().appendStreamEntries(out, stream, which);
        return out;
    };
    EXPECT_EQ(entries(ObjectCopier::StreamEntries::encodingOnly), "/Filter /ASCIIHexDecode");
    EXPECT_EQ(entries(ObjectCopier::StreamEntries::all),
              "/BBox [0 0 1 1]/Filter /ASCIIHexDecode/Subtype /Form");
}

TEST_F(CopiedValues, DataOfAStreamIsCopiedAsItIs)
{
    const std::string stream = reference(m_builder.addStream("/Filter/ASCIIHexDecode", "616263>"));
    EXPECT_EQ(appended("[" + stream + "]"), "[1 0 R]");
    std::string catalog;
    copier().append(catalog, value("<<>>"));
    QPDF &copy = written(1);
    const auto raw = copy.getObjectByID(1, 0).getRawStreamData();
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(raw->getBuffer()), raw->getSize()), "616263>");
}

} // namespace tallyfold::pdf
