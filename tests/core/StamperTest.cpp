#include "core/Stamper.h"

#include "core/SourceClassifier.h"
#include "tests/support/Picture.h"
#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <regex>
#include <utility>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::contentOfPage;
using tests::PdfBuilder;
using tests::reference;
using tests::soundPages;
using tests::TemporaryFolder;
using tests::textOfPage;
using tests::writeFile;
using tests::writeSample;

namespace {

PlannedFile planned(const fs::path &path, const StampSettings &settings)
{
    return ProductionPlan({classify(path)}, settings).files.front();
}

/// Stamps `source` to a file in the folder; returns the copy.
fs::path stamped(const TemporaryFolder &folder, const fs::path &source, const StampSettings &settings = {})
{
    const fs::path copy = folder / "copy.pdf";
    fs::remove(copy);
    Stamper::write(planned(source, settings), settings, copy, {});
    return copy;
}

/// A document of one empty page with these entries.
fs::path emptyPage(const TemporaryFolder &folder, const std::string &entries)
{
    PdfBuilder builder;
    builder.addPage(entries);
    writeFile(folder / "page.pdf", builder.file());
    return folder / "page.pdf";
}

std::string pageSize(const fs::path &path)
{
    const std::string info = tests::runTool({"pdfinfo", path}).output;
    std::smatch match;
    return std::regex_search(info, match, std::regex("Page size: +([0-9.]+ x [0-9.]+)")) ? match[1].str()
                                                                                         : "";
}

/// The operands of every operator `name` in `content`.
std::vector<std::vector<double>> operands(const std::string &content, const std::string &name)
{
    std::vector<std::vector<double>> found;
    const std::regex pattern("((?:-?[0-9.]+\\s+)+)" + name + "\\b");
    for (std::sregex_iterator match(content.begin(), content.end(), pattern); match != std::sregex_iterator();
         ++match) {
        std::istringstream numbers((*match)[1].str());
        std::vector<double> values;
        for (double value = 0; numbers >> value;) {
            values.push_back(value);
        }
        found.push_back(values);
    }
    return found;
}

/// The start points of the stamp lines, without the separators below the page.
std::vector<std::vector<double>> placesOfLines(const std::string &content)
{
    auto places = operands(content, "Td");
    std::erase_if(places, [](const auto &place) { return place[1] < 0; });
    return places;
}

StampError errorOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const StampError &error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

} // namespace

TEST(Stamper, EveryPageBearsItsNumberAsText)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 3);
    const fs::path copy = stamped(folder, folder / "a.pdf");
    EXPECT_EQ(soundPages(copy), 3);
    for (int page = 1; page <= 3; ++page) {
        const std::string text = textOfPage(copy, page);
        EXPECT_NE(text.find("ABC00000" + std::to_string(page)), std::string::npos) << text;
        EXPECT_NE(text.find("Page of the original " + std::to_string(page)), std::string::npos) << text;
    }
}

TEST(Stamper, TheSourceIsOnlyRead)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 2);
    const std::string before = tests::readFile(folder / "a.pdf");
    const auto time = fs::last_write_time(folder / "a.pdf");
    (void)stamped(folder, folder / "a.pdf");
    EXPECT_EQ(tests::readFile(folder / "a.pdf"), before);
    EXPECT_EQ(fs::last_write_time(folder / "a.pdf"), time);
}

TEST(Stamper, TheSameFileGivesTheSameBytes)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 3);
    const std::string first = tests::readFile(stamped(folder, folder / "a.pdf"));
    EXPECT_EQ(tests::readFile(stamped(folder, folder / "a.pdf")), first);
}

TEST(Stamper, TurnedPagesComeOutUpright)
{
    for (const char *rotate : {"90", "-270", "450", "270", "-90"}) {
        const TemporaryFolder folder;
        const fs::path copy =
            stamped(folder, emptyPage(folder, std::string("/MediaBox[0 0 612 792]/Rotate ") + rotate));
        EXPECT_EQ(pageSize(copy), "792 x 612") << rotate;
        EXPECT_NE(tests::runTool({"pdfinfo", copy}).output.find("Page rot:        0"), std::string::npos);
        const auto place = placesOfLines(contentOfPage(copy, 1));
        ASSERT_EQ(place.size(), 1U);
        EXPECT_GT(place[0][0], 792 / 2) << "the stamp is at the right of the upright page";
        EXPECT_LT(place[0][1], 50);
    }
}

