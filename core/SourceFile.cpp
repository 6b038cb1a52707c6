#include "core/SourceFile.h"

#include <QHashFunctions>

#include <limits>

namespace tallyfold {

QString keyOf(SourceProblem problem)
{
    switch (problem) {
    case SourceProblem::unreadable:
        return QStringLiteral("unreadable");
    case SourceProblem::locked:
        return QStringLiteral("locked");
    case SourceProblem::encrypted:
        return QStringLiteral("encrypted");
    case SourceProblem::empty:
        break;
    }
    return QStringLiteral("empty");
}

bool isPasswordProtected(SourceProblem problem)
{
    return problem == SourceProblem::locked || problem == SourceProblem::encrypted;
}

QString indexStatus(SourceProblem problem)
{
    switch (problem) {
    case SourceProblem::unreadable:
        return QStringLiteral("skipped: unreadable");
    case SourceProblem::locked:
    case SourceProblem::encrypted:
        return QStringLiteral("skipped: password-protected");
    case SourceProblem::empty:
        break;
    }
    return QStringLiteral("skipped: empty");
}

std::size_t hashValue(const SourceFile &source)
{
    return qHashMulti(0, source.id, std::filesystem::hash_value(source.url), source.name, source.pageCount,
                      source.modified.seconds, source.modified.nanoseconds,
                      source.problem ? static_cast<int>(*source.problem) : -1,
                      source.existingBates.value_or(QString()), source.existingBates.has_value());
}

FileDate distantPast()
{
    return {std::numeric_limits<std::int64_t>::min(), 0};
}

QString displayName(const std::filesystem::path &path)
{
    const std::filesystem::path last = path.has_filename() ? path.filename() : path.parent_path().filename();
    const std::string &bytes = last.native();
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QString displayPath(const std::filesystem::path &path)
{
    return QString::fromUtf8(path.native().c_str());
}

} // namespace tallyfold
