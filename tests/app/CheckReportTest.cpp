#include "app/CheckReport.h"

#include "app/ReportSaver.h"
#include "app/Translations.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"
#include "tests/support/Waiting.h"

#include <QLocale>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>
#include <sys/resource.h>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

class CheckReportTest : public testing::Test {
protected:
    CheckReportTest()
    {
        QLocale::setDefault(QLocale(QStringLiteral("en_US")));
        fs::create_directories(m_folder / "Production 3");
        m_report.program = u"Tallyfold 1.2"_s;
        m_report.result.folders = {m_folder / "Production 3", m_folder / "Gone <4>"};
        m_report.result.ended = QDateTime(QDate(2026, 11, 22), QTime(14, 3), Qt::UTC);
        check::Outcome &outcome = m_report.result.outcome;
        outcome.copies = 2;
        outcome.pages = 5;
        outcome.numbers = {{u"ABC1"_s, u"ABC5"_s, 5}};
        outcome.findings = {
            {0, u"=a, b.pdf"_s, 1234, check::NumberMissing{u"ABC<b>2"_s}},
            {1,
             {},
             std::nullopt,
             check::FolderUnreadable{std::make_error_code(std::errc::no_such_file_or_directory)}}};
    }
    ~CheckReportTest() override
    {
        QLocale::setDefault(m_usual);
    }

    static std::string contents(const fs::path &path)
    {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }
    /// The names in the folder.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto &entry : fs::directory_iterator(m_folder.path())) {
            found.push_back(entry.path().filename());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    tests::TemporaryFolder m_folder;
    const QLocale m_usual;
    Translations m_translations;
    CheckReport m_report;
};

} // namespace

TEST_F(CheckReportTest, ATableTellsWhatItIsOfAndEveryFinding)
{
    const std::string cases = m_folder.path();
    EXPECT_EQ(m_report.csv().toStdString(),
              "Verdict,Not whole: 2 findings.\r\n"
              "Index,\"The index names 2 copies, 5 pages, ABC1 – ABC5.\"\r\n"
              "Folder," +
                  cases +
                  "/Production 3\r\n"
                  "Folder," +
                  cases +
                  "/Gone <4>\r\n"
                  "Checked,\"Sunday, November 22, 2026 2:03:00 PM UTC\"\r\n"
                  "Program,Tallyfold 1.2\r\n"
                  "\r\n"
                  "Folder,File,Page,Finding\r\n"
                  "Production 3,\"'=a, b.pdf\",1234,ABC<b>2 isn’t on the page.\r\n"
                  "Gone <4>,,,The folder can’t be read: No such file or directory.\r\n");
}

TEST_F(CheckReportTest, APageOfTheWebShowsNamesAsTheyAre)
{
    const std::string page = m_report.html().toStdString();
    EXPECT_NE(page.find("<td>ABC&lt;b&gt;2 isn’t on the page.</td>"), std::string::npos) << page;
    EXPECT_NE(page.find("Gone &lt;4&gt;</td>"), std::string::npos);
    EXPECT_NE(page.find("Not whole: 2 findings."), std::string::npos);
    EXPECT_NE(page.find("Tallyfold 1.2"), std::string::npos);
    EXPECT_EQ(page.find("<b>"), std::string::npos);
}

TEST_F(CheckReportTest, WithoutFindingsThereIsNoTableOfThem)
{
    m_report.result.outcome.findings.clear();
    EXPECT_EQ(m_report.html().count(u"<table>"_s), 1);
}

TEST_F(CheckReportTest, APdfCanBeReadByOthers)
{
    const fs::path file = m_folder / "report.pdf";
    EXPECT_EQ(saveReport(m_report, file), std::nullopt);
    const auto told = tests::runTool({"pdftotext", "-layout", file.string(), "-"});
    ASSERT_EQ(told.exitCode, 0);
    for (const char *text : {"Check of a production", "Not whole: 2 findings.", "Tallyfold 1.2", "=a, b.pdf",
                             "1234", "ABC<b>2 isn’t on the page.", "November 22, 2026"}) {
        EXPECT_NE(told.output.find(text), std::string::npos) << text << '\n' << told.output;
    }
    EXPECT_EQ(tests::runTool({"qpdf", "--check", file.string()}).exitCode, 0);
}

