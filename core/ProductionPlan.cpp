#include "core/ProductionPlan.h"

#include "core/NaturalOrder.h"
#include "core/OutputName.h"

#include <QHash>

#include <algorithm>

namespace tallyfold {

namespace {

std::vector<PlannedPage> plannedPages(std::int64_t count, CoverOption cover, std::int64_t &next)
{
    std::vector<PlannedPage> pages;
    pages.reserve(static_cast<std::size_t>(count));
    switch (cover) {
    case CoverOption::stampAll:
        break;
    case CoverOption::skipKeepNumber:
        pages.push_back({next++, false});
        break;
    case CoverOption::skipNoNumber:
        pages.push_back({std::nullopt, false});
        break;
    }
    while (static_cast<std::int64_t>(pages.size()) < count) {
        pages.push_back({next++, true});
    }
    return pages;
}

template <typename Wanted>
std::vector<const PlannedFile *> filesThat(const std::vector<PlannedFile> &files, Wanted wanted)
{
    std::vector<const PlannedFile *> chosen;
    for (const PlannedFile &file : files) {
        if (wanted(file)) {
            chosen.push_back(&file);
        }
    }
    return chosen;
}

bool getsCopy(const PlannedFile &file)
{
    return file.isStampable() && !file.isSkipped();
}

} // namespace

std::optional<std::int64_t> PlannedFile::firstNumber() const
{
    const auto page = std::find_if(pages.begin(), pages.end(), [](const PlannedPage &p) { return p.number; });
    return page == pages.end() ? std::nullopt : page->number;
}

std::optional<std::int64_t> PlannedFile::lastNumber() const
{
    const auto page =
        std::find_if(pages.rbegin(), pages.rend(), [](const PlannedPage &p) { return p.number; });
    return page == pages.rend() ? std::nullopt : page->number;
}

bool PlannedFile::isStampable() const
{
    return !source.problem && source.pageCount > 0;
}

bool PlannedFile::isCoverOnly() const
{
    return !pages.empty() &&
           std::none_of(pages.begin(), pages.end(), [](const PlannedPage &p) { return p.stamped; });
}

bool PlannedFile::isSkipped() const
{
    return !pages.empty() && std::none_of(pages.begin(), pages.end(),
                                          [](const PlannedPage &p) { return p.stamped || p.number; });
}

std::vector<SourceFile> ordered(const std::vector<SourceFile> &sources, FileOrder order)
{
    std::vector<SourceFile> result;
    switch (order) {
    case FileOrder::name: {
        std::vector<QString> names;
        names.reserve(sources.size());
        for (const SourceFile &source : sources) {
            names.push_back(source.name);
        }
        result.reserve(sources.size());
        for (const std::size_t place : NaturalOrder().sorted(names)) {
            result.push_back(sources[place]);
        }
        return result;
    }
    case FileOrder::modified:
        result = sources;
        std::stable_sort(result.begin(), result.end(), [](const SourceFile &left, const SourceFile &right) {
            return left.modified < right.modified;
        });
        return result;
    case FileOrder::manual:
        break;
    }
    return sources;
}

ProductionPlan::ProductionPlan(const std::vector<SourceFile> &sources, const StampSettings &given)
    : settings(given.normalized())
{
    const BatesFormatter bates(settings);
    std::int64_t next = settings->startNumber;
    files.reserve(sources.size());
    for (SourceFile &source : ordered(sources, settings->order)) {
        PlannedFile file{std::move(source), {}, {}};
        std::optional<NumberRange> range;
        if (file.isStampable()) {
            file.pages = plannedPages(file.source.pageCount, settings->cover, next);
            if (const auto first = file.firstNumber()) {
                range = {*first, *file.lastNumber()};
            }
        }
        file.outputName = outputName(file.source.name, range, settings->naming, bates);
        files.push_back(std::move(file));
    }
}

std::vector<const PlannedFile *> ProductionPlan::stampedFiles() const
{
    return filesThat(files, getsCopy);
}

std::vector<const PlannedFile *> ProductionPlan::coverOnlyFiles() const
{
    return filesThat(files, [](const PlannedFile &file) { return file.isCoverOnly(); });
}

std::vector<const PlannedFile *> ProductionPlan::skippedFiles() const
{
    return filesThat(files, [](const PlannedFile &file) { return file.isSkipped(); });
}

std::vector<const PlannedFile *> ProductionPlan::passwordProtectedFiles() const
{
    return filesThat(files, [](const PlannedFile &file) {
        return file.source.problem && isPasswordProtected(*file.source.problem);
    });
}

std::optional<std::int64_t> ProductionPlan::firstNumber() const
{
    for (const PlannedFile &file : files) {
        if (const auto number = getsCopy(file) ? file.firstNumber() : std::nullopt) {
            return number;
        }
    }
    return std::nullopt;
}

std::optional<std::int64_t> ProductionPlan::lastNumber() const
{
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        if (const auto number = getsCopy(*file) ? file->lastNumber() : std::nullopt) {
            return number;
        }
    }
    return std::nullopt;
}

std::int64_t ProductionPlan::nextNumber() const
{
    const auto last = lastNumber();
    return last ? *last + 1 : settings->startNumber;
}

std::optional<QString> ProductionPlan::rangeText() const
{
    const auto first = firstNumber();
    const auto last = lastNumber();
    return first && last ? std::optional(rangeText(*first, *last)) : std::nullopt;
}

QString ProductionPlan::rangeText(std::int64_t first, std::int64_t last) const
{
    const BatesFormatter bates(settings);
    return bates(first) + QStringLiteral(" \u2013 ") + bates(last);
}

std::int64_t ProductionPlan::digitsNeeded() const
{
    const std::int64_t largest =
        std::max({settings->startNumber, lastNumber().value_or(settings->startNumber), std::int64_t{0}});
    return QString::number(largest).size();
}

bool ProductionPlan::outgrowsDigits() const
{
    return settings->digits < digitsNeeded();
}

QStringList ProductionPlan::duplicateOutputNames() const
{
    QHash<QString, int> counts;
    const std::vector<const PlannedFile *> written = stampedFiles();
    for (const PlannedFile *file : written) {
        ++counts[file->outputName.toLower()];
    }
    QStringList duplicates;
    for (const PlannedFile *file : written) {
        int &count = counts[file->outputName.toLower()];
        if (count > 1) {
            duplicates.append(file->outputName);
            count = 0; // Reported once.
        }
    }
    return duplicates;
}

std::optional<PasswordNotice> ProductionPlan::passwordNotice() const
{
    return PasswordNotice::of(*this);
}

std::size_t hashValue(const PlannedFile &file)
{
    std::size_t hash = qHashMulti(0, hashValue(file.source), file.outputName);
    for (const PlannedPage &page : file.pages) {
        hash = qHashMulti(hash, page.number.value_or(-1), page.number.has_value(), page.stamped);
    }
    return hash;
}

std::size_t hashValue(const ProductionPlan &plan)
{
    std::size_t hash = hashValue(plan.settings);
    for (const PlannedFile &file : plan.files) {
        hash = qHashMulti(hash, hashValue(file));
    }
    return hash;
}

} // namespace tallyfold
