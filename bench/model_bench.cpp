/// The three figures of the model that users feel: adding files, drawing a preview, planning.
///
/// Usage: model_bench WORKLOADS, the folder that make_workloads.py made. Best of a few rounds each, on a warm
/// cache.

#include "app/PreviewImages.h"
#include "app/SourceReading.h"
#include "app/SourceRows.h"
#include "core/ProductionPlan.h"
#include "core/SourceCollector.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <vector>

namespace {

using namespace tallyfold;
namespace fs = std::filesystem;

double bestMilliseconds(int rounds, const std::function<void()> &work)
{
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
        best = std::min(best, took.count());
    }
    return best;
}

std::vector<SourceFile> readFrom(const fs::path &folder, int threads = SourceReading::usualThreads())
{
    SourceReading reading(
        [folder](const std::stop_token &) {
            const std::array items{folder};
            return newLocations({}, collectPdfs(items).locations);
        },
        KnownSources::read, threads);
    reading.wait();
    std::vector<SourceFile> sources;
    for (const KnownSources::Reading &read : reading.take()) {
        sources.push_back(read.source);
    }
    return sources;
}

void print(const char *what, double milliseconds, double target)
{
    std::printf("| %s | %.2f ms | %g ms | %s |\n", what, milliseconds, target,
                milliseconds <= target ? "reached" : "missed");
}

std::vector<SourceFile> manySources(std::int64_t count, std::int64_t pages)
{
    std::vector<SourceFile> sources;
    for (std::int64_t index = 0; index < count; ++index) {
        const QString name =
            QStringLiteral("Exhibit %1 to the second amended complaint.pdf").arg(index * 7919 % count);
        sources.push_back({QUuid::createUuid(), name.toStdString(), name, pages, distantPast(), {}, {}});
    }
    return sources;
}

} // namespace

int main(int count, char **values)
{
    if (count != 2) {
        std::fputs("usage: model_bench WORKLOADS\n", stderr);
        return 64;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, values);
    const fs::path workloads = values[1];
    std::vector<SourceFile> sources;
    std::printf("| what | best | at most | |\n| --- | --- | --- | --- |\n");
    const double adding = bestMilliseconds(3, [&] { sources = readFrom(workloads / "small", 1); });
    if (sources.empty()) {
        std::fputs("There are no small files.\n", stderr);
        return 1;
    }
    print("adding a letter of 1 to 3 pages, one after the other",
          adding / static_cast<double>(sources.size()), 1);
    const double together = bestMilliseconds(3, [&] { sources = readFrom(workloads / "small"); });
    print("adding 2,000 of them", together / static_cast<double>(sources.size()) * 2000, 3000);

    std::vector<SourceFile> texts;
    const double dense = bestMilliseconds(3, [&] { texts = readFrom(workloads / "text"); });
    std::printf("| adding a contract of 250 dense pages | %.2f ms | | |\n",
                dense / static_cast<double>(texts.size()));
    const auto letter = std::find_if(texts.begin(), texts.end(), [](const SourceFile &source) {
        return source.pageCount >= PreviewImages::mostPages;
    });
    if (letter == texts.end()) {
        std::fputs("There is no file of three pages.\n", stderr);
        return 1;
    }
    const ProductionPlan plan({*letter}, {});
    print("drawing three dense pages, 1200 pixels wide",
          bestMilliseconds(9, [&] { (void)PreviewImages::of(plan.files.front(), plan.settings); }), 150);

    const std::vector<SourceFile> many = manySources(2000, 20);
    print("planning 2,000 files of 20 pages", bestMilliseconds(9, [&] { (void)ProductionPlan(many, {}); }),
          10);
    return 0;
}