TEST(Stamper, ACroppedPageHasTheSizeOfWhatIsSeen)
{
    const TemporaryFolder folder;
    EXPECT_EQ(pageSize(stamped(folder, emptyPage(folder, "/MediaBox[0 0 612 792]/CropBox[10 20 500 700]"))),
              "490 x 680");
}

TEST(Stamper, AUserUnitKeepsThePagesRealSizeAndTheStampsOwn)
{
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, emptyPage(folder, "/MediaBox[0 0 200 300]/UserUnit 2"));
    EXPECT_EQ(pageSize(copy), "200 x 300") << "in units; a viewer makes points of them";
    const std::string content = contentOfPage(copy, 1);
    EXPECT_NE(content.find("0.5 0 0 0.5 0 0 cm"), std::string::npos) << content;
    EXPECT_GT(placesOfLines(content)[0][0], 250) << "from a page 400 points wide";
}

TEST(Stamper, AnUnstampedPageIsCopiedWithoutAnyText)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 2);
    StampSettings settings;
    settings.cover = CoverOption::skipKeepNumber;
    settings.legend = QStringLiteral("SECRET");
    settings.pageOfTotal = true;
    const fs::path copy = stamped(folder, folder / "a.pdf", settings);
    const std::string cover = textOfPage(copy, 1);
    EXPECT_EQ(cover.find("ABC"), std::string::npos);
    EXPECT_EQ(cover.find("SECRET"), std::string::npos);
    EXPECT_EQ(cover.find("of 2"), std::string::npos);
    EXPECT_NE(textOfPage(copy, 2).find("ABC000002"), std::string::npos);
}

TEST(Stamper, LinesAreTheLegendTheNumberAndThePage)
{
    StampSettings settings;
    settings.legend = QStringLiteral(" \tA B\t ");
    settings.pageOfTotal = true;
    const std::vector<Stamper::Line> expected{{QStringLiteral("A B"), StampPosition::bottomLeft},
                                              {QStringLiteral("ABC000005"), StampPosition::bottomRight},
                                              {QStringLiteral("Page 3 of 10"), StampPosition::bottomCenter}};
    EXPECT_EQ(Stamper::lines({5, true}, settings.normalized(), 2, 10), expected);
    EXPECT_TRUE(Stamper::lines({5, false}, settings.normalized(), 2, 10).empty());
}

TEST(Stamper, ALegendOfSpacesTakesNoLineAndAStampedPageNeedsNoNumber)
{
    StampSettings settings;
    settings.legend = QStringLiteral(" \t\u00A0\u2003\u3000 ");
    settings.pageOfTotal = true;
    settings.pageOfTotalFormat = QStringLiteral("{page}/{total}");
    const std::vector<Stamper::Line> expected{{QStringLiteral("3/10"), StampPosition::bottomCenter}};
    EXPECT_EQ(Stamper::lines({std::nullopt, true}, settings.normalized(), 2, 10), expected);
    settings.pageOfTotalFormat = QString();
    EXPECT_EQ(Stamper::lines({std::nullopt, true}, settings.normalized(), 2, 10).size(), 1U)
        << "used even when empty";
}

