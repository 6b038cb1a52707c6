#include "core/Production.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace tallyfold {

namespace {

/// A change of one field.
template <typename Value> using Change = std::function<void(Value &)>;

/// Expects equal values to have equal hashes, and each single change to give another value and another hash.
template <typename Value> void expectEachCounts(const Value &value, const std::vector<Change<Value>> &changes)
{
    const Value copy = value;
    EXPECT_EQ(copy, value);
    EXPECT_EQ(hashValue(copy), hashValue(value));
    for (std::size_t index = 0; index < changes.size(); ++index) {
        Value other = value;
        changes[index](other);
        EXPECT_NE(other, value) << "change " << index;
        EXPECT_NE(hashValue(other), hashValue(value)) << "change " << index;
    }
}

SourceFile source()
{
    SourceFile file;
    file.id = QUuid::fromString(QStringLiteral("{11111111-2222-3333-4444-555555555555}"));
    file.url = "/in/a.pdf";
    file.name = QStringLiteral("a.pdf");
    file.pageCount = 2;
    file.modified = {1'700'000'000, 5};
    return file;
}

} // namespace

TEST(HashValues, EveryFieldOfASourceCounts)
{
    expectEachCounts<SourceFile>(
        source(),
        {[](SourceFile &file) { file.id = QUuid(); }, [](SourceFile &file) { file.url = "/in/b.pdf"; },
         [](SourceFile &file) { file.name = QStringLiteral("b.pdf"); },
         [](SourceFile &file) { file.pageCount = 3; }, [](SourceFile &file) { ++file.modified.seconds; },
         [](SourceFile &file) { ++file.modified.nanoseconds; },
         [](SourceFile &file) { file.problem = SourceProblem::unreadable; },
         [](SourceFile &file) { file.existingBates = QString(); },
         [](SourceFile &file) { file.existingBates = QStringLiteral("ABC000001"); }});
}

TEST(HashValues, EveryProblemOfASourceHasItsOwn)
{
    std::set<std::size_t> hashes{hashValue(source())};
    for (const SourceProblem problem : allSourceProblems) {
        SourceFile file = source();
        file.problem = problem;
        hashes.insert(hashValue(file));
    }
    EXPECT_EQ(hashes.size(), allSourceProblems.size() + 1);
}

TEST(HashValues, EveryFieldOfAPlannedFileCounts)
{
    expectEachCounts<PlannedFile>({source(), {{7, true}, {std::nullopt, false}}, QStringLiteral("a.pdf")},
                                  {[](PlannedFile &file) { file.source.pageCount = 3; },
                                   [](PlannedFile &file) { file.outputName = QStringLiteral("b.pdf"); },
                                   [](PlannedFile &file) { file.pages[0].number = 8; },
                                   [](PlannedFile &file) { file.pages[0].stamped = false; },
                                   [](PlannedFile &file) { file.pages[1].number = -1; },
                                   [](PlannedFile &file) { file.pages.pop_back(); },
                                   [](PlannedFile &file) { std::swap(file.pages[0], file.pages[1]); }});
}

TEST(HashValues, EveryFieldOfAPlanCounts)
{
    expectEachCounts<ProductionPlan>(
        ProductionPlan({source()}, StampSettings()),
        {[](ProductionPlan &plan) {
             StampSettings settings = plan.settings;
             settings.prefix.clear();
             plan.settings = settings.normalized();
         },
         [](ProductionPlan &plan) { plan.files[0].outputName = QStringLiteral("b.pdf"); },
         [](ProductionPlan &plan) { plan.files.clear(); },
         [](ProductionPlan &plan) { plan.files.push_back(plan.files[0]); }});
}

TEST(HashValues, EveryFieldOfAFailureCounts)
{
    const QString name = QStringLiteral("a.pdf");
    expectEachCounts<StampError>(StampError::locked(name),
                                 {[&](StampError &error) { error = StampError::encrypted(name); },
                                  [](StampError &error) { error = StampError::locked({}); }});
    expectEachCounts<ProductionConflict>(
        {ProductionConflict::Kind::exists, QStringLiteral("a.pdf")},
        {[](ProductionConflict &conflict) { conflict.kind = ProductionConflict::Kind::duplicate; },
         [](ProductionConflict &conflict) { conflict.name.clear(); }});
}

TEST(HashValues, EveryFieldOfAResultCounts)
{
    ProductionResult result;
    result.written = {"/out/a.pdf"};
    result.pages = 3;
    expectEachCounts<ProductionResult>(
        result, {[](ProductionResult &other) { other.written.push_back("/out/b.pdf"); },
                 [](ProductionResult &other) { other.index = "/out/index.csv"; },
                 [](ProductionResult &other) { other.privilegeLog = "/out/log.csv"; },
                 [](ProductionResult &other) { other.pages = 4; },
                 [](ProductionResult &other) { other.failures.insert(QStringLiteral("a"), StampError()); }});
}

TEST(HashValues, EveryComponentOfAColourCounts)
{
    expectEachCounts<StampColor>(
        {0.1, 0.2, 0.3, 0.4},
        {[](StampColor &color) { color.red = 0.5; }, [](StampColor &color) { color.green = 0.5; },
         [](StampColor &color) { color.blue = 0.5; }, [](StampColor &color) { color.alpha = 0.5; },
         [](StampColor &color) { std::swap(color.red, color.alpha); }});
}

} // namespace tallyfold
