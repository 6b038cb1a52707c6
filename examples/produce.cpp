// A whole production without a window: the core used as a library.
//
//   produce [--settings FILE.json] [--no-index] [--privilege-log] OUTPUT_FOLDER INPUT...
//   produce --sources INPUT...
//   produce --plan [--settings FILE.json] INPUT...
//   produce --help
//
// The road is the same for every program that uses the core:
//   collectPdfs           files and folders in, PDF files out
//   classify              each file opened once: its pages, its problem, an earlier number
//   ProductionPlan        which page gets which number, which copy which name; nothing is written yet
//   Production::write     the copies, then the index and the privilege log
//
// FILE.json is a stored settings record. Standard output is one JSON value; progress goes to standard error
// when that is a terminal, and so do the sources that get no copy, each with its reason. Ctrl-C stops after
// the page in progress. Nothing is written where an input is missing or a folder cannot be read to its end: a
// production that lacks files cannot be completed later, for others have their numbers then. The exit codes
// are in `help` below; 64 and 66 are those of sysexits.h.

#include "core/Production.h"
#include "core/ProductionIndex.h"
#include "core/ProductionPlan.h"
#include "core/SettingsRecord.h"
#include "core/SourceClassifier.h"
#include "core/SourceCollector.h"
#include "examples/ProductionReport.h"
#include "files/Terminal.h"

#include <QFile>
#include <QJsonDocument>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <set>
#include <string_view>

using namespace tallyfold;

namespace {

enum ExitCode {
    allWritten = 0,
    conflictsFound = 1,
    someFailed = 2,
    stopped = 3,
    wrongUsage = 64,
    inputMissing = 66
};

constexpr const char *usage =
    "usage: produce [--settings FILE.json] [--no-index] [--privilege-log] OUTPUT_FOLDER INPUT...\n"
    "       produce --sources INPUT...\n"
    "       produce --plan [--settings FILE.json] INPUT...\n";

constexpr const char *help =
    "\n"
    "Writes stamped copies of PDF files, and of those in folders, into OUTPUT_FOLDER. With --sources or "
    "--plan\n"
    "it writes nothing and shows what the files are or which numbers they would get.\n"
    "\n"
    "  0  all is written; sources that get no copy are named, here and in the index\n"
    "  1  nothing is written: something stands in the way in OUTPUT_FOLDER, or there is nothing to stamp\n"
    "  2  some files failed, and the others are written\n"
    "  3  stopped by Ctrl-C; finished copies stay\n"
    " 64  wrong usage\n"
    " 66  nothing is written: an input is missing, or a folder cannot be read to its end\n";

/// What the command line asks for.
struct Request {
    enum class Task { write, showSources, showPlan, showHelp };
    Task task = Task::write;
    StampSettings settings;
    ProductionOptions options;
    std::filesystem::path folder;
    std::vector<std::filesystem::path> inputs;
};

/// Set by Ctrl-C, read after every page.
std::atomic<bool> isStopRequested = false;

/// Reads a stored settings record; false when there is none at `path`.
bool readSettings(const char *path, Request &request)
{
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject()) {
        return false;
    }
    const QJsonObject record = document.object();
    request.settings = decodeStampSettings(record.value(u"stamp")).value_or(StampSettings());
    request.options.writeIndex = record.value(u"writeIndex").toBool(request.options.writeIndex);
    request.options.writePrivilegeLog =
        record.value(u"writePrivilegeLog").toBool(request.options.writePrivilegeLog);
    return true;
}

std::optional<Request> parse(std::span<char *> arguments)
{
    Request request;
    bool noIndex = false;
    bool privilegeLog = false;
    std::size_t next = 0;
    for (; next < arguments.size() && std::string_view(arguments[next]).starts_with("--"); ++next) {
        const std::string_view option = arguments[next];
        if (option == "--") {
            ++next;
            break;
        }
        if (option == "--help") {
            request.task = Request::Task::showHelp;
            return request;
        }
        if (option == "--sources") {
            request.task = Request::Task::showSources;
        } else if (option == "--plan") {
            request.task = Request::Task::showPlan;
        } else if (option == "--no-index") {
            noIndex = true;
        } else if (option == "--privilege-log") {
            privilegeLog = true;
        } else if (option != "--settings" || ++next == arguments.size() ||
                   !readSettings(arguments[next], request)) {
            return std::nullopt;
        }
    }
    request.options.writeIndex = request.options.writeIndex && !noIndex;
    request.options.writePrivilegeLog = request.options.writePrivilegeLog || privilegeLog;
    if (request.task == Request::Task::write && next < arguments.size()) {
        request.folder = arguments[next++];
    }
    request.inputs.assign(arguments.begin() + static_cast<std::ptrdiff_t>(next), arguments.end());
    return request.inputs.empty() ? std::nullopt : std::optional(request);
}

