#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <regex>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::TemporaryFolder;

namespace {

/// A legend and its direction.
struct Legend {
    const char *name;
    QString text;
    bool isRightToLeft = false;
};

void PrintTo(const Legend &legend, std::ostream *out)
{
    *out << legend.name;
}

fs::path stampedWith(const TemporaryFolder &folder, const StampSettings &settings, int pages = 1)
{
    tests::writeSample(folder / "a.pdf", pages);
    const ProductionPlan plan({classify(folder / "a.pdf")}, settings);
    fs::remove(folder / "copy.pdf");
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    return folder / "copy.pdf";
}

fs::path stampedWith(const TemporaryFolder &folder, const QString &legend, int pages = 1)
{
    StampSettings settings;
    settings.legend = legend;
    return stampedWith(folder, settings, pages);
}

/// The lines that a tool prints, without the bidirectional controls that it adds.
std::set<std::string> linesOf(const std::string &printed)
{
    const std::string marks = "\u202a|\u202b|\u202c|\u202d|\u202e";
    std::istringstream lines(std::regex_replace(printed, std::regex(marks), ""));
    std::set<std::string> found;
    for (std::string line; std::getline(lines, line);) {
        found.insert(line);
    }
    return found;
}

/// The text shown by an operator, and its height on the page.
struct ShownText {
    std::string text;
    double y = 0;
};

/// The texts of a file of one page in the order in which they are drawn.
std::vector<ShownText> shownTexts(const fs::path &path)
{
    std::istringstream lines(tests::runTool({"mutool", "trace", path.string()}).output);
    std::vector<ShownText> shown;
    const std::regex glyph("<g unicode=\"([^\"]*)\".* y=\"([^\"]+)\"");
    const std::regex begin("<fill_text .*transform=\"1 0 0 -1 0 ([^\"]+)\"");
    double top = 0; // Of the page, relative to the origin of text space.
    bool isFirst = false;
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_search(line, match, begin)) {
            shown.emplace_back();
            top = std::stod(match[1].str());
            isFirst = true;
        } else if (std::regex_search(line, match, glyph) && !shown.empty()) {
            shown.back().text += match[1].str();
            if (std::exchange(isFirst, false)) {
                shown.back().y = std::stod(match[2].str()) - top;
            }
        }
    }
    return shown;
}

/// A page with right-to-left text at the height of the stamp, with letters from `first` on.
fs::path pageFromTheRight(const TemporaryFolder &folder, char16_t first)
{
    tests::PdfBuilder builder;
    std::ostringstream map;
    map << "begincmap 1 begincodespacerange<00><ff>endcodespacerange 1 beginbfrange<61><68><" << std::hex
        << std::setw(4) << std::setfill('0') << static_cast<unsigned>(first) << ">endbfrange endcmap";
    const int toUnicode = builder.addStream("", map.str());
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/ToUnicode " +
                                 tests::reference(toUnicode) + ">>");
    const int content = builder.addStream("", "BT /F 10 Tf 300 20 Td (dcba) Tj 60 0 Td (hgfe) Tj ET");
    builder.addPage("/MediaBox[0 0 612 792]/Contents " + tests::reference(content) +
                    "/Resources<</Font<</F " + tests::reference(font) + ">>>>");
    tests::writeFile(folder / "right.pdf", builder.file());
    return folder / "right.pdf";
}

class LegendText : public testing::TestWithParam<Legend> {};

} // namespace

