#include "core/Production.h"

#include "core/SourceClassifier.h"
#include "core/SourceCollector.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <iterator>
#include <sys/resource.h>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using tests::TemporaryFolder;

namespace {

/// Limits the number of open files during its lifetime.
class OpenFilesLimit {
public:
    explicit OpenFilesLimit(rlim_t count)
    {
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &m_before), 0);
        const rlimit limit{count, m_before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }
    ~OpenFilesLimit()
    {
        ::setrlimit(RLIMIT_NOFILE, &m_before);
    }
    OpenFilesLimit(const OpenFilesLimit &) = delete;
    OpenFilesLimit &operator=(const OpenFilesLimit &) = delete;

private:
    rlimit m_before{};
};

/// Omits flushing, which takes long for ten thousand files and is tested elsewhere.
class WithoutWaiting final : public files::FileCalls {
public:
    int syncData(int) override
    {
        return 0;
    }
    int sync(int) override
    {
        return 0;
    }
};

int openDescriptors()
{
    const fs::directory_iterator list("/proc/self/fd");
    return static_cast<int>(std::distance(begin(list), end(list)));
}

QString numbered(int number)
{
    return u"%1"_s.arg(number, 6, 10, QLatin1Char('0'));
}

} // namespace

TEST(ManySources, TenThousandAreProducedWithFewOpenFiles)
{
    constexpr int levels = 100;
    constexpr int filesInAFolder = 100;
    constexpr int count = levels * filesInAFolder;
    const TemporaryFolder folder;
    tests::writeSample(folder / "original.pdf", 1);
    fs::create_directory(folder / "out");
    fs::path inner = folder / "in";
    // Deeper than the limit of open files.
    for (int level = 0; level < levels; ++level) {
        fs::create_directory(inner);
        for (int file = 1; file <= filesInAFolder; ++file) {
            const QString name = numbered(level * filesInAFolder + file) + u".pdf"_s;
            fs::create_hard_link(folder / "original.pdf", inner / name.toStdString());
        }
        inner /= "z";
    }

    const int before = openDescriptors();
    const OpenFilesLimit limit(64);
    const CollectedPdfs found = collectPdfs(std::vector{folder / "in"});
    ASSERT_EQ(found.locations.size(), std::size_t{count});
    EXPECT_TRUE(found.unreadableFolders.empty());
    std::vector<SourceFile> sources;
    for (const fs::path &location : found.locations) {
        sources.push_back(classify(location));
    }
    const ProductionPlan plan(sources, {});
    WithoutWaiting calls;
    const ProductionResult result = Production::write(plan, folder / "out", {true, true}, {}, calls);
    EXPECT_LE(openDescriptors(), before + 4) << "the two readers that are kept";

    EXPECT_TRUE(result.failures.isEmpty());
    EXPECT_EQ(result.pages, count);
    ASSERT_EQ(result.written.size(), std::size_t{count});
    QString index = u"File,Stamped Copy,First Bates,Last Bates,Pages,Status\r\n"_s;
    for (int number = 1; number <= count; ++number) {
        const QString name = numbered(number) + u".pdf"_s;
        EXPECT_EQ(result.written[static_cast<std::size_t>(number - 1)], folder / "out" / name.toStdString());
        const QString bates = u"ABC"_s + numbered(number);
        index += QStringList{name, name, bates, bates, u"1"_s, u"stamped\r\n"_s}.join(u',');
    }
    EXPECT_EQ(tests::readFile(*result.index), index.toStdString());
    // Every copy, both tables, and nothing else.
    const fs::directory_iterator written(folder / "out");
    EXPECT_EQ(std::distance(begin(written), end(written)), count + 2);
    for (int number = 1; number <= count; number += 1111) {
        const std::string name = numbered(number).toStdString();
        EXPECT_NE(tests::textOfPage(folder / "out" / (name + ".pdf"), 1).find("ABC" + name),
                  std::string::npos);
    }
}

} // namespace tallyfold
