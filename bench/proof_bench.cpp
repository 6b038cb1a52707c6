/// What part of a production it takes that every copy is read back before it gets its name: productions, and
/// after each of them the same proofs once more by themselves, in turns within one run.
///
/// Usage: proof_bench WORKLOADS, the folder that make_workloads.py made; the copies go beside it for a while.

#include "core/Production.h"
#include "core/ProductionPlan.h"
#include "core/SourceClassifier.h"
#include "core/SourceCollector.h"
#include "files/Descriptor.h"
#include "files/FileCalls.h"
#include "files/WrittenFile.h"
#include "pdf/copy/CopyVerifier.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <vector>

namespace {

using namespace tallyfold;
namespace fs = std::filesystem;

constexpr int rounds = 7;
constexpr double mostPercent = 5;

double milliseconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

ProductionPlan planOf(const fs::path &folder)
{
    std::vector<SourceFile> sources;
    const std::array items{folder};
    for (const fs::path &location : collectPdfs(items).locations) {
        sources.push_back(classify(location));
    }
    return ProductionPlan(sources, StampSettings());
}

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "%s\n", what);
    std::exit(1);
}

void produce(const ProductionPlan &plan, const fs::path &output)
{
    const ProductionResult result = Production::write(plan, output, {}, [](std::int64_t) { return true; });
    if (result.written.size() != plan.stampedFiles().size()) {
        fail("a copy could not be written");
    }
}

/// As the production does before it names a copy.
void proveAll(const ProductionPlan &plan, const fs::path &output)
{
    const files::Descriptor folder = files::Descriptor::ofFile(output);
    pdf::CopyVerifier verifier;
    files::FileCalls calls;
    for (const PlannedFile *file : plan.stampedFiles()) {
        const std::uint64_t size = fs::file_size(output / file->outputName.toStdString());
        const auto written =
            files::WrittenFile::open(folder.number(), file->outputName.toStdString(), size, calls);
        if (!written || !verifier.verify(*written, static_cast<std::int64_t>(file->pages.size()))) {
            fail("a copy has no proof");
        }
    }
}

void measure(const fs::path &workload)
{
    const ProductionPlan plan = planOf(workload);
    const fs::path output = workload.parent_path().string() + ".proved";
    std::vector<double> shares;
    double fastestRun = 0;
    double fastestProof = 0;
    for (int round = 0; round < rounds; ++round) {
        fs::create_directory(output);
        const double run = milliseconds([&] { produce(plan, output); });
        const double proof = milliseconds([&] { proveAll(plan, output); });
        fs::remove_all(output);
        shares.push_back(100 * proof / run);
        fastestRun = round == 0 ? run : std::min(fastestRun, run);
        fastestProof = round == 0 ? proof : std::min(fastestProof, proof);
    }
    std::sort(shares.begin(), shares.end());
    const double median = shares[shares.size() / 2];
    std::printf("| %s | %.1f ms | %.1f ms | %.1f %% | %g %% | %s |\n", workload.filename().c_str(),
                fastestRun, fastestProof, median, mostPercent, median <= mostPercent ? "reached" : "missed");
}

} // namespace

int main(int count, char **values)
{
    if (count != 2) {
        std::fputs("usage: proof_bench WORKLOADS\n", stderr);
        return 64;
    }
    std::printf("Best of %d rounds, and the median of their shares.\n\n", rounds);
    std::puts(
        "| workload | production | its proofs | share | at most | |\n| --- | --- | --- | --- | --- | --- |");
    for (const char *workload : {"text", "small", "scans", "long-2000"}) {
        measure(fs::path(values[1]) / workload);
    }
    return 0;
}
