#include "core/ProductionPlan.h"

#include "core/NaturalOrder.h"
#include "core/OutputName.h"
#include "core/ProductionIndex.h"
#include "tests/properties/Property.h"
#include "tests/properties/RandomValues.h"
#include "tests/properties/SlowPlan.h"

#include <set>

namespace tallyfold {

using tests::holdsAlways;
using tests::SlowPlan;

namespace {

using Strings = std::vector<std::string>;

Strings namesOf(const std::vector<const PlannedFile *> &files)
{
    Strings names;
    for (const PlannedFile *file : files) {
        names.push_back(file->outputName.toStdString());
    }
    return names;
}

template <typename Wanted> Strings namesOf(const SlowPlan &plan, Wanted wanted)
{
    Strings names;
    for (const SlowPlan::File &file : plan.files) {
        if (wanted(file)) {
            names.push_back(file.outputName);
        }
    }
    return names;
}

Strings strings(const QStringList &list)
{
    Strings all;
    for (const QString &text : list) {
        all.push_back(text.toStdString());
    }
    return all;
}

} // namespace

TEST(PlanProperty, APlanIsWhatTheSlowOneIs)
{
    holdsAlways(
        [] {
            const auto sources = *tests::sourceLists();
            const auto settings = *tests::finiteSettings();
            const ProductionPlan plan(sources, settings);
            const SlowPlan slow(sources, settings.normalized());

            RC_ASSERT(plan.settings == settings.normalized());
            RC_ASSERT(plan.files.size() == slow.files.size());
            for (std::size_t index = 0; index < slow.files.size(); ++index) {
                RC_ASSERT(plan.files[index].source == slow.files[index].source);
                RC_ASSERT(plan.files[index].pages == slow.files[index].pages);
                RC_ASSERT(plan.files[index].outputName.toStdString() == slow.files[index].outputName);
            }
            using File = SlowPlan::File;
            RC_ASSERT(namesOf(plan.stampedFiles()) ==
                      namesOf(slow, [](const File &file) { return file.isWritten(); }));
            RC_ASSERT(namesOf(plan.coverOnlyFiles()) == namesOf(slow, [](const File &file) {
                          return file.isStampable() && !file.showsStamp();
                      }));
            RC_ASSERT(namesOf(plan.skippedFiles()) == namesOf(slow, [](const File &file) {
                          return file.isStampable() && !file.isWritten();
                      }));
            RC_ASSERT(namesOf(plan.passwordProtectedFiles()) == namesOf(slow, [](const File &file) {
                          return file.source.problem == SourceProblem::locked ||
                                 file.source.problem == SourceProblem::encrypted;
                      }));
            RC_ASSERT(strings(plan.duplicateOutputNames()) == slow.duplicates());
        },
        600);
}

TEST(PlanProperty, TheNumbersOfAPlanAreWhatTheSlowOnesAre)
{
    holdsAlways(
        [] {
            const auto sources = *tests::sourceLists();
            const auto settings = *tests::finiteSettings();
            const ProductionPlan plan(sources, settings);
            const SlowPlan slow(sources, settings.normalized());
            const std::vector<std::int64_t> numbers = slow.numbers();

            const std::int64_t start = plan.settings->startNumber;
            const std::int64_t largest = numbers.empty() ? start : numbers.back();
            RC_ASSERT(plan.firstNumber() ==
                      (numbers.empty() ? std::nullopt : std::optional(numbers.front())));
            RC_ASSERT(plan.lastNumber() == (numbers.empty() ? std::nullopt : std::optional(numbers.back())));
            RC_ASSERT(plan.nextNumber() == (numbers.empty() ? start : largest + 1));
            RC_ASSERT(plan.digitsNeeded() == static_cast<std::int64_t>(std::to_string(largest).size()));
            RC_ASSERT(plan.outgrowsDigits() ==
                      (static_cast<std::int64_t>(std::to_string(largest).size()) > plan.settings->digits));
            RC_ASSERT(plan.rangeText().has_value() == !numbers.empty());
            if (!numbers.empty()) {
                RC_ASSERT(plan.rangeText()->toStdString() ==
                          slow.bates(numbers.front()) + " \u2013 " + slow.bates(numbers.back()));
            }
            for (std::size_t index = 0; index < numbers.size(); ++index) {
                RC_ASSERT(numbers[index] == start + static_cast<std::int64_t>(index));
                RC_ASSERT(settings.bates(numbers[index]).toStdString() == slow.bates(numbers[index]));
            }
        },
        400);
}

TEST(PlanProperty, TheTablesHaveARowForEveryFileAndEveryCopy)
{
    holdsAlways(
        [] {
            const auto sources = *tests::sourceLists();
            const auto settings = *tests::finiteSettings();
            const ProductionPlan plan(sources, settings);
            QSet<QString> failures;
            for (const SourceFile &source : sources) {
                if (*rc::gen::arbitrary<bool>()) {
                    failures.insert(source.name);
                }
            }
            std::size_t copies = 0;
            for (const PlannedFile &file : plan.files) {
                const auto status = ProductionIndex::skippedStatus(file);
                const bool isWritten = SlowPlan::File{file.source, file.pages, {}}.isWritten();
                RC_ASSERT(status.has_value() == !isWritten);
                copies += isWritten && !failures.contains(file.source.name) ? 1U : 0U;
            }
            // A row begins where one ended; no field of these sources has a line end of its own but a quoted
            // one.
            const auto rows = [](const QString &table) {
                std::size_t count = 0;
                bool isQuoted = false;
                for (qsizetype at = 0; at + 1 < table.size(); ++at) {
                    isQuoted = table[at] == u'"' ? !isQuoted : isQuoted;
                    count += !isQuoted && table[at] == u'\r' && table[at + 1] == u'\n' ? 1U : 0U;
                }
                return count;
            };
            const bool hasPairs = std::any_of(sources.begin(), sources.end(), [](const SourceFile &source) {
                return source.name.contains(QStringLiteral("\r\n"));
            });
            if (!hasPairs) { // Such a pair is written as it is, quoted or not.
                RC_ASSERT(rows(ProductionIndex::csv(plan, failures)) == 1 + sources.size());
            }
            RC_ASSERT(rows(ProductionIndex::privilegeLog(plan, failures)) == 1 + copies);
        },
        300);
}

TEST(PlanProperty, NamesOfCopiesCanBeNamesOfFiles)
{
    holdsAlways(
        [] {
            const auto name = *tests::texts();
            const QString clean = cleanedFileName(name);
            RC_ASSERT(clean.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive));
            RC_ASSERT(!clean.startsWith(u'.'));
            for (const QChar unit : clean) {
                RC_ASSERT(unit != u'/' && unit.category() != QChar::Other_Control);
            }
            RC_ASSERT(clean.size() > 4);
        },
        500);
}

TEST(PlanProperty, NaturalOrderIsAnOrder)
{
    holdsAlways(
        [] {
            const auto names =
                *rc::gen::resize(8, rc::gen::container<std::vector<QString>>(tests::fileNames()));
            const NaturalOrder order;
            const std::vector<std::size_t> sorted = order.sorted(names);
            RC_ASSERT(std::set(sorted.begin(), sorted.end()).size() == names.size());
            for (std::size_t one = 0; one < sorted.size(); ++one) {
                for (std::size_t other = one + 1; other < sorted.size(); ++other) {
                    const int compared = order.compare(names[sorted[one]], names[sorted[other]]);
                    RC_ASSERT(compared <= 0);
                    RC_ASSERT(compared != 0 || sorted[one] < sorted[other]);
                    RC_ASSERT(order.compare(names[sorted[other]], names[sorted[one]]) == -compared);
                }
            }
        },
        300);
}

} // namespace tallyfold