TEST(Stamper, BoxesAndBaselinesAreWhereTheLayoutPutsThem)
{
    const TemporaryFolder folder;
    StampSettings settings;
    settings.fontSize = 12;
    settings.legend = QStringLiteral("L");
    settings.legendPosition = StampPosition::bottomRight;
    settings.pageOfTotal = true;
    settings.pageOfTotalPosition = StampPosition::bottomRight;
    const std::string content =
        contentOfPage(stamped(folder, emptyPage(folder, "/MediaBox[0 0 612 792]"), settings), 1);
    const auto boxes = operands(content, "re");
    const auto places = placesOfLines(content);
    ASSERT_EQ(boxes.size(), 3U);
    ASSERT_EQ(places.size(), 3U);
    for (std::size_t line = 0; line < 3; ++line) {
        EXPECT_NEAR(boxes[line][0], places[line][0] - 2, 0.001);
        EXPECT_NEAR(boxes[line][0] + boxes[line][2], 612 - 18 + 2, 0.001);
    }
    const double descent = places[2][1] - 18;
    EXPECT_GT(descent, 1);
    const double lineHeight = boxes[0][3] - 4;
    EXPECT_GT(lineHeight, 3 * descent) << "Helvetica reaches higher than it descends";
    EXPECT_NEAR(boxes[2][1], 18 - 2, 0.001) << "the lowest descent is at the margin";
    EXPECT_NEAR(boxes[0][1] - boxes[1][1], lineHeight + 3, 0.001) << "a gap of a quarter of the font size";
    EXPECT_NEAR(boxes[1][1] + boxes[1][3] - boxes[0][1], 1, 0.001) << "boxes overlap by a point";
}

TEST(Stamper, WithoutABackgroundNothingIsFilled)
{
    const TemporaryFolder folder;
    StampSettings settings;
    settings.background = false;
    settings.color = StampColor::of(1, 0.5, 0, 0.25);
    const std::string content =
        contentOfPage(stamped(folder, emptyPage(folder, "/MediaBox[0 0 612 792]"), settings), 1);
    EXPECT_TRUE(operands(content, "re").empty());
    EXPECT_EQ(operands(content, "rg"), (std::vector<std::vector<double>>{{1, 0.5, 0}}));
    EXPECT_NE(content.find("/G gs"), std::string::npos);
}

TEST(Stamper, APageLimitShortensTheCopyButNotTheTotal)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 10);
    StampSettings settings;
    settings.pageOfTotal = true;
    const std::vector<char> bytes = Stamper::data(planned(folder / "a.pdf", settings), settings, 2);
    writeFile(folder / "two.pdf", {bytes.data(), bytes.size()});
    EXPECT_EQ(soundPages(folder / "two.pdf"), 2);
    EXPECT_NE(textOfPage(folder / "two.pdf", 2).find("Page 2 of 10"), std::string::npos);
}

TEST(Stamper, TheShorterOfPlanAndDocumentEndsTheCopy)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 3);
    PlannedFile file = planned(folder / "a.pdf", {});
    file.pages.resize(2);
    Stamper::write(file, {}, folder / "two.pdf", {});
    EXPECT_EQ(soundPages(folder / "two.pdf"), 2);
    file.pages.resize(5, {9, true});
    Stamper::write(file, {}, folder / "three.pdf", {});
    EXPECT_EQ(soundPages(folder / "three.pdf"), 3);
    file.pages.clear();
    Stamper::write(file, {}, folder / "none.pdf", {});
    EXPECT_EQ(soundPages(folder / "none.pdf"), 0);
}

TEST(Stamper, StoppingFinishesThePageInProgressAndTheFile)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 10);
    int pages = 0;
    const StampError error = errorOf([&] {
        Stamper::write(planned(folder / "a.pdf", {}), {}, folder / "five.pdf",
                       [&pages] { return ++pages < 5; });
    });
    EXPECT_EQ(error, StampError::cancelled());
    EXPECT_EQ(soundPages(folder / "five.pdf"), 5);
}

TEST(Stamper, WhatCannotBeOpenedIsToldByTheSourcesName)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 1);
    PlannedFile file = planned(folder / "a.pdf", {});
    tests::encrypt(folder / "a.pdf", folder / "locked.pdf", "secret owner 256");
    tests::encrypt(folder / "a.pdf", folder / "restricted.pdf", "'' owner 256 --print=none");
    writeFile(folder / "broken.pdf", "nothing");
    const std::vector<std::pair<std::string, StampError>> cases{
        {"locked.pdf", StampError::locked(QStringLiteral("a.pdf"))},
        {"restricted.pdf", StampError::encrypted(QStringLiteral("a.pdf"))},
        {"broken.pdf", StampError::unreadable(QStringLiteral("a.pdf"))},
        {"gone.pdf", StampError::unreadable(QStringLiteral("a.pdf"))}};
    for (const auto &[name, expected] : cases) {
        file.source.url = folder / name;
        EXPECT_EQ(errorOf([&] { (void)Stamper::data(file, {}, 1); }), expected) << name;
    }
}

