#include "tests/properties/SlowPlan.h"

#include "core/NaturalOrder.h"

#include <QRegularExpression>

namespace tallyfold::tests {

namespace {

/// Whether `one` has to stand before `other`.
bool isBefore(const SourceFile &one, const SourceFile &other, FileOrder order)
{
    if (order == FileOrder::name) {
        return NaturalOrder().compare(one.name, other.name) < 0;
    }
    if (order == FileOrder::modified) {
        return one.modified.seconds < other.modified.seconds ||
               (one.modified.seconds == other.modified.seconds &&
                one.modified.nanoseconds < other.modified.nanoseconds);
    }
    return false;
}

/// Every source is put behind the last one that it need not stand before.
std::vector<SourceFile> inOrder(const std::vector<SourceFile> &sources, FileOrder order)
{
    std::vector<SourceFile> sorted;
    for (const SourceFile &source : sources) {
        std::size_t place = sorted.size();
        while (place > 0 && isBefore(source, sorted[place - 1], order)) {
            --place;
        }
        sorted.insert(sorted.begin() + static_cast<std::ptrdiff_t>(place), source);
    }
    return sorted;
}

std::string clean(QString name)
{
    static const QRegularExpression separators(QStringLiteral("[/:]"));
    static const QRegularExpression controls(
        QStringLiteral("[\\x{0}-\\x{1f}\\x{7f}-\\x{9f}\\x{2028}\\x{2029}]"));
    static const QRegularExpression dots(QStringLiteral("^[.]+"));
    name = name.replace(separators, QStringLiteral("-")).replace(controls, QStringLiteral(" ")).trimmed();
    name.remove(dots);
    if (name.isEmpty()) {
        name = QStringLiteral("Document");
    }
    return (name.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive) ? name : name + QStringLiteral(".pdf"))
        .toStdString();
}

} // namespace

bool SlowPlan::File::isStampable() const
{
    return !source.problem && source.pageCount > 0;
}

bool SlowPlan::File::showsStamp() const
{
    for (const PlannedPage &page : pages) {
        if (page.stamped) {
            return true;
        }
    }
    return false;
}

bool SlowPlan::File::isWritten() const
{
    for (const PlannedPage &page : pages) {
        if (page.stamped || page.number) {
            return true;
        }
    }
    return false;
}

SlowPlan::SlowPlan(const std::vector<SourceFile> &sources, const StampSettings &normalized)
    : m_settings(normalized)
{
    std::int64_t counted = 0; // Pages that have numbers so far, in all files.
    for (const SourceFile &source : inOrder(sources, m_settings.order)) {
        File file{source, {}, {}};
        for (std::int64_t index = 0; file.isStampable() && index < source.pageCount; ++index) {
            const bool isCover = index == 0 && m_settings.cover != CoverOption::stampAll;
            const bool isCounted = !isCover || m_settings.cover == CoverOption::skipKeepNumber;
            PlannedPage page;
            page.stamped = !isCover;
            if (isCounted) {
                page.number = m_settings.startNumber + counted;
                ++counted;
            }
            file.pages.push_back(page);
        }
        file.outputName = nameOf(file);
        files.push_back(file);
    }
}

std::vector<std::int64_t> SlowPlan::numbers() const
{
    std::vector<std::int64_t> all;
    for (const File &file : files) {
        for (const PlannedPage &page : file.pages) {
            if (page.number) {
                all.push_back(*page.number);
            }
        }
    }
    return all;
}

std::vector<std::string> SlowPlan::duplicates() const
{
    std::vector<std::string> found;
    for (std::size_t one = 0; one < files.size(); ++one) {
        bool isFirst = files[one].isWritten();
        bool hasTwin = false;
        for (std::size_t other = 0; other < files.size(); ++other) {
            const bool isTwin = one != other && files[other].isWritten() &&
                                QString::fromStdString(files[one].outputName).toLower() ==
                                    QString::fromStdString(files[other].outputName).toLower();
            hasTwin = hasTwin || isTwin;
            isFirst = isFirst && !(isTwin && other < one);
        }
        if (isFirst && hasTwin) {
            found.push_back(files[one].outputName);
        }
    }
    return found;
}

std::string SlowPlan::bates(std::int64_t number) const
{
    std::string digits = std::to_string(number);
    while (static_cast<std::int64_t>(digits.size()) < m_settings.digits) {
        digits.insert(digits.begin(), '0');
    }
    return m_settings.prefix.toStdString() + digits + m_settings.suffix.toStdString();
}

std::string SlowPlan::nameOf(const File &file) const
{
    const std::string original = clean(file.source.name);
    std::vector<std::int64_t> own;
    for (const PlannedPage &page : file.pages) {
        if (page.number) {
            own.push_back(*page.number);
        }
    }
    if (own.empty() || m_settings.naming == OutputNaming::original) {
        return original;
    }
    std::string name = bates(own.front());
    if (m_settings.naming == OutputNaming::batesRange && own.size() > 1) {
        name += "-" + bates(own.back());
    }
    if (m_settings.naming == OutputNaming::batesAndOriginal) {
        name += " " + original.substr(0, original.size() - 4); // Without ".pdf", however it is spelled.
    }
    return clean(QString::fromStdString(name + ".pdf"));
}

} // namespace tallyfold::tests
