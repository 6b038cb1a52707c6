#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallyfold::tests {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

/// Two sources and an output folder.
struct Inputs {
    TemporaryFolder folder;
    fs::path in = folder / "in";
    fs::path out = folder / "out";

    Inputs()
    {
        fs::create_directories(in);
        fs::create_directories(out);
        writeSample(in / "2.pdf", 2);
        writeSample(in / "10.pdf", 1);
    }

    /// Writes a settings record and gives its path.
    [[nodiscard]] std::string settings(std::string_view record) const
    {
        writeFile(folder / "settings.json", record);
        return folder / "settings.json";
    }
};

ToolResult produce(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), PRODUCE_PROGRAM);
    return runTool(arguments);
}

QJsonDocument jsonOf(const ToolResult &result)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(result.output), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << result.output << result.errors;
    return document;
}

QJsonDocument json(const char *text)
{
    return QJsonDocument::fromJson(text);
}

bool hasHiddenFile(const fs::path &folder)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().native().starts_with(".tallyfold-")) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(Produce, WritesAProductionAndTellsWhatItWrote)
{
    const Inputs inputs;
    const ToolResult result = produce({inputs.out, inputs.in});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "") << "progress is for terminals";
    EXPECT_EQ(jsonOf(result), json(R"({"written": ["2.pdf", "10.pdf"], "index": "Production Index.csv",
                                       "privilegeLog": null, "pages": 3, "failures": {}})"));
    EXPECT_NE(textOfPage(inputs.out / "10.pdf", 1).find("ABC000003"), std::string::npos);
}

TEST(Produce, TheCommandLineDecidesOverTheRecord)
{
    const Inputs inputs;
    const std::string record =
        inputs.settings(R"({"stamp": {"prefix": "X-"}, "writeIndex": true, "writePrivilegeLog": false})");
    const ToolResult result =
        produce({"--no-index", "--privilege-log", "--settings", record, inputs.out, inputs.in});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(jsonOf(result)[u"index"], QJsonValue());
    EXPECT_EQ(jsonOf(result)[u"privilegeLog"], u"Privilege Log.csv"_s);
    EXPECT_NE(textOfPage(inputs.out / "2.pdf", 1).find("X-000001"), std::string::npos);
    EXPECT_FALSE(fs::exists(inputs.out / "Production Index.csv"));
}

TEST(Produce, TheRecordDecidesWhichTablesAreWritten)
{
    const Inputs inputs;
    const std::string record = inputs.settings(R"({"writeIndex": false, "writePrivilegeLog": true})");
    const ToolResult result = produce({"--settings", record, inputs.out, inputs.in});
    EXPECT_EQ(jsonOf(result)[u"index"], QJsonValue());
    EXPECT_EQ(jsonOf(result)[u"privilegeLog"], u"Privilege Log.csv"_s);
}

TEST(Produce, ConflictsAreListedAndNothingIsWritten)
{
    const Inputs inputs;
    writeFile(inputs.out / "10.pdf", "kept");
    const ToolResult result = produce({inputs.out, inputs.in});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(jsonOf(result), json(R"({"conflicts": [{"exists": "10.pdf"}]})"));
    EXPECT_FALSE(fs::exists(inputs.out / "2.pdf"));

    const ToolResult nothing = produce({inputs.folder / "nowhere", inputs.folder / "none.pdf"});
    EXPECT_EQ(nothing.exitCode, 1);
    EXPECT_EQ(jsonOf(nothing), json(R"({"conflicts": [{"nothingToStamp": true}, {"folderMissing": true}]})"));
}

TEST(Produce, AFileThatFailsIsTold)
{
    const Inputs inputs;
    fs::rename(inputs.in / "2.pdf", inputs.in / (std::string(251, 'n') + ".pdf"));
    const std::string record = inputs.settings(R"({"stamp": {"naming": "batesAndOriginal"}})");
    const ToolResult result = produce({"--settings", record, inputs.out, inputs.in});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(jsonOf(result)[u"failures"].toObject().size(), 1);
    EXPECT_EQ(jsonOf(result)[u"failures"].toObject().begin().value().toObject().keys(),
              QStringList{u"cannotWrite"_s});
    EXPECT_EQ(jsonOf(result)[u"written"], (QJsonArray{u"ABC000001 10.pdf"_s}));
}