TEST(Stamper, OnlyEncryptionThatWithholdsNothingIsOpened)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 2);
    const PlannedFile file = planned(folder / "a.pdf", {});
    for (const char *length : {"128 --use-aes=y", "256"}) {
        PlannedFile open = file;
        open.source.url = folder / "open.pdf";
        fs::remove(open.source.url);
        tests::encrypt(folder / "a.pdf", open.source.url, std::string("'' owner ") + length);
        fs::remove(folder / "copy.pdf");
        Stamper::write(open, {}, folder / "copy.pdf", {});
        EXPECT_EQ(soundPages(folder / "copy.pdf"), 2) << length;
        EXPECT_NE(textOfPage(folder / "copy.pdf", 2).find("Page of the original 2"), std::string::npos)
            << length;
        EXPECT_NE(textOfPage(folder / "copy.pdf", 2).find("ABC000002"), std::string::npos) << length;
    }
    for (const char *restriction : {"--extract=n", "--print=none", "--modify=none"}) {
        PlannedFile restricted = file;
        restricted.source.url = folder / "restricted.pdf";
        tests::encrypt(folder / "a.pdf", restricted.source.url, std::string("'' owner 256 ") + restriction);
        EXPECT_EQ(errorOf([&] { (void)Stamper::open(restricted.source); }),
                  StampError::encrypted(QStringLiteral("a.pdf")))
            << restriction;
    }
}

TEST(Stamper, SettingsAreNormalisedBeforeAnythingIsDrawn)
{
    const TemporaryFolder folder;
    StampSettings raw;
    raw.prefix = QStringLiteral("A\nB");
    raw.digits = 99;
    raw.legend = QStringLiteral("SECRET\u2028FILE");
    raw.margin = -50;
    raw.fontSize = 1000;
    const PlannedFile file = planned(emptyPage(folder, "/MediaBox[0 0 3000 3000]"), raw);
    Stamper::write(file, raw, folder / "copy.pdf", {});
    const std::string content = contentOfPage(folder / "copy.pdf", 1);
    double largest = 0;
    for (const std::vector<double> &font : operands(content, "Tf")) {
        largest = std::max(largest, font.back());
    }
    EXPECT_EQ(largest, 72) << content;
    const auto boxes = operands(content, "re");
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_NEAR(boxes[0][0], -2, 0.001) << "a margin of nothing, less the padding of the box";
    EXPECT_NEAR(boxes[0][1], -2, 0.001);
    const std::string text = textOfPage(folder / "copy.pdf", 1);
    EXPECT_NE(text.find("A B000000000001"), std::string::npos) << text;
    EXPECT_NE(text.find("SECRET FILE"), std::string::npos) << text;

    const std::vector<char> bytes = Stamper::data(file, raw, 1);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), tests::readFile(folder / "copy.pdf"));
}

TEST(Stamper, TheOpacityOfTheTextIsNotThatOfTheWhiteBox)
{
    const TemporaryFolder folder;
    const std::string dark = "0 0 0.4 rg 0 0 300 300 re f";
    writeFile(folder / "a.pdf", tests::smallPdf({{dark, "0 0 300 300"}}));
    StampSettings settings;
    settings.legend = QStringLiteral("LEGEND");
    settings.fontSize = 40;
    settings.color = StampColor::of(1, 0, 0, 0.3);
    const fs::path copy = stamped(folder, folder / "a.pdf", settings);
    const auto boxes = operands(contentOfPage(copy, 1), "re");
    ASSERT_EQ(boxes.size(), 2U);
    for (const auto tool : {tests::Picture::Tool::poppler, tests::Picture::Tool::mupdf}) {
        const tests::Picture picture = tests::Picture::of(copy, tool);
        for (const std::vector<double> &box : boxes) {
            const double y = box[1] + 1;
            EXPECT_TRUE(picture.at(std::max(box[0], 0.0) + 1, y).isPaper());
        }
        EXPECT_FALSE(picture.at(150, 150).isPaper());
        // The lower limit of red with opacity 0.3 on white, whatever is below the box.
        const std::vector<double> &box = boxes.front();
        for (double x = box[0]; x < box[0] + box[2]; x += 1) {
            EXPECT_GT(picture.at(x, box[1] + box[3] / 2).green, 160) << x;
        }
    }
}

