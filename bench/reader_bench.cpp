/// What it costs that pages are read by another process: the same work in this process and through the other,
/// in turns within one run.
///
/// Usage: reader_bench WORKLOADS, the folder that make_workloads.py made.

#include "core/EarlierNumber.h"
#include "pdf/viewing/PageReader.h"
#include "reader/PopplerReader.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <time.h>
#include <vector>

namespace {

using namespace tallyfold;
namespace fs = std::filesystem;
using OpenReader = std::function<std::unique_ptr<pdf::PageReader>(const fs::path &)>;

constexpr int rounds = 15;
constexpr double previewWidth = 1200;
constexpr int previewPages = 3;

/// Milliseconds of a clock.
double millisecondsOf(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Milliseconds of the processor that this process and the readers it has started have used.
double processorTime()
{
    double sum = millisecondsOf(CLOCK_PROCESS_CPUTIME_ID);
    for (const auto &task : fs::directory_iterator("/proc/self/task")) {
        std::ifstream children(task.path() / "children");
        for (pid_t child = 0; children >> child;) {
            clockid_t clock{};
            sum += ::clock_getcpuclockid(child, &clock) == 0 ? millisecondsOf(clock) : 0;
        }
    }
    return sum;
}

/// What something took, in milliseconds.
struct Cost {
    double wall;
    double processor;
};

Cost costOf(const std::function<void()> &work)
{
    const double processor = processorTime();
    const double wall = millisecondsOf(CLOCK_MONOTONIC);
    work();
    const double wallAfter = millisecondsOf(CLOCK_MONOTONIC);
    return {wallAfter - wall, processorTime() - processor};
}

/// Milliseconds of many rounds.
class Rounds {
public:
    void add(double milliseconds)
    {
        m_sorted.insert(std::upper_bound(m_sorted.begin(), m_sorted.end(), milliseconds), milliseconds);
    }
    [[nodiscard]] double best() const
    {
        return m_sorted.front();
    }
    [[nodiscard]] double median() const
    {
        return m_sorted[m_sorted.size() / 2];
    }

private:
    std::vector<double> m_sorted;
};

/// Does the same work here and through the other process, in turns, a first time of each not counted, and
/// prints what each of `parts` of it takes. What is more is the median of the rounds' differences, and the
/// difference of the best times.
void compare(const char *what, double parts, double target,
             const std::function<void(const OpenReader &)> &work)
{
    const OpenReader inProcess = [](const fs::path &path) { return reader::openWithPoppler(path); };
    const OpenReader throughProcess = [](const fs::path &path) { return pdf::PageReader::open(path); };
    work(inProcess);
    work(throughProcess);
    Rounds here;
    Rounds there;
    Rounds more;
    Rounds moreProcessor;
    for (int round = 0; round < rounds; ++round) {
        const Cost first = costOf([&] { work(inProcess); });
        const Cost second = costOf([&] { work(throughProcess); });
        here.add(first.wall / parts);
        there.add(second.wall / parts);
        more.add((second.wall - first.wall) / parts);
        moreProcessor.add((second.processor - first.processor) / parts);
    }
    std::printf("| %s | %.3f / %.3f ms | %.3f / %.3f ms | %.3f / %.3f ms | %.3f ms | %g ms | %s |\n", what,
                here.median(), here.best(), there.median(), there.best(), more.median(),
                there.best() - here.best(), moreProcessor.median(), target,
                more.median() <= target ? "reached" : "missed");
}

std::vector<fs::path> filesIn(const fs::path &folder)
{
    std::vector<fs::path> files;
    for (const auto &entry : fs::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void fail(const fs::path &file)
{
    std::fprintf(stderr, "%s could not be read\n", file.c_str());
    std::exit(1);
}

/// What classifying asks of a reader.
void readFirstPage(const OpenReader &open, const fs::path &file)
{
    const auto reader = open(file);
    const auto crop = reader ? reader->cropBox(0) : std::nullopt;
    if (!crop || !reader->textIn(0, earlierNumberStrips(*crop))) {
        fail(file);
    }
}

/// What a preview asks of one: pictures that it has all at once.
void drawPages(const OpenReader &open, const fs::path &file)
{
    const auto reader = open(file);
    std::vector<pdf::Bitmap> pictures;
    for (int page = 0; page < previewPages; ++page) {
        const auto size = reader ? reader->mediaSize(page) : std::nullopt;
        const double scale = size ? previewWidth / size->width : 0;
        const int height = size ? static_cast<int>(std::lround(size->height * scale)) : 0;
        auto picture =
            size ? reader->render(page, static_cast<int>(previewWidth), height, scale) : std::nullopt;
        if (!picture) {
            fail(file);
        }
        pictures.push_back(std::move(*picture));
    }
}

} // namespace

int main(int count, char **values)
{
    if (count != 2) {
        std::fputs("usage: reader_bench WORKLOADS\n", stderr);
        return 64;
    }
    const fs::path workloads = values[1];
    const std::vector<fs::path> letters = filesIn(workloads / "small");
    const std::vector<fs::path> contracts = filesIn(workloads / "text");
    const std::vector<fs::path> scans = filesIn(workloads / "scans");
    if (letters.empty() || contracts.empty() || scans.empty()) {
        std::fputs("There are no workloads.\n", stderr);
        return 1;
    }
    std::printf("Median / best of %d rounds in turns.\n\n", rounds);
    std::puts("| what | in the program | through the reader | more | more of the processor | at most | |\n"
              "| --- | --- | --- | --- | --- | --- | --- |");
    compare("opening a letter and reading its first page", static_cast<double>(letters.size()), 0.2,
            [&](const OpenReader &open) {
                for (const fs::path &letter : letters) {
                    readFirstPage(open, letter);
                }
            });
    compare("drawing three dense pages, 1200 pixels wide", 1, 5,
            [&](const OpenReader &open) { drawPages(open, contracts.front()); });
    compare("drawing three scanned pages, 1200 pixels wide", 1, 5,
            [&](const OpenReader &open) { drawPages(open, scans.front()); });
    return 0;
}