void print(const QJsonDocument &document)
{
    const QByteArray text = document.toJson(QJsonDocument::Compact);
    std::printf("%s\n", text.constData());
}

std::int64_t pagesOf(const ProductionPlan &plan)
{
    std::int64_t pages = 0;
    for (const PlannedFile *file : plan.stampedFiles()) {
        pages += static_cast<std::int64_t>(file->pages.size());
    }
    return pages;
}

/// Tells what is missing among what was found of the inputs; whether anything is.
bool tellMissing(const Request &request, const CollectedPdfs &found)
{
    bool isMissing = !found.unreadableFolders.empty();
    for (const std::filesystem::path &input : request.inputs) {
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::status(input, error))) {
            std::fprintf(stderr, "%s: %s\n", input.c_str(), error.message().c_str());
            isMissing = true;
        }
    }
    for (const std::filesystem::path &folder : found.unreadableFolders) {
        std::fprintf(stderr, "%s: not everything in this folder could be read\n", folder.c_str());
    }
    return isMissing;
}

/// Tells which of the given files are no sources by their names.
void tellLeftOut(const Request &request, const CollectedPdfs &found)
{
    std::set<std::filesystem::path> sources;
    for (const std::filesystem::path &location : found.locations) {
        sources.insert(standardized(location));
    }
    for (const std::filesystem::path &input : request.inputs) {
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(input, error);
        const bool isFile = std::filesystem::exists(status) && !std::filesystem::is_directory(status);
        if (isFile && !sources.contains(standardized(input))) {
            std::fprintf(stderr, "%s: left out: hidden, or not called .pdf\n", input.c_str());
        }
    }
}

/// Tells which sources get no copy, and why.
void tellSkipped(const ProductionPlan &plan)
{
    for (const PlannedFile &file : plan.files) {
        if (const std::optional<QString> status = ProductionIndex::skippedStatus(file)) {
            std::fprintf(stderr, "%s: %s\n", file.source.url.c_str(), qUtf8Printable(*status));
        }
    }
}

ExitCode write(const Request &request, const ProductionPlan &plan)
{
    std::signal(SIGINT, [](int) { isStopRequested = true; });
    const bool showsProgress = files::isTerminal(stderr);
    const std::int64_t total = pagesOf(plan);
    const auto onPage = [&](std::int64_t pages) {
        const bool isLast = pages == total || isStopRequested;
        if (showsProgress && (pages % 25 == 0 || isLast)) {
            std::fprintf(stderr, "\rStamped %lld of %lld pages%s", static_cast<long long>(pages),
                         static_cast<long long>(total), isLast ? "\n" : "");
        }
        return !isStopRequested;
    };
    try {
        const ProductionResult result = Production::write(plan, request.folder, request.options, onPage);
        print(QJsonDocument(ProductionReport::of(result)));
        return result.failures.isEmpty() ? allWritten : someFailed;
    } catch (const ProductionError &error) {
        print(QJsonDocument(ProductionReport::of(error)));
        return std::holds_alternative<ProductionError::Conflicts>(error.value) ? conflictsFound : stopped;
    } catch (const FileError &error) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(error.name), error.code.message().c_str());
        return someFailed;
    }
}

} // namespace

int main(int count, char **values)
{
    const std::optional<Request> request =
        parse(std::span(values, static_cast<std::size_t>(count)).subspan(1));
    if (!request) {
        std::fputs(usage, stderr);
        return wrongUsage;
    }
    if (request->task == Request::Task::showHelp) {
        std::printf("%s%s", usage, help);
        return allWritten;
    }
    const bool showsSources = request->task == Request::Task::showSources;
    const EarlierNumbers earlierNumbers = showsSources ? EarlierNumbers::find : EarlierNumbers::leaveOut;
    std::vector<SourceFile> sources;
    const CollectedPdfs found = collectPdfs(request->inputs);
    const bool isMissing = tellMissing(*request, found);
    tellLeftOut(*request, found);
    if (isMissing && request->task == Request::Task::write) {
        std::fputs("Nothing was written: the production would lack what could not be read.\n", stderr);
        return inputMissing;
    }
    for (const std::filesystem::path &location : found.locations) {
        sources.push_back(classify(location, earlierNumbers));
    }
    if (showsSources) {
        print(QJsonDocument(ProductionReport::of(sources)));
        return isMissing ? inputMissing : allWritten;
    }
    const ProductionPlan plan(sources, request->settings);
    if (request->task == Request::Task::showPlan) {
        print(QJsonDocument(ProductionReport::of(plan)));
        return isMissing ? inputMissing : allWritten;
    }
    tellSkipped(plan);
    return write(*request, plan);
}
