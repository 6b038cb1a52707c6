// The reader as it is installed: what holds it, and that it reads inside what does.

#include "files/UnderSanitizer.h"
#include "pdf/viewing/PageReader.h"
#include "pdf/viewing/ReaderProcess.h"
#include "reader/PopplerReader.h"
#include "reader/Sandbox.h"
#include "tests/reader/Child.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <stop_token>
#include <thread>
#include <unistd.h>

namespace tallyfold::pdf {

namespace fs = std::filesystem;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;

namespace {

/// Reads a file of /proc, which has no size.
std::string contentOf(const fs::path &path)
{
    std::ifstream stream(path);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

/// The readers that this process has started and not yet ended.
std::vector<int> readers()
{
    std::vector<int> found;
    for (const auto &task : fs::directory_iterator("/proc/self/task")) {
        std::istringstream children(contentOf(task.path() / "children"));
        for (int child = 0; children >> child;) {
            if (contentOf("/proc/" + std::to_string(child) + "/comm") == "tallyfold-reade\n") {
                found.push_back(child);
            }
        }
    }
    return found;
}

/// Ends the readers that are kept, so that the next one is a new one.
void endKept()
{
    while (!readers().empty()) {
        const auto first = ReaderProcess::borrow();
    }
}

/// The rest of the line of `text` that begins with `name`.
std::string field(const std::string &text, const std::string &name)
{
    std::smatch match;
    return std::regex_search(text, match, std::regex("(?:^|\n)" + name + "\\s+([^\n]*)")) ? match[1].str()
                                                                                          : "none";
}

bool hasFilter()
{
    return tests::inChild([] { return static_cast<int>(reader::enterSandbox(0)); }).code ==
           static_cast<int>(reader::SandboxEntry::entered);
}

std::vector<char> smallFile()
{
    const std::string bytes = tests::smallPdf({{tests::showText(20, 20, "ABC000001")}});
    return {bytes.begin(), bytes.end()};
}

/// All that can be asked of a file of at most so many pages is the same of both readers.
void expectTheSame(PageReader &remote, PageReader &here, int mostPages)
{
    ASSERT_EQ(remote.pageCount(), here.pageCount());
    for (int page = 0; page < std::min(here.pageCount(), mostPages); ++page) {
        EXPECT_EQ(remote.cropBox(page), here.cropBox(page));
        EXPECT_EQ(remote.mediaSize(page), here.mediaSize(page));
        const std::array areas{here.cropBox(page).value_or(Rect{}), Rect{0, 0, 612, 90}};
        EXPECT_EQ(remote.textIn(page, areas), here.textIn(page, areas));
        EXPECT_EQ(remote.quickTextIn(page, areas.front()), here.quickTextIn(page, areas.front()));
        const auto drawn = here.render(page, 300, 400, 0.5);
        const auto drawnThere = remote.render(page, 300, 400, 0.5);
        ASSERT_EQ(drawnThere.has_value(), drawn.has_value());
        EXPECT_TRUE(!drawn || drawn->pixels == drawnThere->pixels) << "page " << page;
    }
}

/// A page with Chinese, Japanese and Korean in a font that is not in the file, its codes being characters.
std::string notEmbedded()
{
    PdfBuilder builder;
    const int toUnicode =
        builder.addStream("", "/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CMapType 2 def\n"
                              "1 begincodespacerange <0000> <FFFF> endcodespacerange\n"
                              "2 beginbfrange <4E00> <9FFF> <4E00> <AC00> <D7A3> <AC00> endbfrange\n"
                              "endcmap end end");
    const int descriptor =
        builder.add("<</Type/FontDescriptor/FontName/Unknown/Flags 4/ItalicAngle 0/Ascent 800"
                    "/Descent -200/CapHeight 700/StemV 80/FontBBox[0 -200 1000 800]>>");
    const int descendant = builder.add(
        "<</Type/Font/Subtype/CIDFontType2/BaseFont/Unknown/DW 1000/FontDescriptor " + reference(descriptor) +
        "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>>>");
    const int font =
        builder.add("<</Type/Font/Subtype/Type0/BaseFont/Unknown/Encoding/Identity-H/DescendantFonts[" +
                    reference(descendant) + "]/ToUnicode " + reference(toUnicode) + ">>");
    const int content =
        builder.addStream("", "BT /F 24 Tf 72 700 Td <4E2D6587> Tj 0 -40 Td <65E5672C> Tj 0 -40 Td "
                              "<D55CAE00> Tj ET");
    builder.addPage("/MediaBox[0 0 612 792]/Resources<</Font<</F " + reference(font) + ">>>>/Contents " +
                    reference(content));
    return builder.file();
}

bool isBlank(const Bitmap &bitmap)
{
    return std::all_of(bitmap.pixels.begin(), bitmap.pixels.end(),
                       [](std::uint8_t byte) { return byte == 0xff; });
}

} // namespace

TEST(ReaderProgram, IsHeldByAFilterAndLimits)
{
    endKept();
    const auto reader = PageReader::open(smallFile());
    ASSERT_TRUE(reader);
    ASSERT_EQ(readers().size(), 1U);
    const fs::path process = "/proc/" + std::to_string(readers().front());
    const std::string status = contentOf(process / "status");
    EXPECT_EQ(field(status, "NoNewPrivs:"), "1");
    EXPECT_EQ(field(status, "Seccomp:"), hasFilter() ? "2" : "0");
    const std::string limits = contentOf(process / "limits");
    const auto limit = [&](const std::string &name) {
        const std::string values = field(limits, name);
        return values.substr(0, values.find(' '));
    };
    EXPECT_EQ(limit("Max file size"), "0");
    EXPECT_EQ(limit("Max core file size"), "0");
    EXPECT_EQ(limit("Max cpu time"), "3600");
    EXPECT_EQ(limit("Max address space"), isUnderSanitizer ? "unlimited" : "1073741824");
}

TEST(ReaderProgram, HasOnlyTheFilesItIsHanded)
{
    endKept();
    const TemporaryFolder folder;
    tests::writeFile(folder / "secret", "of the program");
    const std::ifstream open(folder / "secret"); // Is passed on to any program that does not refuse it.
    ASSERT_TRUE(open);
    const auto reader = PageReader::open(smallFile());
    ASSERT_TRUE(reader);
    ASSERT_EQ(readers().size(), 1U);
    int documents = 0;
    for (const auto &file : fs::directory_iterator("/proc/" + std::to_string(readers().front()) + "/fd")) {
        const std::string target = fs::read_symlink(file).string();
        if (std::stoi(file.path().filename()) > STDERR_FILENO) {
            EXPECT_EQ(target, "/memfd:document (deleted)");
            ++documents;
        }
    }
    EXPECT_GE(documents, 1);
}

TEST(ReaderProgram, ReadsInsideWhatItReadsOutside)
{
    int files = 0;
    for (const char *folder : {TALLYFOLD_SAMPLES, TALLYFOLD_ODD_FILES}) {
        for (const auto &entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".pdf") {
                continue;
            }
            SCOPED_TRACE(entry.path());
            const auto remote = PageReader::open(entry.path());
            const auto here = reader::openWithPoppler(entry.path());
            ASSERT_EQ(remote != nullptr, here != nullptr);
            if (here) {
                expectTheSame(*remote, *here, 4);
            }
            ++files;
        }
    }
    EXPECT_GE(files, 6);
}

TEST(ReaderProgram, ReadsAndDrawsCharactersWhoseFontIsNotInTheFile)
{
    endKept();
    const TemporaryFolder folder;
    tests::writeFile(folder / "a.pdf", notEmbedded());
    const auto remote = PageReader::open(folder / "a.pdf");
    const auto here = reader::openWithPoppler(folder / "a.pdf");
    ASSERT_TRUE(remote && here);
    expectTheSame(*remote, *here, 1);
    EXPECT_EQ(remote->textIn(0, std::array{Rect{0, 0, 612, 792}}),
              std::vector{QStringLiteral("中文\n日本\n한글")});
    const auto drawn = remote->render(0, 612, 792, 1);
    ASSERT_TRUE(drawn);
    EXPECT_FALSE(isBlank(*drawn));
}

TEST(ReaderProgram, ReadsThoughTheListOfFontsCannotBeKept)
{
    endKept();
    // Fonts that nobody has listed yet, and a place for the list that could be written to.
    const TemporaryFolder folder;
    fs::create_directory(folder / "lists");
    fs::create_directory(folder / "fonts");
    fs::copy("/usr/share/fonts/truetype/liberation2", folder / "fonts", fs::copy_options::recursive);
    tests::writeFile(folder / "fonts.conf", "<?xml version=\"1.0\"?><fontconfig><dir>" +
                                                (folder / "fonts").string() + "</dir><cachedir>" +
                                                (folder / "lists").string() + "</cachedir></fontconfig>");
    tests::writeFile(folder / "a.pdf", notEmbedded());
    ASSERT_EQ(::setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1), 0);
    const auto reader = PageReader::open(smallFile());
    ASSERT_EQ(::unsetenv("FONTCONFIG_FILE"), 0);
    ASSERT_TRUE(reader);
    const auto drawn = reader->render(0, 612, 792, 1);
    ASSERT_TRUE(drawn);
    EXPECT_FALSE(isBlank(*drawn));
    int kept = 0;
    for (const auto &list : fs::directory_iterator(folder / "lists")) {
        kept += fs::is_regular_file(list) && fs::file_size(list) > 0 ? 1 : 0;
    }
    EXPECT_EQ(kept, 0);
}

