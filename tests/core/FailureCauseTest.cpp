#include "core/FailureCause.h"

#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "files/Descriptor.h"
#include "files/MemorySink.h"
#include "pdf/source/FileInput.h"
#include "tests/support/FaultyCalls.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using During = FailureCause::During;
using Finding = FailureCause::Finding;
using tests::FaultyCalls;
using tests::FileCall;
using tests::TemporaryFolder;

namespace {

std::error_code systemError(int number)
{
    return {number, std::generic_category()};
}

int nothingFails(const FileCall &)
{
    return 0;
}

/// A source of two pages, and the cause of its failed copy.
class Source {
public:
    /// With the text `text` on its pages.
    explicit Source(const std::string &text = "Original")
    {
        tests::writeSample(path(), 2, text);
        m_file = classify(path());
        fs::create_directory(output());
    }

    [[nodiscard]] fs::path path() const
    {
        return m_folder / "a.pdf";
    }
    [[nodiscard]] fs::path output() const
    {
        return m_folder / "out";
    }
    [[nodiscard]] ProductionPlan plan() const
    {
        return {{m_file}, {}};
    }

    /// The cause of failure if file calls fail by `rule` and `onPage` is called after each page.
    [[nodiscard]] StampError::Cause causeOfFailure(const std::function<int(const FileCall &)> &rule,
                                                   const std::function<void()> &onPage = {}) const
    {
        FaultyCalls calls;
        calls.rule = rule;
        const auto goOn = [&onPage](std::int64_t) {
            if (onPage) {
                onPage();
            }
            return true;
        };
        ProductionOptions options;
        options.writeIndex = false;
        const ProductionResult result = Production::write(plan(), output(), options, goOn, calls);
        return result.failures.value(u"a.pdf"_s).cause;
    }

private:
    TemporaryFolder m_folder;
    SourceFile m_file;
};

/// Fails the calls of one kind.
std::function<int(const FileCall &)> failing(const std::string &kind, int error)
{
    return [kind, error](const FileCall &call) { return call.kind == kind ? error : 0; };
}

} // namespace

TEST(FailureCause, AFullDiskIsToldOfWriting)
{
    for (const int error : {ENOSPC, EDQUOT, EIO}) {
        for (const char *kind : {"write", "syncData", "close"}) {
            EXPECT_EQ(Source().causeOfFailure(failing(kind, error)),
                      (FailureCause{During::writingCopy, systemError(error)}))
                << kind;
        }
    }
}

TEST(FailureCause, AFolderThatTakesNothingIsToldOfCreating)
{
    for (const int error : {EACCES, EROFS}) {
        const auto rule = [error](const FileCall &call) {
            return call.kind == "open" && call.place > 0 ? error : 0;
        };
        EXPECT_EQ(Source().causeOfFailure(rule), (FailureCause{During::creatingCopy, systemError(error)}));
    }
    // The folder itself.
    EXPECT_EQ(Source().causeOfFailure(failing("open", ENOENT)),
              (FailureCause{During::creatingCopy, systemError(ENOENT)}));
}

TEST(FailureCause, ACopyThatReadsBackOtherwiseIsDamaged)
{
    EXPECT_EQ(Source().causeOfFailure(failing("readAt", EIO)),
              (FailureCause{During::checkingCopy, Finding::damaged}));
}

TEST(FailureCause, ANameThatIsTakenMeanwhileIsToldOfNaming)
{
    const Source source;
    const auto cause =
        source.causeOfFailure(nothingFails, [&] { tests::writeFile(source.output() / "a.pdf", "theirs"); });
    EXPECT_EQ(cause, (FailureCause{During::namingCopy, systemError(EEXIST)}));
}

TEST(FailureCause, ASourceThatIsGoneIsToldOfOpening)
{
    const Source source;
    fs::remove(source.path());
    EXPECT_EQ(source.causeOfFailure(nothingFails),
              (FailureCause{During::openingSource, systemError(ENOENT)}));
}

TEST(FailureCause, ASourceThatIsNoPdfAnyMoreIsDamaged)
{
    const Source source;
    tests::writeFile(source.path(), "not a PDF");
    EXPECT_EQ(source.causeOfFailure(nothingFails), (FailureCause{During::openingSource, Finding::damaged}));
}

TEST(FailureCause, ASourceWrittenToWhileItIsReadHasChanged)
{
    const Source source;
    const auto cause = source.causeOfFailure(nothingFails, [&] { tests::writeSample(source.path(), 3); });
    EXPECT_EQ(cause, (FailureCause{During::readingSource, Finding::changed}));
}

TEST(FailureCause, ASourceThatCannotBeReadOnGivesNoCopyAndTheSystemsReason)
{
    const Source source(std::string(3'000'000, 'x')); // More than the parser keeps in memory.
    const ProductionPlan plan = source.plan();
    const auto document = Stamper::open(plan.files.front().source);
    const files::Descriptor unreadable(::open(source.path().c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_GE(::dup2(unreadable.number(), document->input().descriptor()), 0);
    files::MemorySink sink;
    try {
        Stamper::write(plan.files.front(), *document, plan.settings, sink, {});
        ADD_FAILURE() << "a copy was written";
    } catch (const StampError &error) {
        EXPECT_EQ(error, StampError::unreadable(u"a.pdf"_s));
        EXPECT_EQ(error.cause, (FailureCause{During::readingSource, systemError(EBADF)}));
    }
}

} // namespace tallyfold
