#include "core/PdfEnding.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold {

TEST(PdfEnding, IsKnownInAnyLetterCase)
{
    for (const char *name : {"a.pdf", "a.PDF", "a.Pdf", ".pdf", "a.b.pdf", "a pdf.pDF"}) {
        EXPECT_TRUE(hasPdfEnding(std::string_view(name))) << name;
        EXPECT_TRUE(hasPdfEnding(QString::fromLatin1(name))) << name;
    }
}

TEST(PdfEnding, IsNothingElse)
{
    for (const char *name : {"", "pdf", "apdf", "a.pdf ", "a.pdfx", "a.pd", ".pdf/", "a.tiff"}) {
        EXPECT_FALSE(hasPdfEnding(std::string_view(name))) << name;
        EXPECT_FALSE(hasPdfEnding(QString::fromLatin1(name))) << name;
    }
}

TEST(PdfEnding, IsKnownInNamesThatAreNoText)
{
    EXPECT_TRUE(hasPdfEnding(std::string_view("caf\xE9.pdf")));
    EXPECT_FALSE(hasPdfEnding(std::string_view("a.\xD0pdf")));
    EXPECT_FALSE(hasPdfEnding(std::string_view("a.pd\xC6")));
}

} // namespace tallyfold
