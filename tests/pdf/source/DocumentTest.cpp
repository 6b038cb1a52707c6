#include "pdf/source/Document.h"

#include "pdf/source/FileInput.h"
#include "pdf/source/PageContent.h"
#include "pdf/source/PageTree.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;
using tests::writeFile;

namespace {

std::unique_ptr<Document> opened(const TemporaryFolder &folder, const std::string &bytes)
{
    writeFile(folder / "file.pdf", bytes);
    Document::Opened result = Document::open(folder / "file.pdf");
    auto *document = std::get_if<std::unique_ptr<Document>>(&result);
    return document != nullptr ? std::move(*document) : nullptr;
}

/// The data of `stream` where the document finds it in its file.
std::optional<std::string> dataInFile(const Document &document, const QPDFObjectHandle &stream)
{
    const auto place = document.dataInFile(stream);
    if (!place) {
        return std::nullopt;
    }
    std::string data(place->length, ' ');
    data.resize(document.input().readAt(place->offset, data.data(), data.size()));
    return data;
}

/// The width that a box starting at the origin gives.
double widthOf(QPDFObjectHandle box)
{
    return box.getArrayItem(2).getNumericValue();
}

} // namespace

TEST(Document, WhatIsNotAPdfIsUnreadable)
{
    const TemporaryFolder folder;
    writeFile(folder / "empty.pdf", "");
    writeFile(folder / "text.pdf", "This is no PDF file at all.");
    for (const char *name : {"empty.pdf", "text.pdf", "missing.pdf", "."}) {
        const Document::Opened result = Document::open(folder / name);
        ASSERT_TRUE(std::holds_alternative<OpenFailure>(result)) << name;
        EXPECT_EQ(std::get<OpenFailure>(result).kind, OpenFailure::Kind::unreadable) << name;
    }
}

TEST(Document, PagesAreCountedFromTheTopOfTheirTreeWhateverOfItTheCatalogNames)
{
    const TemporaryFolder folder;
    for (const char *named : {"tree", "node", "page"}) {
        PdfBuilder builder;
        const int tree = builder.reserve();
        const int node = builder.reserve();
        const int page = builder.add("<</Type/Page/Parent " + reference(node) + ">>");
        const int other = builder.add("<</Type/Page/Parent " + reference(tree) + ">>");
        builder.set(node,
                    "<</Type/Pages/Count 1/Kids[" + reference(page) + "]/Parent " + reference(tree) + ">>");
        builder.set(tree, "<</Type/Pages/Count 2/Kids[" + reference(node) + ' ' + reference(other) + "]>>");
        const std::string name = named;
        builder.addToCatalog("/Pages " + reference(name == "tree" ? tree : name == "node" ? node : page));
        const auto document = opened(folder, builder.file());
        ASSERT_TRUE(document) << named;
        EXPECT_EQ(document->pageCount(), 2) << named;
    }
}

TEST(Document, ContentThatIsJoinedIsBounded)
{
    QPDF file;
    file.emptyPDF();
    const std::vector<QPDFObjectHandle> streams{QPDFObjectHandle::newStream(&file, "0 0 m"),
                                                QPDFObjectHandle::newStream(&file, "9 9 l S")};
    const std::string joined = "0 0 m\n9 9 l S\n";
    EXPECT_EQ(joinedContent(streams), joined);
    EXPECT_EQ(joinedContent(streams, joined.size() - 1), joined);
    EXPECT_THROW((void)joinedContent(streams, joined.size() - 2), std::length_error);
    EXPECT_THROW((void)joinedContent(streams, 4), std::length_error);
    EXPECT_EQ(joinedContent({}, 0), "");
    // Of what the parser reads itself it swallows that there is no room for more.
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int first = builder.addStream("", "0 0 m");
    const int second = builder.addStream("", "9 9 l S");
    builder.addPage("/Contents[" + reference(first) + ' ' + reference(second) + "]");
    const auto document = opened(folder, builder.file());
    const auto page = PageTree(*document).next();
    ASSERT_TRUE(page);
    const auto contents = contentStreams(*document, QPDFObjectHandle(page->dictionary).getKey("/Contents"));
    EXPECT_EQ(joinedContent(contents), joined);
    EXPECT_THROW((void)joinedContent(contents, joined.size() - 2), std::length_error);
    EXPECT_THROW((void)joinedContent(contents, 4), std::length_error);
}

TEST(Document, ANameThatIsNotUtf8IsOpened)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    builder.addPage("");
    const std::filesystem::path path = folder / std::filesystem::path("caf\xE9.pdf");
    writeFile(path, builder.file());
    EXPECT_TRUE(std::holds_alternative<std::unique_ptr<Document>>(Document::open(path)));
}

TEST(Document, AFileThatNeedsNoPasswordIsNotEncryptedAndAllowsEverything)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    builder.addPage("");
    const auto document = opened(folder, builder.file());
    ASSERT_TRUE(document);
    EXPECT_FALSE(document->isEncrypted());
    EXPECT_TRUE(document->allowsPrinting() && document->allowsChanges() && document->allowsCopying());
    EXPECT_FALSE(document->isRestricted());
}