TEST(Stamper, AFileThatIsThereIsNotWrittenTo)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 1);
    writeFile(folder / "taken.pdf", "mine");
    const PlannedFile file = planned(folder / "a.pdf", {});
    EXPECT_EQ(errorOf([&] { Stamper::write(file, {}, folder / "taken.pdf", {}); }),
              StampError::cannotWrite(QStringLiteral("taken.pdf")));
    EXPECT_EQ(tests::readFile(folder / "taken.pdf"), "mine");
}

TEST(Stamper, ASourceThatCannotBeOpenedIsToldBeforeAnyFileIsMade)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 1);
    PlannedFile file = planned(folder / "a.pdf", {});
    file.source.url = folder / "gone.pdf";
    writeFile(folder / "taken.pdf", "mine");
    for (const char *copy : {"copy.pdf", "taken.pdf", "no folder/copy.pdf"}) {
        EXPECT_EQ(errorOf([&] { Stamper::write(file, {}, folder / copy, {}); }),
                  StampError::unreadable(QStringLiteral("a.pdf")))
            << copy;
    }
    EXPECT_FALSE(fs::exists(folder / "copy.pdf"));
    EXPECT_EQ(tests::readFile(folder / "taken.pdf"), "mine");
}

TEST(Stamper, WhatIsLostWhenTheFileEndsIsTold)
{
    /// Accepts all bytes and fails at the end.
    class LosingSink final : public files::ByteSink {
    public:
        explicit LosingSink(std::function<void()> meanwhile) : m_meanwhile(std::move(meanwhile)) {}
        bool write(std::span<const char>) override
        {
            return true;
        }
        bool finish() override
        {
            m_meanwhile();
            return false;
        }

    private:
        std::function<void()> m_meanwhile;
    };
    const TemporaryFolder folder;
    tests::writeSample(folder / "a.pdf", 1);
    const ProductionPlan plan({classify(folder / "a.pdf")}, {});
    const PlannedFile &file = plan.files.front();
    const auto changeSource = [&] { std::ofstream(file.source.url, std::ios::app) << "\n"; };
    for (const std::function<void()> &meanwhile :
         {std::function<void()>([] {}), std::function<void()>(changeSource)}) {
        LosingSink sink(meanwhile);
        try {
            Stamper::write(file, *Stamper::open(file.source), plan.settings, sink, {});
            ADD_FAILURE() << "nothing was told";
        } catch (const StampError &error) {
            EXPECT_EQ(error, StampError::cannotWrite(file.outputName)) << "what came first";
        }
    }
}

TEST(Stamper, ASourceThatChangesMeanwhileIsNotTrusted)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 3);
    const PlannedFile file = planned(folder / "a.pdf", {});
    const auto grow = [&] {
        writeFile(folder / "a.pdf", tests::readFile(folder / "a.pdf") + "%more\n");
        return true;
    };
    EXPECT_EQ(errorOf([&] { Stamper::write(file, {}, folder / "copy.pdf", grow); }),
              StampError::unreadable(QStringLiteral("a.pdf")));
}

