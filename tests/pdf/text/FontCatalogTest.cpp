#include "pdf/text/FontCatalog.h"

#include "tests/support/Fonts.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace tallyfold::pdf {

using namespace Qt::StringLiterals;
using tests::fontFile;

namespace {

std::vector<std::filesystem::path> filesOf(std::initializer_list<const char *> names)
{
    std::vector<std::filesystem::path> files;
    for (const char *name : names) {
        files.push_back(fontFile(name));
    }
    return files;
}

/// The PostScript name of what a catalogue gives; empty for nothing.
std::string nameOf(const FontCatalog::Face &face)
{
    return face ? face->postScriptName() : std::string();
}

std::string nameOfFaceCovering(FontCatalog &catalog, const std::u32string &characters, const QString &name)
{
    return nameOf(catalog.faceCovering(std::array{characters}, name, "en"));
}

} // namespace

TEST(FontCatalog, WithoutFontsGivesNone)
{
    FontCatalog catalog(std::vector<std::filesystem::path>{});
    EXPECT_EQ(catalog.named(u"Helvetica"_s), nullptr);
    EXPECT_EQ(catalog.faceCovering(std::array{std::u32string(U"a")}, u"Helvetica"_s, "en"), nullptr);
    EXPECT_EQ(catalog.faceWithVisibleNotdef(u"Helvetica"_s), nullptr);
}

TEST(FontCatalog, PassesOverFilesThatAreNoFonts)
{
    const tests::TemporaryFolder folder;
    tests::writeFile(folder / "text.otf", "no font");
    FontCatalog catalog(std::vector{folder / "text.otf", folder / "none.otf"});
    EXPECT_EQ(catalog.named(u"Helvetica"_s), nullptr);
}

TEST(FontCatalog, FindsAFaceByItsPostScriptName)
{
    FontCatalog catalog(filesOf({"LiberationSans-Regular.ttf", "LiberationSans-Bold.ttf"}));
    EXPECT_EQ(nameOf(catalog.named(u"LiberationSans"_s)), "LiberationSans");
    EXPECT_EQ(nameOf(catalog.named(u"LiberationSans-Bold"_s)), "LiberationSans-Bold");
    EXPECT_EQ(catalog.named(u"LiberationSans-Bold"_s), catalog.named(u"LiberationSans-Bold"_s))
        << "a face is opened once";
}

TEST(FontCatalog, GivesAFaceOfTheSameMetricsForACustomaryName)
{
    FontCatalog catalog(filesOf({"LiberationSans-Regular.ttf", "LiberationSerif-Bold.ttf",
                                 "NimbusSans-Regular.otf", "NimbusMonoPS-BoldItalic.otf"}));
    EXPECT_EQ(nameOf(catalog.named(u"Helvetica"_s)), "NimbusSans-Regular");
    EXPECT_EQ(nameOf(catalog.named(u"ArialMT"_s)), "LiberationSans");
    EXPECT_EQ(nameOf(catalog.named(u"TimesNewRomanPS-BoldMT"_s)), "LiberationSerif-Bold");
    EXPECT_EQ(nameOf(catalog.named(u"Courier-BoldOblique"_s)), "NimbusMonoPS-BoldItalic");
}

TEST(FontCatalog, GivesSomeFaceForANameThatIsUnknown)
{
    FontCatalog catalog(filesOf({"NimbusRoman-Regular.otf"}));
    EXPECT_EQ(nameOf(catalog.named(u"NoSuchFont"_s)), "NimbusRoman-Regular");
}

TEST(FontCatalog, FindsAFaceByTheCharactersItCovers)
{
    FontCatalog catalog(
        filesOf({"NimbusSans-Regular.otf", "NotoSansThai-Regular.ttf", "NotoSansHebrew-Regular.ttf"}));
    EXPECT_EQ(nameOfFaceCovering(catalog, U"\u0e01", u"Helvetica"_s), "NotoSansThai-Regular");
    EXPECT_EQ(nameOfFaceCovering(catalog, U"\u05d0", u"Helvetica"_s), "NotoSansHebrew-Regular");
    EXPECT_EQ(nameOfFaceCovering(catalog, U"\u0e01\u05d0", u"Helvetica"_s), "");
    EXPECT_EQ(catalog.faceCovering({}, u"Helvetica"_s, "en"), nullptr);
}

TEST(FontCatalog, OneOfTheSpellingsIsEnough)
{
    FontCatalog catalog(filesOf({"NotoSansThai-Regular.ttf", "NotoSansHebrew-Regular.ttf"}));
    const std::array<std::u32string, 2> spellings{U"\U0010fffd", U"\u05d0"};
    EXPECT_EQ(nameOf(catalog.faceCovering(spellings, u"Helvetica"_s, "en")), "NotoSansHebrew-Regular");
}

TEST(FontCatalog, OfAFamilyThatCoversThemTheNearestStyleIsTaken)
{
    for (const bool isBoldFirst : {false, true}) {
        FontCatalog catalog(isBoldFirst ? filesOf({"NotoSerifThai-Bold.ttf", "NotoSerifThai-Regular.ttf"})
                                        : filesOf({"NotoSerifThai-Regular.ttf", "NotoSerifThai-Bold.ttf"}));
        EXPECT_EQ(nameOfFaceCovering(catalog, U"\u0e01", u"Times-Bold"_s), "NotoSerifThai-Bold");
        EXPECT_EQ(nameOfFaceCovering(catalog, U"\u0e01", u"Times-Roman"_s), "NotoSerifThai-Regular");
        EXPECT_EQ(nameOfFaceCovering(catalog, U"\u0e01", u"Times-Black"_s), "NotoSerifThai-Bold");
    }
}

TEST(FontCatalog, FindsAFaceWhoseGlyphForMissingCharactersIsSeen)
{
    FontCatalog catalog(filesOf({"LiberationSans-Regular.ttf"}));
    const FontCatalog::Face face = catalog.faceWithVisibleNotdef(u"Helvetica"_s);
    ASSERT_NE(face, nullptr);
    EXPECT_TRUE(face->hasVisibleNotdef());
}

} // namespace tallyfold::pdf