// Independent of the installed fonts: missing glyphs are boxes with the right text.
TEST_P(LegendText, IsFoundByReaders)
{
    const Legend &legend = GetParam();
    const TemporaryFolder folder;
    const fs::path copy = stampedWith(folder, legend.text);
    const std::string expected = legend.text.toStdString();
    EXPECT_EQ(tests::soundPages(copy), 1);
    const std::string poppler = tests::runTool({"pdftotext", copy.string(), "-"}).output;
    EXPECT_TRUE(linesOf(poppler).contains(expected)) << poppler;
    if (!legend.isRightToLeft) { // mupdf extracts such lines in visual order.
        const std::string mupdf = tests::runTool({"mutool", "draw", "-q", "-F", "txt", copy.string()}).output;
        EXPECT_TRUE(linesOf(mupdf).contains(expected)) << mupdf;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Scripts, LegendText,
    testing::Values(Legend{"Kerning", QStringLiteral("AVATAR Type. – “To” office affluent ffi fl")},
                    Legend{"Accents", QStringLiteral("naïve Ångström e\u0301cole Przyłębski")},
                    Legend{"Greek", QStringLiteral("Εμπιστευτικό έγγραφο")},
                    Legend{"Cyrillic", QStringLiteral("Строго конфиденциально")},
                    Legend{"Chinese", QStringLiteral("机密文件 第 1 号")},
                    Legend{"Japanese", QStringLiteral("秘密 カタカナ ひらがな")},
                    Legend{"Korean", QStringLiteral("한국어 기밀")},
                    Legend{"Devanagari", QStringLiteral("गोपनीय क्षत्रिय")},
                    Legend{"Emoji", QStringLiteral("🔒 locked")},
                    Legend{"NoFontHasIt", QStringLiteral("a\U0010fffdb")},
                    Legend{"Arabic", QStringLiteral("سري للغاية"), true},
                    Legend{"Hebrew", QStringLiteral("סודי ביותר"), true}),
    [](const testing::TestParamInfo<Legend> &legend) { return std::string(legend.param.name); });

TEST(StampText, ThaiIsFoundByPoppler)
{
    const TemporaryFolder folder;
    const fs::path copy = stampedWith(folder, QStringLiteral("ลับสุดยอดกำ"));
    EXPECT_TRUE(linesOf(tests::runTool({"pdftotext", copy.string(), "-"}).output).contains("ลับสุดยอดกำ"));
}

class BesideTextFromTheRight : public testing::TestWithParam<char16_t> {};

TEST_P(BesideTextFromTheRight, ANumberIsFoundByReaders)
{
    const TemporaryFolder folder;
    const fs::path source = pageFromTheRight(folder, GetParam());
    const ProductionPlan plan({classify(source)}, {});
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    const std::string copy = folder / "copy.pdf";
    const std::string poppler = tests::runTool({"pdftotext", copy, "-"}).output;
    EXPECT_TRUE(linesOf(poppler).contains("ABC000001")) << poppler;
    const std::string mupdf = tests::runTool({"mutool", "draw", "-q", "-F", "txt", copy}).output;
    EXPECT_TRUE(linesOf(mupdf).contains("ABC000001")) << mupdf;
}

INSTANTIATE_TEST_SUITE_P(Scripts, BesideTextFromTheRight, testing::Values(u'\u05d0', u'\u0628'));

TEST(StampText, IsNoPartOfAnActualTextThatThePageLeavesOpen)
{
    for (const char *open :
         {"/Span<</ActualText(aside)>>BDC", "/Span<</ActualText()>>BDC /Span<</ActualText(a)>>BDC"}) {
        const TemporaryFolder folder;
        tests::PdfBuilder builder;
        const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
        const int content =
            builder.addStream("", std::string(open) + " BT /F 10 Tf 300 20 Td (Left open) Tj ET");
        builder.addPage("/MediaBox[0 0 612 792]/Contents " + tests::reference(content) +
                        "/Resources<</Font<</F " + tests::reference(font) + ">>>>");
        tests::writeFile(folder / "open.pdf", builder.file());
        const ProductionPlan plan({classify(folder / "open.pdf")}, {});
        Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
        const std::string poppler = tests::runTool({"pdftotext", folder / "copy.pdf", "-"}).output;
        EXPECT_TRUE(linesOf(poppler).contains("ABC000001")) << poppler;
    }
}

// Readers that join consecutive text on one baseline into a line need a separator.
TEST(StampText, NoLineOfTheStampFollowsTextOfItsOwnHeight)
{
    const TemporaryFolder folder;
    StampSettings settings;
    settings.legend = QStringLiteral("LEGEND");
    settings.legendPosition = StampPosition::bottomLeft;
    settings.pageOfTotal = true;
    settings.pageOfTotalPosition = StampPosition::bottomCenter;
    const fs::path source = pageFromTheRight(folder, u'\u05d0');
    const ProductionPlan plan({classify(source)}, settings);
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});

    std::set<std::string> lines = {"LEGEND", "ABC000001", "Page 1 of 1"};
    std::set<double> heightsOfBreaks;
    ShownText last;
    for (const ShownText &text : shownTexts(folder / "copy.pdf")) {
        if (lines.erase(text.text) == 1) {
            EXPECT_EQ(last.text, "  ") << "before " << text.text;
            EXPECT_LT(last.y, text.y - 700) << "before " << text.text;
            heightsOfBreaks.insert(last.y);
        }
        last = text;
    }
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(heightsOfBreaks.size(), 3U) << "what is drawn twice at one place is read once";
    EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), 1);
}

TEST(StampText, TheFontsOfTheFormAreThere)
{
    for (const char *font : {"Helvetica", "Helvetica-Bold", "Times-Roman", "Times-Bold", "Courier",
                             "Courier-Bold", "ArialMT", "Arial-BoldMT", "NoSuchFontAnywhere"}) {
        const TemporaryFolder folder;
        StampSettings settings;
        settings.fontName = QString::fromLatin1(font);
        const fs::path copy = stampedWith(folder, settings);
        EXPECT_NE(tests::textOfPage(copy, 1).find("ABC000001"), std::string::npos) << font;
        const std::string fonts = tests::runTool({"pdffonts", copy.string()}).output;
        EXPECT_TRUE(std::regex_search(fonts, std::regex("[A-Z]{6}\\+\\S+ +CID.* yes +yes +yes "))) << fonts;
    }
}

TEST(StampText, AFontIsEmbeddedOnceAndCutDown)
{
    const TemporaryFolder folder;
    const fs::path one = stampedWith(folder, QStringLiteral("CONFIDENTIAL"), 1);
    const auto sizeOfOne = fs::file_size(one);
    const fs::path many = stampedWith(folder, QStringLiteral("CONFIDENTIAL"), 40);
    const auto sizeOfSource = fs::file_size(folder / "a.pdf");
    const std::string fonts = tests::runTool({"pdffonts", many.string()}).output;
    const std::regex embedded("[A-Z]{6}\\+");
    EXPECT_EQ(
        std::distance(std::sregex_iterator(fonts.begin(), fonts.end(), embedded), std::sregex_iterator()), 1)
        << fonts;
    EXPECT_LT(sizeOfOne, 8'000U);
    EXPECT_LT(fs::file_size(many), sizeOfSource + 40 * 400U);
}

TEST(StampText, FilesThatDifferInTheirNumbersHaveTheSameFont)
{
    const TemporaryFolder folder;
    const auto nameOfFont = [&](std::int64_t start) {
        StampSettings settings;
        settings.startNumber = start;
        const std::string fonts = tests::runTool({"pdffonts", stampedWith(folder, settings).string()}).output;
        std::smatch match;
        return std::regex_search(fonts, match, std::regex("[A-Z]{6}\\+\\S+")) ? match.str() : fonts;
    };
    EXPECT_EQ(nameOfFont(1), nameOfFont(987'654));
}

} // namespace tallyfold