TEST(Stamper, HoweverASourceChangesMeanwhileNoCopyIsTrusted)
{
    const std::string padding(200'000, ' '); // More than one read, so that some of it is read later.
    const std::map<std::string, std::function<void(const fs::path &)>> changes{
        {"emptied", [](const fs::path &path) { fs::resize_file(path, 0); }},
        {"cut", [](const fs::path &path) { fs::resize_file(path, fs::file_size(path) / 2); }},
        {"of the same size",
         [](const fs::path &path) { writeFile(path, std::string(fs::file_size(path), 'x')); }},
        {"of the same size and date",
         [](const fs::path &path) {
             const auto time = fs::last_write_time(path);
             writeFile(path, std::string(fs::file_size(path), 'x'));
             fs::last_write_time(path, time);
         }},
        {"replaced",
         [](const fs::path &path) {
             writeSample(path.parent_path() / "other.pdf", 3);
             fs::rename(path.parent_path() / "other.pdf", path);
         }},
        {"gone", [](const fs::path &path) { fs::remove(path); }}};
    for (const auto &[name, change] : changes) {
        const TemporaryFolder folder;
        writeSample(folder / "a.pdf", 3, "Page of the original) Tj" + padding + "(");
        const PlannedFile file = planned(folder / "a.pdf", {});
        int pages = 0;
        const auto onPage = [&] {
            if (++pages == 1) {
                change(folder / "a.pdf");
            }
            return true;
        };
        EXPECT_EQ(errorOf([&] { Stamper::write(file, {}, folder / "copy.pdf", onPage); }),
                  StampError::unreadable(QStringLiteral("a.pdf")))
            << name;
    }
}

TEST(Stamper, PreviewsAreAsWideAsAskedAndAsHighAsThePage)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 3);
    const std::vector<pdf::Bitmap> images = Stamper::previewImages(planned(folder / "a.pdf", {}), {}, 2, 300);
    ASSERT_EQ(images.size(), 2U);
    EXPECT_EQ(images[0].width, 300);
    EXPECT_EQ(images[0].height, 388);
    EXPECT_EQ(images[0].pixels.size(), 300U * 388U * 4U);
    EXPECT_EQ(images[0].pixels[0], 255) << "white paper";
    EXPECT_EQ(images[0].pixels[3], 255);
    EXPECT_LT(*std::min_element(images[0].pixels.begin(), images[0].pixels.end()), 128)
        << "something is printed on it";
}

TEST(Stamper, ThePreviewOfAFlatPageIsAPixelHigh)
{
    const TemporaryFolder folder;
    const fs::path page = emptyPage(folder, "/MediaBox[0 0 1000 2]");
    const std::vector<pdf::Bitmap> images = Stamper::previewImages(planned(page, {}), {}, 1, 100);
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images[0].height, 1);
}

TEST(Stamper, TheHeightOfAPreviewIsCutOffAndBounded)
{
    constexpr int most = std::numeric_limits<int>::max();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Stamper::previewHeight({612, 792}, 300), 388);
    EXPECT_EQ(Stamper::previewHeight({100, 199.9}, 100), 199);
    EXPECT_EQ(Stamper::previewHeight({1000, 2}, 100), 1);
    for (const double height : {14'400.0, 1e300, infinity}) {
        EXPECT_EQ(Stamper::previewHeight({0.001, height}, 1200), most) << height;
    }
    EXPECT_EQ(Stamper::previewHeight({1, most}, 1), most);
    EXPECT_EQ(Stamper::previewHeight({1, 1}, most), most);
    for (const pdf::Size &size : {pdf::Size{0, 1}, {1, 0}, {-1, 1}, {1, -1}, {nan, 1}, {1, nan}}) {
        EXPECT_EQ(Stamper::previewHeight(size, 100), 0) << size.width << " by " << size.height;
    }
    EXPECT_EQ(Stamper::previewHeight({infinity, infinity}, 100), 0);
    for (const std::int64_t width : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{most} + 1}) {
        EXPECT_EQ(Stamper::previewHeight({1, 1}, width), 0) << width;
    }
}

TEST(Stamper, ThePageThatIsTooNarrowForAPictureIsLeftOut)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    builder.addPage("/MediaBox[0 0 0.001 14400]");
    builder.addPage("/MediaBox[0 0 100 100]");
    writeFile(folder / "a.pdf", builder.file());
    const std::vector<pdf::Bitmap> images =
        Stamper::previewImages(planned(folder / "a.pdf", {}), {}, 2, 1200);
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images[0].height, 1200);
}