TEST(ReaderProgram, OutlivesTheThreadThatStartedIt)
{
    endKept();
    std::unique_ptr<PageReader> reader;
    std::thread([&] { reader = PageReader::open(smallFile()); }).join();
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->textIn(0, std::array{Rect{0, 0, 612, 792}}), std::vector{QStringLiteral("ABC000001")});
}

TEST(ReaderProgram, OneThatWasEndedWhileItWasKeptIsReplacedBeforeItIsAsked)
{
    endKept();
    EXPECT_TRUE(PageReader::open(smallFile()));
    ASSERT_EQ(readers().size(), 1U);
    const int ended = readers().front();
    ASSERT_EQ(::kill(ended, SIGKILL), 0);
    while (contentOf("/proc/" + std::to_string(ended) + "/stat").find(") Z ") == std::string::npos) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(PageReader::open(smallFile()));
    ASSERT_EQ(readers().size(), 1U);
    EXPECT_NE(readers().front(), ended);
}

TEST(ReaderProgram, AFileThatIsCutShortWhileItIsReadCostsItselfAndNothingElse)
{
    endKept();
    const TemporaryFolder folder;
    PdfBuilder builder;
    builder.addStream("", std::string(1'000'000, ' '));
    const int content = builder.addStream("", tests::showText(20, 20, "ABC000001"));
    builder.addPage("/MediaBox[0 0 100 100]/Contents " + reference(content));
    tests::writeFile(folder / "a.pdf", builder.file());
    const auto cut = PageReader::open(folder / "a.pdf");
    ASSERT_TRUE(cut);
    fs::resize_file(folder / "a.pdf", 100);
    EXPECT_EQ(cut->textIn(0, std::array{Rect{0, 0, 100, 100}}), std::vector{QString()});
    const auto other = PageReader::open(smallFile());
    ASSERT_TRUE(other);
    EXPECT_EQ(other->textIn(0, std::array{Rect{0, 0, 612, 792}}), std::vector{QStringLiteral("ABC000001")});
}

