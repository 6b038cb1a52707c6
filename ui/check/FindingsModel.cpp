#include "ui/check/FindingsModel.h"

#include "app/FindingText.h"
#include "ui/controls/WrappedText.h"
#include "ui/text/Words.h"
#include "ui/theme/Symbols.h"

#include <QLocale>

#include <utility>

namespace tallyfold {

namespace {

QIcon iconOf(check::Weight weight)
{
    switch (weight) {
    case check::Weight::fault:
        return symbolIcon(QStringLiteral("exclamationmark.octagon.fill"), Tone::blocking);
    case check::Weight::notChecked:
        return symbolIcon(QStringLiteral("exclamationmark.triangle.fill"), Tone::warning);
    case check::Weight::remark:
        break;
    }
    return symbolIcon(QStringLiteral("eye"), Tone::secondary);
}

QVariant alignmentOf(int column)
{
    const Qt::Alignment across = column == FindingsModel::pageColumn ? Qt::AlignTrailing : Qt::AlignLeading;
    return QVariant::fromValue(across | Qt::AlignVCenter);
}

} // namespace

void FindingsModel::setResult(std::shared_ptr<const CheckResult> result)
{
    beginResetModel();
    m_result = std::move(result);
    endResetModel();
}

const check::Finding &FindingsModel::finding(int row) const
{
    return m_result->outcome.findings[static_cast<std::size_t>(row)];
}

int FindingsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_result ? 0 : static_cast<int>(m_result->outcome.findings.size());
}

int FindingsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant FindingsModel::data(const QModelIndex &index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return textAt(index);
    case Qt::ToolTipRole:
        return index.column() == pageColumn ? QVariant() : helpTextOf(textAt(index));
    case Qt::DecorationRole:
        return index.column() == fileColumn ? iconOf(weightOf(finding(index.row()))) : QVariant();
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    case sortRole:
        return orderAt(index);
    case kindRole:
        return QVariant::fromValue<qulonglong>(kindOf(finding(index.row())));
    default:
        return {};
    }
}

QString FindingsModel::textAt(const QModelIndex &index) const
{
    const check::Finding &found = finding(index.row());
    switch (index.column()) {
    case folderColumn:
        return folderName(m_result->folders[found.folder]);
    case fileColumn:
        return found.file.isEmpty() ? folderName(m_result->folders[found.folder]) : found.file;
    case pageColumn:
        return found.page ? QLocale().toString(static_cast<qlonglong>(*found.page)) : QString();
    default:
        return findingText(found, m_result->folders);
    }
}

qlonglong FindingsModel::orderAt(const QModelIndex &index) const
{
    switch (index.column()) {
    case pageColumn:
        return finding(index.row()).page.value_or(0);
    case whatColumn:
        return static_cast<qlonglong>(kindOf(finding(index.row())));
    default:
        return index.row(); // Folder by folder, in the order of the index.
    }
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
        return alignmentOf(section);
    }
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case folderColumn:
        return words(QT_TRANSLATE_NOOP("Words", "Folder"));
    case fileColumn:
        return words(QT_TRANSLATE_NOOP("Words", "File"));
    case pageColumn:
        return words(QT_TRANSLATE_NOOP("Words", "Page"));
    default:
        return words(QT_TRANSLATE_NOOP("Words", "Finding"));
    }
}

} // namespace tallyfold