TEST_F(CheckReportTest, TheEndingSaysWhichKindItIs)
{
    for (const char *name : {"r.csv", "r.CSV", "r.html", "r.htm", "r.pdf", "r"}) {
        EXPECT_EQ(saveReport(m_report, m_folder / name), std::nullopt) << name;
    }
    EXPECT_TRUE(contents(m_folder / "r.csv").starts_with("Verdict,"));
    EXPECT_TRUE(contents(m_folder / "r.CSV").starts_with("Verdict,"));
    EXPECT_TRUE(contents(m_folder / "r.html").starts_with("<!DOCTYPE html>"));
    EXPECT_TRUE(contents(m_folder / "r.htm").starts_with("<!DOCTYPE html>"));
    EXPECT_TRUE(contents(m_folder / "r.pdf").starts_with("%PDF-"));
    EXPECT_TRUE(contents(m_folder / "r").starts_with("%PDF-"));
}

TEST_F(CheckReportTest, NothingIsWrittenIntoAFolderThatWasChecked)
{
    const fs::path index = m_folder / "Production 3" / "Production Index.csv";
    std::ofstream(index) << "index";
    fs::create_directory_symlink(m_folder / "Production 3", m_folder / "link");
    for (const fs::path &path : {index, m_folder / "Production 3" / "r.pdf", m_folder / "link" / "r.pdf"}) {
        EXPECT_EQ(saveReport(m_report, path), (ReportFailure{ReportFailure::Kind::inProduction, {}})) << path;
    }
    EXPECT_EQ(contents(index), "index");
    EXPECT_FALSE(fs::exists(m_folder / "Production 3" / "r.pdf"));
}

TEST_F(CheckReportTest, AFileThatTheUserChoseIsReplacedWhole)
{
    std::ofstream(m_folder / "r.csv") << std::string(100'000, 'x');
    EXPECT_EQ(saveReport(m_report, m_folder / "r.csv"), std::nullopt);
    EXPECT_EQ(contents(m_folder / "r.csv"), m_report.csv().toStdString());
}

TEST_F(CheckReportTest, AFolderThatIsNotThereIsTheCause)
{
    const auto failure = saveReport(m_report, m_folder / "nowhere" / "r.csv");
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, ReportFailure::Kind::notWritten);
    EXPECT_EQ(failure->cause, u"No such file or directory"_s);
}

TEST_F(CheckReportTest, AFullDiskLeavesWhatWasThere)
{
    std::ofstream(m_folder / "r.csv") << "before";
    const auto before = names();
    // A limit of the size of files is the full disk of a process by itself.
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit little{100, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    const auto failure = saveReport(m_report, m_folder / "r.csv");
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
    std::signal(SIGXFSZ, handler);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, ReportFailure::Kind::notWritten);
    EXPECT_EQ(failure->cause, u"File too large"_s);
    EXPECT_EQ(contents(m_folder / "r.csv"), "before");
    EXPECT_EQ(names(), before);
}

TEST_F(CheckReportTest, ReportsAreNamedByTheirDay)
{
    EXPECT_EQ(reportName(m_report.result), u"Production Check 2026-11-22"_s);
}

TEST_F(CheckReportTest, IsSavedInTheBackground)
{
    ReportSaver saver;
    const QSignalSpy told(&saver, &ReportSaver::saved);
    const QSignalSpy failed(&saver, &ReportSaver::failed);
    saver.save(m_report, m_folder / "r.csv");
    EXPECT_TRUE(saver.isSaving());
    saver.save(m_report, m_folder / "second.csv"); // One at a time.
    EXPECT_TRUE(tests::waitUntil([&] { return !saver.isSaving(); }));
    EXPECT_EQ(told.count(), 1);
    EXPECT_FALSE(fs::exists(m_folder / "second.csv"));
    saver.save(m_report, m_folder / "nowhere" / "r.csv");
    EXPECT_TRUE(tests::waitUntil([&] { return !saver.isSaving(); }));
    EXPECT_EQ(failed.count(), 1);
}

} // namespace tallyfold
