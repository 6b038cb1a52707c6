// A whole production without a window: the core used as a library.
//
//   produce [--settings FILE.json] [--no-index] [--privilege-log] OUTPUT_FOLDER INPUT...
//   produce --sources INPUT...
//   produce --plan [--settings FILE.json] INPUT...
//
// The road is the same for every program that uses the core:
//   collectPdfs           files and folders in, PDF files out
//   classify              each file opened once: its pages, its problem, an earlier number
//   ProductionPlan        which page gets which number, which copy which name; nothing is written yet
//   Production::write     the copies, then the index and the privilege log
//
// FILE.json is a stored settings record. Standard output is one JSON value; progress goes to standard error
// when that is a terminal. Ctrl-C stops after the page in progress. Exit codes: 0 all written, 1 conflicts, 2
// some files failed, 3 stopped, 64 wrong usage.

#include "core/Production.h"
#include "core/ProductionPlan.h"
#include "core/SettingsRecord.h"
#include "core/SourceClassifier.h"
#include "core/SourceCollector.h"
#include "examples/ProductionReport.h"

#include <QFile>
#include <QJsonDocument>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <string_view>
#include <unistd.h>

using namespace tallyfold;

namespace {

enum ExitCode { allWritten = 0, conflictsFound = 1, someFailed = 2, stopped = 3, usage = 64 };

/// What the command line asks for.
struct Request {
    enum class Task { write, showSources, showPlan };
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

ExitCode write(const Request &request, const ProductionPlan &plan)
{
    std::signal(SIGINT, [](int) { isStopRequested = true; });
    const bool showsProgress = ::isatty(STDERR_FILENO) != 0;
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
        return error.kind == ProductionError::Kind::conflicts ? conflictsFound : stopped;
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
        std::fputs(
            "usage: produce [--settings FILE.json] [--no-index] [--privilege-log] OUTPUT_FOLDER INPUT...\n"
            "       produce --sources INPUT...\n"
            "       produce --plan [--settings FILE.json] INPUT...\n",
            stderr);
        return usage;
    }
    const bool showsSources = request->task == Request::Task::showSources;
    const EarlierNumbers earlierNumbers = showsSources ? EarlierNumbers::find : EarlierNumbers::leaveOut;
    std::vector<SourceFile> sources;
    const CollectedPdfs found = collectPdfs(request->inputs);
    for (const std::filesystem::path &folder : found.unreadableFolders) {
        std::fprintf(stderr, "%s: not everything in this folder could be read\n", folder.c_str());
    }
    for (const std::filesystem::path &location : found.locations) {
        sources.push_back(classify(location, earlierNumbers));
    }
    if (showsSources) {
        print(QJsonDocument(ProductionReport::of(sources)));
        return allWritten;
    }
    const ProductionPlan plan(sources, request->settings);
    if (request->task == Request::Task::showPlan) {
        print(QJsonDocument(ProductionReport::of(plan)));
        return allWritten;
    }
    return write(*request, plan);
}