TEST(Document, PagesAreCountedByWalkingTheTree)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    builder.addPage("");
    builder.addPage("");
    std::string bytes = builder.file();
    bytes.replace(bytes.find("/Count 2"), 8, "/Count 9");
    const auto document = opened(folder, bytes);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pageCount(), 2);
    EXPECT_EQ(document->pageCount(), 2) << "what the first count released is read again";
}

TEST(Document, AnEmptyTreeHasNoPages)
{
    const TemporaryFolder folder;
    const auto document = opened(folder, PdfBuilder().file());
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pageCount(), 0);
}

TEST(Document, APageTreeThatLoopsEndsWhereItCloses)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int node = builder.reserve();
    const int page = builder.addPage("/Kids 4"); // Not an array, so a page all the same.
    builder.set(node, "<</Type/Pages/Kids[" + reference(page) + " " + reference(node) + "]/Count 2>>");
    builder.addToCatalog("/Pages " + reference(node));
    std::string bytes = builder.file();
    bytes.erase(bytes.find("/Type/Catalog/Pages 2 0 R") + 13, 12);
    const auto document = opened(folder, bytes);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pageCount(), 1);
}

TEST(Document, AReleasedObjectIsReadAnewWhenFetched)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int number = builder.addPage("/MediaBox[0 0 7 8]");
    const auto document = opened(folder, builder.file());
    ASSERT_TRUE(document);
    QPDFObjectHandle page = document->parsed().getObjectByID(number, 0);
    document->release(page);
    EXPECT_TRUE(page.isNull());
    EXPECT_TRUE(document->fetch(page).getKey("/MediaBox").isArray());
}

TEST(Document, DataOfAStreamIsFoundInTheFile)
{
    const TemporaryFolder folder;
    std::string data(60'000, 'd');
    data.replace(30'000, 9, "endstream");
    for (const char *lineEnd : {"\n", "\r\n"}) {
        PdfBuilder builder;
        const int stream = builder.add("<</Length " + std::to_string(data.size()) + ">>stream" + lineEnd +
                                       data + lineEnd + "endstream");
        builder.addPage("");
        const auto document = opened(folder, builder.file());
        ASSERT_TRUE(document);
        EXPECT_EQ(dataInFile(*document, document->parsed().getObject(stream, 0)), data);
    }
}

TEST(Document, DataIsNeverOtherThanTheParsers)
{
    const TemporaryFolder folder;
    for (const int length : {29'999, 30'001, 5, 0, 2'000'000'000}) {
        PdfBuilder builder;
        const int stream = builder.add("<</Length " + std::to_string(length) + ">>stream\n" +
                                       std::string(30'000, 'd') + "\nendstream");
        builder.addPage("");
        const auto document = opened(folder, builder.file());
        ASSERT_TRUE(document);
        QPDFObjectHandle handle = document->parsed().getObject(stream, 0);
        const auto found = dataInFile(*document, handle);
        const auto parsed = handle.getRawStreamData();
        const std::string_view whole(reinterpret_cast<const char *>(parsed->getBuffer()), parsed->getSize());
        EXPECT_TRUE(!found || *found == whole) << length;
        EXPECT_EQ(found.has_value(), length == 30'001) << length; // That takes in the end of the line.
    }
}

TEST(Document, DataOfAnEncryptedFileIsLeftToTheParser)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int content = builder.addStream("", std::string(30'000, ' '));
    builder.addPage("/MediaBox[0 0 9 9]/Contents " + reference(content));
    writeFile(folder / "plain.pdf", builder.file());
    tests::encrypt(folder / "plain.pdf", folder / "file.pdf", "'' '' 256");
    Document::Opened result = Document::open(folder / "file.pdf");
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Document>>(result));
    Document &document = *std::get<std::unique_ptr<Document>>(result);
    PageTree tree(document);
    const auto page = tree.next();
    ASSERT_TRUE(page);
    EXPECT_FALSE(document.dataInFile(QPDFObjectHandle(page->dictionary).getKey("/Contents")));
}

TEST(PageTree, PagesInheritWhatTheyDoNotSayThemselves)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    builder.inherit("/MediaBox[0 0 10 20]/Rotate 90/Resources<</Marker 1>>");
    builder.addPage("/MediaBox[0 0 30 40]");
    builder.addPage("/Rotate 0");
    const auto document = opened(folder, builder.file());
    ASSERT_TRUE(document);
    PageTree tree(*document);
    std::optional<SourcePage> first = tree.next();
    std::optional<SourcePage> second = tree.next();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(widthOf(first->mediaBox), 30);
    EXPECT_EQ(first->rotate.getIntValue(), 90);
    EXPECT_EQ(widthOf(second->mediaBox), 10);
    EXPECT_EQ(second->rotate.getIntValue(), 0);
    EXPECT_TRUE(second->resources.hasKey("/Marker"));
    EXPECT_FALSE(tree.next());
}

TEST(PageTree, APageListedTwiceIsTwoPagesAndALostOneCounts)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int page = builder.addPage("/MediaBox[0 0 30 40]");
    std::string bytes = builder.file();
    const std::string kids = "/Kids[" + reference(page) + " ]";
    const std::string more = "/Kids[" + reference(page) + " " + reference(page) + " 99 0 R]";
    bytes.replace(bytes.find(kids), kids.size(), more); // The table of places is wrong now, and is repaired.
    const auto document = opened(folder, bytes);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pageCount(), 3);
}

} // namespace tallyfold::pdf
