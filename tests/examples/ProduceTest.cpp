#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"
#include "tests/support/UnreadableFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>
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

    fs::create_directory(inputs.folder / "empty");
    const ToolResult nothing = produce({inputs.folder / "nowhere", inputs.folder / "empty"});
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
    const std::array<timespec, 2> times{{{0, 0}, {1'234'567'890, 45}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (inputs.in / "2.pdf").c_str(), times.data(), 0), 0);
    const ToolResult result = produce({"--sources", inputs.in});
    EXPECT_EQ(result.exitCode, 0);
    const QJsonArray sources = jsonOf(result).array();
    ASSERT_EQ(sources.size(), 3);
    EXPECT_EQ(sources[0][u"name"], u"2.pdf"_s);
    EXPECT_EQ(sources[0][u"pageCount"], 2);
    EXPECT_EQ(sources[0][u"modified"], u"2009-02-13T23:31:30.000000045Z"_s);
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

TEST(Produce, FilesAreOrderedByTheLocaleOfCollationAndNotByThatOfMessages)
{
    const TemporaryFolder folder;
    for (const char *name : {"in/\xC3\xA4.pdf", "in/z.pdf"}) {
        fs::create_directories(folder / "in");
        writeSample(folder / name, 1);
    }
    const auto firstIn = [&folder](const std::string &collation, const std::string &messages) {
        const ToolResult result =
            runTool({"env", "LC_ALL=", "LC_COLLATE=" + collation, "LC_MESSAGES=" + messages,
                     "LANG=" + messages, PRODUCE_PROGRAM, "--plan", folder / "in"});
        return jsonOf(result)[u"files"].toArray().first()[u"source"].toString();
    };
    EXPECT_EQ(firstIn("sv_SE.UTF-8", "en_US.UTF-8"), u"z.pdf"_s);
    EXPECT_EQ(firstIn("en_US.UTF-8", "sv_SE.UTF-8"), u"\u00E4.pdf"_s);
    EXPECT_EQ(firstIn("xx_XX.UTF-8", "sv_SE.UTF-8"), u"\u00E4.pdf"_s);
}

TEST(Produce, AnInputThatIsNotThereIsAnErrorAndNothingIsWritten)
{
    const Inputs inputs;
    const std::string missing = inputs.folder / "mis\xFFing.pdf";
    const std::string link = inputs.folder / "link.pdf";
    fs::create_symlink("nowhere", link);
    const std::string inFile = inputs.in / "2.pdf/3.pdf";
    const std::map<std::string, std::string> reasons{{missing, "No such file or directory"},
                                                     {link, "No such file or directory"},
                                                     {inFile, "Not a directory"}};
    for (const auto &[input, reason] : reasons) {
        for (const std::vector<std::string> &arguments :
             {std::vector<std::string>{inputs.out, inputs.in, input},
              {inputs.out, input, inputs.in},
              {inputs.out, input}}) {
            const ToolResult result = produce(arguments);
            EXPECT_EQ(result.exitCode, 66) << input;
            EXPECT_EQ(result.output, "") << input;
            EXPECT_EQ(result.errors,
                      input + ": " + reason +
                          "\n"
                          "Nothing was written: the production would lack what could not be read.\n");
        }
    }
    EXPECT_TRUE(fs::is_empty(inputs.out));
}

TEST(Produce, AFolderThatCannotBeReadToItsEndIsAnErrorAndNothingIsWritten)
{
    const Inputs inputs;
    makeUnreadableFolder(inputs.in / "sub");
    const ToolResult result = produce({inputs.out, inputs.in});
    EXPECT_EQ(result.exitCode, 66);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.errors.starts_with((inputs.in / "sub").native())) << result.errors;
    EXPECT_NE(result.errors.find(": not everything in this folder could be read\n"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(inputs.out));
}

TEST(Produce, WhatCouldBeReadIsShownBesideTheError)
{
    const Inputs inputs;
    const std::string missing = inputs.folder / "none.pdf";
    for (const char *task : {"--sources", "--plan"}) {
        const ToolResult result = produce({task, missing, inputs.in});
        EXPECT_EQ(result.exitCode, 66) << task;
        EXPECT_EQ(result.errors, missing + ": No such file or directory\n") << task;
        const QJsonDocument shown = jsonOf(result);
        EXPECT_EQ((shown.isArray() ? shown.array() : shown[u"files"].toArray()).size(), 2) << task;
    }
}

TEST(Produce, ASourceThatIsSkippedIsNamedWithItsReason)
{
    const Inputs inputs;
    writeFile(inputs.in / "broken\n.pdf", "not a document");
    writeFile(inputs.in / "empty.pdf", smallPdf({}));
    encrypt(inputs.in / "10.pdf", inputs.in / "locked.pdf", "secret owner 256");
    const ToolResult result = produce({inputs.out, inputs.in});
    EXPECT_EQ(result.exitCode, 0) << "the index tells of them too";
    const std::string in = inputs.in;
    EXPECT_EQ(result.errors, in + "/broken\n.pdf: skipped: unreadable\n" + in +
                                 "/empty.pdf: skipped: empty\n" + in +
                                 "/locked.pdf: skipped: password-protected\n");
    EXPECT_EQ(jsonOf(result)[u"written"].toArray().size(), 2);

    const std::string record = inputs.settings(R"({"stamp": {"cover": "skipNoNumber"}})");
    fs::create_directory(inputs.folder / "second");
    const ToolResult covers =
        produce({"--settings", record, inputs.folder / "second", inputs.in / "10.pdf", inputs.in / "2.pdf"});
    EXPECT_EQ(covers.exitCode, 0);
    EXPECT_EQ(covers.errors, in + "/10.pdf: skipped: cover page only, no number\n");
}

TEST(Produce, AFileWhoseNameIsNotAPdfsIsNamed)
{
    const Inputs inputs;
    const std::string notes = inputs.folder / "notes.txt";
    const std::string hidden = inputs.folder / ".hidden.pdf";
    writeFile(notes, "notes");
    writeSample(hidden, 1);
    const ToolResult result = produce({inputs.out, notes, inputs.in, hidden});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, notes + ": left out: hidden, or not called .pdf\n" + hidden +
                                 ": left out: hidden, or not called .pdf\n");
    EXPECT_EQ(jsonOf(result)[u"written"].toArray().size(), 2);
}

TEST(Produce, HelpIsNoError)
{
    const Inputs inputs;
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{"--help"},
                                                      {"--plan", "--help"},
                                                      {"--help", inputs.out, inputs.in},
                                                      {"--no-index", "--help", "--unknown"}}) {
        const ToolResult result = produce(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_TRUE(result.output.starts_with("usage: produce ")) << result.output;
        for (const char *told : {"--sources", "--plan", "66 ", "64 "}) {
            EXPECT_NE(result.output.find(told), std::string::npos) << told;
        }
        EXPECT_EQ(result.errors, "");
    }
    EXPECT_EQ(produce({"--", "--help"}).exitCode, 64) << "after the options it is a folder like any other";
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
