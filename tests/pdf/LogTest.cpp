#include "pdf/source/Document.h"
#include "pdf/source/PageContent.h"
#include "pdf/text/FontFace.h"
#include "pdf/viewing/ReaderProcess.h"
#include "tests/support/HeardLog.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <qpdf/QPDF.hh>

namespace tallyfold::pdf {

namespace fs = std::filesystem;
using tests::heard;

namespace {

const QString asked = QStringLiteral("tallyfold.pdf=true");

void openBroken()
{
    const tests::TemporaryFolder folder;
    tests::writeFile(folder / "secret.pdf", "%PDF-1.4 Secret");
    EXPECT_TRUE(std::holds_alternative<OpenFailure>(Document::open(folder / "secret.pdf")));
}

/// Asks a reader that is a shell script of `commands`.
void askReader(const std::string &commands)
{
    const tests::TemporaryFolder folder;
    const fs::path path = folder / "reader";
    tests::writeFile(path, "#!/bin/sh\n" + commands + "\n");
    fs::permissions(path, fs::perms::owner_all);
    EXPECT_FALSE(ReaderProcess({path, std::chrono::seconds(30)}).ask("question", -1));
}

} // namespace

TEST(PdfLog, IsQuietUnlessAsked)
{
    EXPECT_EQ(heard(tests::nothingAsked, openBroken), QStringList());
    EXPECT_EQ(heard(tests::nothingAsked, [] { askReader("exit 3"); }), QStringList());
}

TEST(PdfLog, TellsWhereADocumentIsBrokenAndNothingOfIt)
{
    const QStringList told = heard(asked, openBroken);
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(
        told.front().startsWith(QStringLiteral("tallyfold.pdf: opening a document failed: qpdf error")))
        << told.front().toStdString();
    EXPECT_FALSE(told.front().contains(QStringLiteral("secret"), Qt::CaseInsensitive));
}

TEST(PdfLog, TellsHowTheReaderEnded)
{
    EXPECT_EQ(heard(asked, [] { askReader("exit 3"); }),
              QStringList(QStringLiteral("tallyfold.pdf: the reader gave no answer; it ended with code 3")));
    EXPECT_EQ(
        heard(asked, [] { askReader("kill -SEGV $$"); }),
        QStringList(QStringLiteral("tallyfold.pdf: the reader gave no answer; it was ended by signal 11")));
    EXPECT_EQ(heard(asked,
                    [] {
                        ReaderProcess missing({"/nowhere/reader", std::chrono::seconds(1)});
                        EXPECT_FALSE(missing.ask("question", -1));
                    }),
              QStringList(
                  QStringLiteral("tallyfold.pdf: the reader cannot be started: No such file or directory")));
}

TEST(PdfLog, TellsWhichFontCannotBeUsed)
{
    const tests::TemporaryFolder folder;
    const fs::path font = folder / "font.ttf";
    tests::writeFile(font, "no font");
    EXPECT_EQ(heard(asked, [&] { EXPECT_FALSE(FontFace::load(font, 0)); }),
              QStringList(QStringLiteral("tallyfold.pdf: a font has no glyphs or may not be embedded: ") +
                          QString::fromStdString(font.native())));
}

TEST(PdfLog, TellsWhichContentIsDamaged)
{
    tests::PdfBuilder builder;
    const int damaged = builder.addStream("/Filter/FlateDecode", "no deflated data");
    builder.addPage("/Contents " + tests::reference(damaged));
    const std::string bytes = builder.file();
    const auto file = QPDF::create();
    file->setSuppressWarnings(true);
    file->processMemoryFile("", bytes.data(), bytes.size());
    EXPECT_EQ(heard(asked, [&] { (void)joinedContent({file->getObject(damaged, 0)}); }),
              QStringList(QStringLiteral("tallyfold.pdf: the data of object %1 is damaged").arg(damaged)));
}

} // namespace tallyfold::pdf