TEST(Produce, ShowsTheSourcesWithAllTheirFields)
{
    const Inputs inputs;
    writeFile(inputs.in / "broken.pdf", "not a document");
    const ToolResult result = produce({"--sources", inputs.in});
    EXPECT_EQ(result.exitCode, 0);
    const QJsonArray sources = jsonOf(result).array();
    ASSERT_EQ(sources.size(), 3);
    EXPECT_EQ(sources[0][u"name"], u"2.pdf"_s);
    EXPECT_EQ(sources[0][u"pageCount"], 2);
    EXPECT_EQ(sources[0][u"problem"], QJsonValue());
    EXPECT_EQ(sources[2][u"problem"], u"unreadable"_s);
    EXPECT_EQ(sources[0].toObject().keys(), (QStringList{u"existingBates"_s, u"id"_s, u"modified"_s,
                                                         u"name"_s, u"pageCount"_s, u"problem"_s, u"url"_s}));
}

TEST(Produce, ShowsThePlanAndWritesNothing)
{
    const Inputs inputs;
    const std::string record = inputs.settings(R"({"stamp": {"cover": "skipNoNumber", "startNumber": 7}})");
    const ToolResult result = produce({"--plan", "--settings", record, inputs.in});
    EXPECT_EQ(result.exitCode, 0);
    const QJsonObject plan = jsonOf(result).object();
    EXPECT_EQ(plan[u"rangeText"], u"ABC000007 – ABC000007"_s);
    EXPECT_EQ(plan[u"nextNumber"], 8);
    EXPECT_EQ(plan[u"skippedFiles"], (QJsonArray{u"10.pdf"_s}));
    const QJsonObject first = plan[u"files"].toArray().first().toObject();
    EXPECT_EQ(first[u"source"], u"2.pdf"_s);
    EXPECT_EQ(first[u"first"], u"ABC000007"_s);
    EXPECT_EQ(QJsonDocument(first[u"pages"].toArray()),
              json(R"([{"number": null, "stamped": false}, {"number": 7, "stamped": true}])"));
    EXPECT_TRUE(fs::is_empty(inputs.out));
}

TEST(Produce, WrongUsageIsToldWithoutOutput)
{
    const Inputs inputs;
    const std::string notJson = inputs.settings("{");
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{},
                                                      {inputs.out},
                                                      {"--plan"},
                                                      {"--settings"},
                                                      {"--unknown", "x", "y"},
                                                      {"--settings", notJson, inputs.out, inputs.in},
                                                      {"--settings", "/nowhere", inputs.out, inputs.in}}) {
        const ToolResult result = produce(arguments);
        EXPECT_EQ(result.exitCode, 64);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors.find("usage"), std::string::npos);
    }
    EXPECT_TRUE(fs::is_empty(inputs.out));
}

TEST(Produce, AnInterruptStopsAfterThePageInProgress)
{
    // Long enough for the signal to arrive long before the end.
    const TemporaryFolder folder;
    const std::string in = folder / "long.pdf";
    const std::string out = folder / "out";
    const std::string report = folder / "report.json";
    fs::create_directory(out);
    writeFile(in, smallPdf(std::vector<SmallPage>(60'000, SmallPage{showText(100, 400, "A page")})));

    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const int output = ::open(report.c_str(), O_WRONLY | O_CREAT, 0600);
        ::dup2(output, STDOUT_FILENO);
        ::execl(PRODUCE_PROGRAM, PRODUCE_PROGRAM, out.c_str(), in.c_str(), static_cast<char *>(nullptr));
        ::_exit(127);
    }
    int status = 0;
    pid_t ended = 0;
    while (!hasHiddenFile(out) && ended == 0) {
        ended = ::waitpid(child, &status, WNOHANG);
        ::usleep(1000);
    }
    ASSERT_EQ(ended, 0) << "ended before it could be stopped";
    ::kill(child, SIGINT);
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(readFile(report))),
              json(R"({"cancelled": {"written": []}})"));
    EXPECT_TRUE(fs::is_empty(out));
}

} // namespace tallyfold::tests
