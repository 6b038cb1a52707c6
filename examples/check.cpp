// Checks finished productions without a window, and lists their hashes.
//
//   check FOLDER...                        says as JSON what is missing, changed or wrong
//   check --write-hashes FOLDER            writes "Production Hashes.sha256" into it
//   check --write-table FOLDER ORIGINALS... writes "Production Hashes.csv" into it
//
// The exit codes are in `usage` below.

#include "core/SourceFile.h"
#include "core/check/HashList.h"
#include "core/check/ProductionCheck.h"
#include "examples/CheckReport.h"

#include <QJsonDocument>

#include <cstdio>
#include <string_view>

using namespace tallyfold;

namespace {

enum ExitCode { whole = 0, notWhole = 1, notChecked = 2, wrongUsage = 64 };

constexpr const char *usage = "usage: check FOLDER...\n"
                              "       check --write-hashes FOLDER\n"
                              "       check --write-table FOLDER ORIGINALS...\n"
                              "\n"
                              "  0  everything is there, or the hashes were written\n"
                              "  1  something is missing, changed or wrong, or the hashes were not written\n"
                              "  2  nothing is wrong as far as could be checked\n"
                              " 64  wrong usage\n";

void print(const QJsonObject &object)
{
    std::printf("%s\n", QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
}

ExitCode report(const check::HashesOutcome &outcome)
{
    if (const auto *failure = std::get_if<check::HashesNotWritten>(&outcome)) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(failure->file), failure->error.message().c_str());
        return notWhole;
    }
    print(CheckReport::of(std::get<check::HashesWritten>(outcome)));
    return whole;
}

} // namespace

int main(int count, char **values)
{
    const std::vector<std::filesystem::path> arguments(values + 1, values + count);
    const std::string_view first = arguments.empty() ? std::string_view() : arguments[0].native();
    const auto rest = [&](std::size_t from) { return std::span(arguments).subspan(from); };
    if (first == "--write-hashes" && arguments.size() == 2) {
        return report(check::writeHashList(arguments[1]));
    }
    if (first == "--write-table" && arguments.size() > 2) {
        return report(check::writeHashTable(arguments[1], rest(2)));
    }
    if (arguments.empty() || first.starts_with("--")) {
        std::fputs(usage, stderr);
        return wrongUsage;
    }
    const check::Outcome outcome = check::checkProductions(arguments);
    print(CheckReport::of(outcome, arguments));
    if (outcome.isWhole()) {
        return whole;
    }
    return outcome.weight() == check::Weight::fault ? notWhole : notChecked;
}