TEST(ReaderProgram, AFileInMemoryThatIsGivenUpHasNoAnswers)
{
    std::stop_source givenUp;
    const auto reader = PageReader::open(smallFile(), givenUp.get_token());
    ASSERT_TRUE(reader);
    EXPECT_TRUE(reader->mediaSize(0));
    givenUp.request_stop();
    EXPECT_FALSE(reader->mediaSize(0));
    EXPECT_FALSE(reader->render(0, 10, 10, 0.1));
    EXPECT_FALSE(PageReader::open(smallFile(), givenUp.get_token()));
    EXPECT_TRUE(PageReader::open(smallFile()));
}

TEST(ReaderProgram, AtMostTwoAreKept)
{
    endKept();
    {
        std::vector<std::unique_ptr<PageReader>> open;
        for (int reader = 0; reader < 4; ++reader) {
            open.push_back(PageReader::open(smallFile()));
            ASSERT_TRUE(open.back());
        }
        EXPECT_EQ(readers().size(), 4U);
    }
    EXPECT_EQ(readers().size(), 2U);
    const auto again = PageReader::open(smallFile());
    EXPECT_EQ(readers().size(), 2U) << "one that was kept is used again";
}

TEST(ReaderProgram, HasFiveSecondsForAnAnswer)
{
    EXPECT_EQ(ReaderProcess::Program::installed().maxAnswerTime, std::chrono::seconds(5));
}

TEST(ReaderProgram, EndsWithTheProgram)
{
    endKept();
    std::array<int, 2> line{};
    ASSERT_EQ(::pipe(line.data()), 0);
    // A program that starts a reader, tells which, and ends without a word.
    const tests::ChildEnd end = tests::inChild([&] {
        const auto reader = PageReader::open(smallFile());
        const std::vector<int> started = readers();
        const bool isTold =
            started.size() == 1 && ::write(line[1], started.data(), sizeof(int)) == sizeof(int);
        return reader && isTold ? 0 : 1;
    });
    ASSERT_EQ(end, (tests::ChildEnd{0, 0}));
    int reader = 0;
    ASSERT_EQ(::read(line[0], &reader, sizeof reader), static_cast<ssize_t>(sizeof reader));
    while (contentOf("/proc/" + std::to_string(reader) + "/comm") == "tallyfold-reade\n" &&
           contentOf("/proc/" + std::to_string(reader) + "/stat").find(") Z ") == std::string::npos) {
        std::this_thread::yield();
    }
    EXPECT_EQ(::close(line[0]), 0);
    EXPECT_EQ(::close(line[1]), 0);
}

} // namespace tallyfold::pdf