TEST(Stamper, NothingButWhatIsSeenGetsIntoTheCopy)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int script = builder.add("<</S/JavaScript/JS(app.alert\\(MARKER-SCRIPT\\))>>");
    const int metadata = builder.addStream("/Type/Metadata/Subtype/XML", "MARKER-METADATA");
    const int attached = builder.addStream("/Type/EmbeddedFile", "MARKER-ATTACHED");
    builder.addToCatalog("/OpenAction " + reference(script) + "/Metadata " + reference(metadata) +
                         "/Names<</EmbeddedFiles<</Names[(x)<</Type/Filespec/EF<</F " + reference(attached) +
                         ">>>>]>>>>/Lang(MARKER-LANG)");
    const int image = builder.addStream("/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8"
                                        "/ColorSpace/DeviceGray/Metadata " +
                                            reference(metadata),
                                        "x");
    const int content = builder.addStream("", "/I Do");
    builder.addPage("/MediaBox[0 0 100 100]/Contents " + reference(content) + "/Resources<</XObject<</I " +
                    reference(image) + ">>>>/AA<</O " + reference(script) +
                    ">>/PieceInfo<</X<</Private(MARKER-PIECE)>>>>"
                    "/Annots[<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(MARKER-LINK)>>>>]");
    writeFile(folder / "a.pdf", builder.file());
    const fs::path copy = stamped(folder, folder / "a.pdf");
    EXPECT_EQ(soundPages(copy), 1);
    const std::string all = tests::runTool({"qpdf", "--qdf", "--stream-data=uncompress", copy, "-"}).output;
    EXPECT_EQ(all.find("MARKER"), std::string::npos);
    EXPECT_NE(all.find("/Subtype /Image"), std::string::npos);
}

TEST(Stamper, ContentsInSeveralStreamsAreJoined)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
    const int first = builder.addStream("", "2 0 0 2 100 100 cm 0 0 1 1 re W n BT /F1 12 Tf");
    const int second = builder.addStream("", "20 30 Td (Joined) Tj ET q q");
    const int parts = builder.add("[" + reference(first) + " 99 0 R " + reference(second) + "]");
    builder.addPage("/MediaBox[0 0 612 792]/Contents " + reference(parts) + "/Resources<</Font<</F1 " +
                    reference(font) + ">>>>");
    writeFile(folder / "a.pdf", builder.file());
    const fs::path copy = stamped(folder, folder / "a.pdf");
    const std::string text = textOfPage(copy, 1);
    EXPECT_NE(text.find("Joined"), std::string::npos);
    EXPECT_NE(text.find("ABC000001"), std::string::npos)
        << "neither moved nor clipped by what the page left behind";
}

TEST(Stamper, PagesWithoutContentsOrResourcesAreStamped)
{
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, emptyPage(folder, ""));
    EXPECT_EQ(soundPages(copy), 1);
    EXPECT_EQ(pageSize(copy), "612 x 792");
    EXPECT_NE(textOfPage(copy, 1).find("ABC000001"), std::string::npos);
}

TEST(Stamper, LayersThatAreOffStayOff)
{
    const TemporaryFolder folder;
    PdfBuilder builder;
    const int shown = builder.add("<</Type/OCG/Name(Shown)>>");
    const int hidden = builder.add("<</Type/OCG/Name(Hidden)>>");
    builder.addToCatalog("/OCProperties<</OCGs[" + reference(shown) + " " + reference(hidden) + "]/D<</OFF[" +
                         reference(hidden) + "]>>>>");
    const int content = builder.addStream(
        "", "/OC /A BDC 1 0 0 rg 0 0 50 50 re f EMC /OC /B BDC 0 0 1 rg 50 50 50 50 re f EMC");
    builder.addPage("/MediaBox[0 0 100 100]/Contents " + reference(content) + "/Resources<</Properties<</A " +
                    reference(shown) + "/B " + reference(hidden) + ">>>>");
    writeFile(folder / "a.pdf", builder.file());
    const PlannedFile file = planned(folder / "a.pdf", {});
    const std::vector<pdf::Bitmap> images = Stamper::previewImages(file, {}, 1, 100);
    const pdf::Bitmap &image = images.at(0);
    const auto pixel = [&image](int x, int y) {
        return &image.pixels[static_cast<std::size_t>(y * 100 + x) * 4];
    };
    EXPECT_EQ(pixel(10, 60)[2], 0) << "the red of the layer that is on";
    EXPECT_EQ(pixel(80, 20)[0], 255) << "white where the layer that is off would be blue";
}

} // namespace tallyfold
