#include "pdf/annotations/FieldText.h"

#include "pdf/annotations/ChoiceField.h"
#include "pdf/annotations/FieldAppearance.h"
#include "pdf/annotations/VisibleAnnotations.h"
#include "tests/pdf/annotations/Typesetting.h"

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>

#include <algorithm>

namespace tallyfold::pdf {

namespace {

constexpr double tolerance = 0.011; // Two decimals are written.

/// A box 100 points wide and 40 high whose text is in Helvetica of 10 points.
TextBox ordinaryBox()
{
    TextBox box;
    box.area = {20, 30, 120, 70};
    box.padding = 3;
    box.size = 10;
    box.fontName = QStringLiteral("Helvetica");
    box.color = DeviceColor::rgb(1, 0, 0);
    return box;
}

std::string parsed(const std::string &text)
{
    const DefaultAppearance appearance = parseDefaultAppearance(text);
    std::string color;
    ContentStream(color).setColor(Paint::fill, appearance.color);
    return appearance.fontName + '|' + std::to_string(static_cast<int>(appearance.size * 10)) + '|' + color;
}

QString nameOf(const std::string &fontName, const std::string &resources = "null")
{
    return fontNamed(fontName, QPDFObjectHandle::parse(resources));
}

/// How many lines `text` makes in `box`.
int linesOf(const QString &text, const TextBox &box)
{
    Typesetting typesetting;
    const ShapedLine line = typesetting.fonts().shape(QStringLiteral("x"), box.fontName, box.size);
    const double height = heightOfWrappedText(text, box, typesetting.fonts()) - 2 * box.padding;
    return static_cast<int>(std::lround(height / (line.ascent + line.descent)));
}

/// The content that `append` writes with a stream and fonts.
template <typename Append> std::string contentOf(const Append &append)
{
    Typesetting typesetting;
    std::string content;
    ContentStream stream(content);
    append(stream, typesetting.fonts());
    return content;
}

std::string wrappedText(const QString &text, const TextBox &box)
{
    return contentOf(
        [&](ContentStream &stream, TextFonts &fonts) { appendWrappedText(stream, text, box, fonts); });
}

std::string singleLine(const QString &text, const TextBox &box)
{
    return contentOf(
        [&](ContentStream &stream, TextFonts &fonts) { appendSingleLine(stream, text, box, fonts); });
}

std::string comb(const QString &text, int cells, const TextBox &box)
{
    return contentOf(
        [&](ContentStream &stream, TextFonts &fonts) { appendComb(stream, text, cells, box, fonts); });
}

bool isClippedTo(const std::string &content, const std::string &box)
{
    return content.starts_with("q " + box + " re W n 1 0 0 rg ") && content.ends_with("\nQ\n");
}

/// What is made of a field 100 points wide and `height` high with these entries.
GeneratedForm made(const std::string &entries, int height = 20)
{
    Typesetting typesetting;
    const QPDFObjectHandle widget =
        QPDFObjectHandle::parse("<</Rect[10 10 110 " + std::to_string(10 + height) + "]" + entries + ">>");
    return fieldAppearance(widget, QPDFObjectHandle::parse("<</DA(/Helv 0 Tf 0 g)>>"), typesetting.fonts())
        .value();
}

} // namespace

TEST(DefaultAppearance, HasTheLastFontAndColourThatItAsksFor)
{
    EXPECT_EQ(parsed(""), "|0|0 g ");
    EXPECT_EQ(parsed("/Helv 12.5 Tf 0.5 g"), "/Helv|125|0.5 g ");
    EXPECT_EQ(parsed("1 0.25 0 rg /F 9 Tf"), "/F|90|1 0.25 0 rg ");
    EXPECT_EQ(parsed("0 0.25 0.5 1 k"), "|0|0 0.25 0.5 1 k ");
    EXPECT_EQ(parsed("/A 1 Tf 1 g /B 2 Tf 0.5 g"), "/B|20|0.5 g ");
    EXPECT_EQ(parsed("9 9 /F 12 Tf 9 9 0.5 g"), "/F|120|0.5 g ") << "only the last operands count";
}

TEST(DefaultAppearance, OperatorsWithoutTheirOperandsArePassedOver)
{
    EXPECT_EQ(parsed("12 Tf"), "|0|0 g ");
    EXPECT_EQ(parsed("Tf g rg k"), "|0|0 g ");
    EXPECT_EQ(parsed("1 0 rg"), "|0|0 g ");
    EXPECT_EQ(parsed("1 0 0 k"), "|0|0 g ");
    EXPECT_EQ(parsed("/F 12 Tf 0.1 0.2 0.3 rg g"), "/F|120|0.1 0.2 0.3 rg ");
    EXPECT_EQ(parsed("/F 12 Tf Tf"), "/F|120|0 g ");
}

TEST(DefaultAppearance, NumbersBeyondWhatCanBeDrawnAreNot)
{
    EXPECT_EQ(parsed("/F 1000 Tf"), "/F|10000|0 g ");
    for (const char *size : {"1000.1", "-0.1", "inf", "-inf", "nan"}) {
        EXPECT_EQ(parsed("/F " + std::string(size) + " Tf"), "/F|0|0 g ") << size;
    }
    EXPECT_EQ(parsed("2 -1 0.5 rg"), "|0|1 0 0.5 rg ");
    EXPECT_EQ(parsed("nan inf 1 rg"), "|0|0 0 1 rg ");
}

TEST(FontOfAField, IsTheOneThatTheResourcesName)
{
    const auto inResources = [](const std::string &base) {
        return nameOf("/F", "<</Font<</F<</BaseFont " + base + ">>>>>>");
    };
    EXPECT_EQ(inResources("/Courier"), QStringLiteral("Courier"));
    EXPECT_EQ(inResources("/Arial,Bold"), QStringLiteral("Arial-Bold"));
    EXPECT_EQ(inResources("/ABCDEF+Arial,Bold"), QStringLiteral("Arial-Bold"));
    EXPECT_EQ(inResources("/ABCDE+Arial"), QStringLiteral("ABCDE+Arial")) << "no tag of a subset";
    EXPECT_EQ(inResources("/ABCDEFG+Arial"), QStringLiteral("ABCDEFG+Arial"));
    for (const char *none : {"/ZapfDingbats", "(Courier)", "null"}) {
        EXPECT_EQ(inResources(none), QStringLiteral("Helvetica")) << none;
    }
}

TEST(FontOfAField, HasACustomaryMeaningWhereTheyDoNotSay)
{
    for (const char *resources : {"null", "<<>>", "<</Font 7>>", "<</Font<<>>>>", "<</Font<</Cour 7>>>>"}) {
        EXPECT_EQ(nameOf("/Cour", resources), QStringLiteral("Courier")) << resources;
        EXPECT_EQ(nameOf("Cour", resources), QStringLiteral("Courier")) << resources;
    }
    for (const auto &[customary, name] : {std::pair{"/Helv", "Helvetica"},
                                          {"/HeBo", "Helvetica-Bold"},
                                          {"/HeOb", "Helvetica-Oblique"},
                                          {"/HeBO", "Helvetica-BoldOblique"},
                                          {"/TiRo", "Times-Roman"},
                                          {"/TiBo", "Times-Bold"},
                                          {"/TiIt", "Times-Italic"},
                                          {"/TiBI", "Times-BoldItalic"},
                                          {"/CoBo", "Courier-Bold"},
                                          {"/CoOb", "Courier-Oblique"},
                                          {"/CoBO", "Courier-BoldOblique"},
                                          {"/Arial", "ArialMT"},
                                          {"/Another", "Helvetica"},
                                          {"", "Helvetica"}}) {
        EXPECT_EQ(nameOf(customary).toStdString(), name);
    }
}

TEST(TextOfAField, IsAStringANameOrAStream)
{
    QPDF file;
    file.emptyPDF();
    EXPECT_EQ(fieldText(QPDFObjectHandle::parse("(a\\344)")), QStringLiteral("a\u00e4"));
    EXPECT_EQ(fieldText(QPDFObjectHandle::parse("<FEFF0416>")), QStringLiteral("\u0416"));
    EXPECT_EQ(fieldText(QPDFObjectHandle::parse("/Yes")), QStringLiteral("Yes"));
    EXPECT_EQ(fieldText(QPDFObjectHandle::newStream(&file, "much text")), QStringLiteral("much text"));
    for (const char *none : {"null", "7", "true", "[(a)]", "<<>>"}) {
        EXPECT_EQ(fieldText(QPDFObjectHandle::parse(none)), QString()) << none;
    }
    EXPECT_EQ(fieldText(QPDFObjectHandle::newString(std::string(50'001, 'x'))).size(), 50'000);
}

TEST(WrappedText, BeginsAtTheTopAndGoesOnLineByLine)
{
    const TextBox box = ordinaryBox();
    const std::string content = wrappedText(QStringLiteral("one\ntwo\n\nfour"), box);
    EXPECT_TRUE(isClippedTo(content, "20 30 100 40")) << content;
    const std::vector<SetText> texts = textsIn(content);
    ASSERT_EQ(texts.size(), 3U) << "an empty line shows nothing";
    Typesetting typesetting;
    const ShapedLine line = typesetting.fonts().shape(QStringLiteral("one"), box.fontName, box.size);
    const double leading = line.ascent + line.descent;
    const double first = 70 - 3 - line.ascent;
    EXPECT_NEAR(texts[0].y, first, tolerance);
    EXPECT_NEAR(texts[1].y, first - leading, tolerance);
    EXPECT_NEAR(texts[2].y, first - 3 * leading, tolerance) << "and takes its height";
    for (const SetText &text : texts) {
        EXPECT_NEAR(text.x, 23, tolerance);
        EXPECT_EQ(text.size, 10);
    }
}

TEST(WrappedText, EndsBelowTheBox)
{
    TextBox box = ordinaryBox();
    Typesetting typesetting;
    const ShapedLine line = typesetting.fonts().shape(QStringLiteral("x"), box.fontName, box.size);
    const QString text = QStringLiteral("x\nx\nx\nx\nx\nx\nx\nx\nx");
    // Lines that begin in the box are shown, though the last may be cut.
    const double leading = line.ascent + line.descent;
    EXPECT_EQ(textsIn(wrappedText(text, box)).size(), static_cast<std::size_t>((40 - 3) / leading) + 1);
    box.area.minY = box.area.maxY - box.padding - 2 * leading;
    EXPECT_EQ(textsIn(wrappedText(text, box)).size(), 3U);
    box.area.minY += 0.1;
    EXPECT_EQ(textsIn(wrappedText(text, box)).size(), 2U);
}

TEST(WrappedText, LinesEndInAnyWay)
{
    const TextBox box = ordinaryBox();
    EXPECT_EQ(linesOf(QStringLiteral("a"), box), 1);
    EXPECT_EQ(linesOf(QString(), box), 1);
    for (const QString &end : {QStringLiteral("\n"), QStringLiteral("\r"), QStringLiteral("\r\n")}) {
        EXPECT_EQ(linesOf(u'a' + end + u'b', box), 2);
        EXPECT_EQ(linesOf(u'a' + end + end + u'b', box), 3);
        EXPECT_EQ(linesOf(u'a' + end, box), 2);
    }
}

TEST(WrappedText, WordsThatDoNotFitGoToTheNextLine)
{
    Typesetting typesetting;
    TextBox box = ordinaryBox();
    const auto roomFor = [&](const QString &text, double more = 0.01) {
        box.area.maxX = box.area.minX + 2 * box.padding + typesetting.widthOf(text, box.size) + more;
    };
    roomFor(QStringLiteral("aaa bbb"));
    EXPECT_EQ(linesOf(QStringLiteral("aaa bbb"), box), 1);
    EXPECT_EQ(linesOf(QStringLiteral("aaa bbb aaa bbb"), box), 2);
    EXPECT_EQ(linesOf(QStringLiteral("aaa bbb aaa bbb a"), box), 3);
    box.padding = 0;
    box.area.minX = 0;
    roomFor(QStringLiteral("aaa bbb"), 0);
    EXPECT_EQ(linesOf(QStringLiteral("aaa bbb"), box), 1) << "where it fits exactly";
    roomFor(QStringLiteral("aaa bbb"), -0.01);
    EXPECT_EQ(linesOf(QStringLiteral("aaa bbb"), box), 2);
}

TEST(WrappedText, AWordThatIsTooLongIsCutWhereItMustBe)
{
    Typesetting typesetting;
    TextBox box = ordinaryBox();
    box.area.maxX = box.area.minX + 2 * box.padding + 3.5 * typesetting.widthOf(QStringLiteral("W"), 10);
    EXPECT_EQ(linesOf(QStringLiteral("WWWWWWW"), box), 3);
    EXPECT_EQ(linesOf(QStringLiteral("WWWWWW"), box), 2);
    EXPECT_EQ(linesOf(QStringLiteral("i WWWWWWW"), box), 4) << "it begins a line";
    EXPECT_EQ(linesOf(QStringLiteral("WWWW i"), box), 2) << "what follows stands beside its end";
    const QString accented = QStringLiteral("W\u0301");
    EXPECT_EQ(linesOf(accented.repeated(6), box), 2) << "marks stay with their letters";
}

TEST(WrappedText, ACharacterThatIsWiderThanTheBoxHasALineOfItsOwn)
{
    TextBox box = ordinaryBox();
    box.area.maxX = box.area.minX + 2;
    Typesetting typesetting;
    ASSERT_GT(typesetting.widthOf(QStringLiteral("@"), box.size), box.size)
        << "no room is narrower than that";
    EXPECT_EQ(linesOf(QStringLiteral("@"), box), 1);
    EXPECT_EQ(linesOf(QStringLiteral("@@@"), box), 3);
}

TEST(SingleLine, StandsInTheMiddleOfTheHeightAndWhereItsQuaddingSays)
{
    Typesetting typesetting;
    const QString text = QStringLiteral("Text");
    const double width = typesetting.widthOf(text, 10);
    for (const auto &[quadding, x] : {std::pair{0, 23.0}, {1, 70 - width / 2}, {2, 117 - width}, {3, 23.0}}) {
        TextBox box = ordinaryBox();
        box.quadding = quadding;
        const std::string content = singleLine(text, box);
        EXPECT_TRUE(isClippedTo(content, "20 30 100 40")) << content;
        const std::vector<SetText> texts = textsIn(content);
        ASSERT_EQ(texts.size(), 1U);
        EXPECT_NEAR(texts[0].x, x, tolerance) << quadding;
        EXPECT_NEAR(texts[0].y, 50 - 3.6, tolerance);
        EXPECT_EQ(texts[0].size, 10);
    }
}

TEST(Comb, HasEachCharacterInTheMiddleOfItsCell)
{
    Typesetting typesetting;
    const TextBox box = ordinaryBox();
    const std::string content = comb(QStringLiteral("iW\u0301x"), 10, box);
    EXPECT_TRUE(isClippedTo(content, "20 30 100 40")) << content;
    const std::vector<SetText> texts = textsIn(content);
    ASSERT_EQ(texts.size(), 3U);
    const std::vector<QString> characters{QStringLiteral("i"), QStringLiteral("W\u0301"),
                                          QStringLiteral("x")};
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const double middle = 25 + 10 * static_cast<double>(index);
        EXPECT_NEAR(texts[index].x, middle - typesetting.widthOf(characters[index], 10) / 2, tolerance);
        EXPECT_NEAR(texts[index].y, 50 - 3.6, tolerance);
    }
    EXPECT_EQ(textsIn(comb(QStringLiteral("abcde"), 3, box)).size(), 3U) << "what has no cell is left out";
    EXPECT_TRUE(textsIn(comb({}, 3, box)).empty());
}

TEST(SizeOfAField, IsTwoThirdsOfTheHeightWhereTheTextIsNotTooWide)
{
    const auto sizeOf = [](const std::string &entries, int height) {
        const std::vector<SetText> texts = textsIn(made("/FT/Tx" + entries, height).content);
        return texts.empty() ? 0 : texts.front().size;
    };
    EXPECT_NEAR(sizeOf("/V(x)", 20), 0.67 * 20, tolerance);
    EXPECT_NEAR(sizeOf("/V(x)", 40), 0.67 * 40, tolerance);
    EXPECT_NEAR(sizeOf("/V(x)", 5), 4, tolerance) << "the smallest that is read";
    EXPECT_NEAR(sizeOf("/V(x)/DA(/Helv 7 Tf)", 40), 7, tolerance) << "one that is asked for is taken";
    Typesetting typesetting;
    const double widthOfOne = typesetting.widthOf(QStringLiteral("A rather long text"), 1);
    EXPECT_NEAR(sizeOf("/V(A rather long text)", 40), 96 / widthOfOne, 0.1) << "it fills the width";
    EXPECT_NEAR(sizeOf("/V(" + std::string(500, 'W') + ")", 40), 4, tolerance);
    constexpr const char *isComb = "/Ff 16777216/MaxLen 4";
    EXPECT_NEAR(sizeOf(std::string("/V(WWWW)") + isComb, 40), 0.67 * 40, tolerance)
        << "cells have their own room";
    EXPECT_NEAR(sizeOf(std::string("/V(WWWW)/DA(/Helv 7 Tf)") + isComb, 40), 7, tolerance);
}

TEST(SizeOfAField, OfLinesIsTheLargestHalfPointUpToTwelveAtWhichAllAreInTheBox)
{
    double before = 12;
    Typesetting typesetting;
    for (const int words : {1, 5, 10, 12, 15, 20, 25, 30, 50, 200}) {
        std::string text;
        for (int word = 0; word < words; ++word) {
            text += word == 0 ? "word" : " word";
        }
        const std::vector<SetText> texts = textsIn(made("/FT/Tx/Ff 4096/V(" + text + ")", 60).content);
        ASSERT_FALSE(texts.empty());
        const double size = texts.front().size;
        TextBox box;
        box.area = {0, 0, 100, 60};
        box.fontName = QStringLiteral("Helvetica");
        const auto fits = [&](double at) {
            box.size = at;
            return heightOfWrappedText(QString::fromStdString(text), box, typesetting.fonts()) <= 60;
        };
        EXPECT_TRUE(fits(size) || size == 4) << words;
        EXPECT_TRUE(size == 12 || !fits(size + 0.5)) << words;
        EXPECT_EQ(size * 2, std::floor(size * 2)) << words;
        EXPECT_LE(size, before);
        before = size;
    }
    EXPECT_EQ(before, 4);
    EXPECT_EQ(textsIn(made("/FT/Tx/Ff 4096/DA(/Helv 30 Tf)/V(word word)", 60).content).front().size, 30);
}

TEST(AppearanceOfAField, HasItsCornerInTheOriginAndTheSizeOfItsRectangle)
{
    const GeneratedForm form = made("/FT/Tx/V(x)", 25);
    EXPECT_EQ(form.boundingBox, (Rect{0, 0, 100, 25}));
    EXPECT_EQ(form.matrix, Matrix{});
    EXPECT_TRUE(form.usesTextFonts);
}

TEST(AppearanceOfAField, IsRoundForRadioButtonsAlone)
{
    const auto frameOf = [](const std::string &entries, const char *mark = "") {
        return made(entries + "/MK<</BC[0]" + mark + ">>").content;
    };
    constexpr const char *asCheck = "/CA(4)";
    EXPECT_EQ(frameOf("/FT/Tx/Ff 32768"), frameOf("/FT/Tx"));
    EXPECT_EQ(frameOf("/FT/Ch/Ff 32768"), frameOf("/FT/Ch"));
    EXPECT_NE(frameOf("/FT/Btn/Ff 32768"), frameOf("/FT/Btn"));
    EXPECT_EQ(frameOf("/FT/Btn/Ff 32768", asCheck), frameOf("/FT/Btn", asCheck));
    EXPECT_NE(frameOf("/FT/Btn/Ff 32768", "/CA(l)"), frameOf("/FT/Btn", "/CA(l)"))
        << "a box that is checked by a disc";
}

TEST(AppearanceOfAField, IsACombOnlyAsAPlainLineWithItsFlag)
{
    const auto partsOf = [](long flags) {
        return textsIn(made("/FT/Tx/MaxLen 4/V(ab)/Ff " + std::to_string(flags)).content).size();
    };
    constexpr long combFlag = 1L << 24;
    constexpr long multilineFlag = 1L << 12;
    constexpr long passwordFlag = 1L << 13;
    EXPECT_EQ(partsOf(combFlag), 2U);
    EXPECT_EQ(partsOf(0), 1U);
    EXPECT_EQ(partsOf(combFlag | multilineFlag), 1U);
    EXPECT_EQ(partsOf(combFlag | passwordFlag), 1U);
    EXPECT_EQ(textsIn(made("/FT/Ch/MaxLen 4/V(ab)/Ff " + std::to_string(combFlag | 1L << 17)).content).size(),
              1U);
}

TEST(AppearanceOfAField, StandsAtTheNearestEdgeWhereItsQuaddingIsNone)
{
    const auto contentOf = [](const char *quadding) {
        return made(std::string("/FT/Tx/V(x)/Q ") + quadding).content;
    };
    EXPECT_EQ(contentOf("3"), contentOf("2"));
    EXPECT_EQ(contentOf("-1"), contentOf("0"));
    EXPECT_EQ(contentOf("1.0"), contentOf("0"));
    EXPECT_NE(contentOf("1"), contentOf("0"));
    EXPECT_NE(contentOf("2"), contentOf("1"));
}

TEST(AppearanceOfAField, ACombHasAThousandCellsAtMost)
{
    const std::string text(1500, 'i');
    const auto cellsOf = [&](int most) {
        return textsIn(
                   made("/FT/Tx/Ff 16777216/DA(/Helv 1 Tf)/V(" + text + ")/MaxLen " + std::to_string(most))
                       .content)
            .size();
    };
    EXPECT_EQ(cellsOf(999), 999U);
    EXPECT_EQ(cellsOf(1000), 1000U);
    EXPECT_EQ(cellsOf(1500), 1000U);
    EXPECT_EQ(cellsOf(0), 1U) << "without cells it is one line";
    EXPECT_EQ(cellsOf(-1), 1U);
}

TEST(AppearanceOfAField, IsNeededWhereThereIsNoneOrTheFormSaysThatItIsOutdated)
{
    QPDF file;
    file.emptyPDF();
    const auto needs = [&file](const std::string &type, const char *form, const char *box = "[0 0 9 9]") {
        QPDFObjectHandle widget = QPDFObjectHandle::parse("<</FT/" + type + "/AP<<>>/Subtype/Widget>>");
        QPDFObjectHandle own = QPDFObjectHandle::newStream(&file, "0 0 9 9 re f");
        own.getDict().replaceKey("/BBox", QPDFObjectHandle::parse(box));
        widget.getKey("/AP").replaceKey("/N", own);
        return needsFieldAppearance(widget, QPDFObjectHandle::parse(form));
    };
    for (const char *type : {"Tx", "Ch", "Btn"}) {
        EXPECT_TRUE(needsFieldAppearance(QPDFObjectHandle::parse(std::string("<</FT/") + type + ">>"),
                                         QPDFObjectHandle::newNull()));
        for (const char *form :
             {"null", "<<>>", "<</NeedAppearances false>>", "<</NeedAppearances 1>>", "7"}) {
            EXPECT_FALSE(needs(type, form)) << type << form;
        }
    }
    constexpr const char *outdated = "<</NeedAppearances true>>";
    EXPECT_TRUE(needs("Tx", outdated));
    EXPECT_TRUE(needs("Ch", outdated));
    EXPECT_FALSE(needs("Btn", outdated));
    for (const char *box : {"[0 0 0 9]", "[0 0 9 0]", "null", "[0 0 9]"}) {
        EXPECT_TRUE(needs("Btn", outdated, box)) << box;
    }
    EXPECT_FALSE(needs("Sig", outdated));
    EXPECT_FALSE(needsFieldAppearance(QPDFObjectHandle::parse("<</FT/Sig>>"), QPDFObjectHandle::newNull()));
    EXPECT_FALSE(needsFieldAppearance(QPDFObjectHandle::parse("<<>>"), QPDFObjectHandle::newNull()));
}

TEST(OptionsOfAField, AreShownFromTheTopRowByRowAndTheChosenOnesMarked)
{
    const auto shown = [](const std::string &entries, double size = 0) {
        Typesetting typesetting;
        TextBox box = ordinaryBox();
        box.size = size;
        std::string content;
        ContentStream stream(content);
        appendOptions(stream, QPDFObjectHandle::parse("<</Opt[(a)[(b)(B)](c)(d)(e)]" + entries + ">>"), box,
                      typesetting.fonts());
        return content;
    };
    /// The lower edges of what is marked.
    const auto marked = [](const std::string &content) {
        static const std::regex pattern("0\\.8549 rg 20 (\\S+) 100 (\\S+) re f Q\n");
        std::vector<std::pair<double, double>> rows;
        for (std::sregex_iterator match(content.begin(), content.end(), pattern), end; match != end;
             ++match) {
            rows.emplace_back(std::stod((*match)[1]), std::stod((*match)[2]));
        }
        return rows;
    };
    using Rows = std::vector<std::pair<double, double>>;
    EXPECT_EQ(marked(shown("/V(a)", 10)), (Rows{{58.5, 11.5}}));
    EXPECT_EQ(marked(shown("/V(b)/I[0]", 10)), (Rows{{47, 11.5}})) << "the value counts";
    EXPECT_EQ(marked(shown("/V(B)", 10)), (Rows{{47, 11.5}}));
    EXPECT_EQ(marked(shown("/I[1 2]", 10)), (Rows{{47, 11.5}, {35.5, 11.5}}));
    EXPECT_EQ(marked(shown("/V(d)", 10)), (Rows{{30, 5.5}})) << "as far as the box goes";
    EXPECT_EQ(marked(shown("/V(e)", 10)), Rows{});
    EXPECT_EQ(marked(shown("/V(c)/TI 2", 10)), (Rows{{58.5, 11.5}}));
    EXPECT_EQ(marked(shown("/V(a)/TI -1", 10)), (Rows{{58.5, 11.5}}));
    EXPECT_EQ(marked(shown("/V(a)")), (Rows{{56.2, 13.8}})) << "of twelve points where no size is asked for";
    const std::vector<SetText> texts = textsIn(shown("", 10));
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_TRUE(shown("/TI 4", 10).starts_with("q 20 30 100 40 re W n q 20 58.5 100 11.5 re W n 1 0 0 rg "))
        << "each is clipped to the box and to its row";
    EXPECT_NEAR(texts[0].y, 58.5 + 11.5 / 2 - 3.6, tolerance);
    EXPECT_NEAR(texts[1].y, 47 + 11.5 / 2 - 3.6, tolerance);
    EXPECT_EQ(textsIn(shown("/TI 3", 10)).size(), 2U);
    EXPECT_EQ(textsIn(shown("/TI 5", 10)).size(), 0U);
}

TEST(VisibleAnnotations, AnAppearanceWhoseBoxIsNoneIsNotDrawn)
{
    const auto drawn = [](const std::string &box) {
        QPDF file;
        file.emptyPDF();
        QPDFObjectHandle stream = QPDFObjectHandle::newStream(&file, "0 0 9 9 re f");
        stream.getDict().replaceKey("/BBox", QPDFObjectHandle::parse(box));
        QPDFObjectHandle page =
            QPDFObjectHandle::parse("<</Annots[<</Subtype/Stamp/Rect[0 0 9 9]/AP<<>>>>]>>");
        page.getKey("/Annots").getArrayItem(0).getKey("/AP").replaceKey("/N", stream);
        Typesetting typesetting;
        int count = 0;
        drawVisibleAnnotations(page, QPDFObjectHandle::newNull(), 0, typesetting.fonts(),
                               [&count](const PlacedAppearance &) { ++count; });
        return count;
    };
    EXPECT_EQ(drawn("[0 0 9 9]"), 1);
    EXPECT_EQ(drawn("null"), 1);
    for (const char *box : {"7", "[0 0 9]", "[/a/b/c/d]", "[0 0 0 9]"}) {
        EXPECT_EQ(drawn(box), 0) << box;
    }
}

} // namespace tallyfold::pdf
