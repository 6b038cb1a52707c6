#include "ui/check/FindingsList.h"

#include "app/CountText.h"
#include "app/FindingText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QVBoxLayout>

#include <map>

namespace tallyfold {

/// A table whose Return key is its own, and not the window's, and whose columns share its width until the
/// user sizes them.
class FindingsList::View final : public QTreeView {
public:
    View()
    {
        connect(header(), &QHeaderView::sectionResized, this, [this](int column) {
            // The table itself sizes columns as well: when it hides one, and the last at any time.
            const bool isByUser =
                column != FindingsModel::whatColumn && QGuiApplication::mouseButtons() != Qt::NoButton;
            m_isSizedByUser = m_isSizedByUser || isByUser;
        });
    }

    void shareWidth()
    {
        if (m_isSizedByUser) {
            return;
        }
        const int width = viewport()->width();
        header()->resizeSection(FindingsModel::folderColumn, qBound(80, width / 5, 200));
        header()->resizeSection(FindingsModel::fileColumn, qBound(120, width * 3 / 10, 360));
        header()->resizeSection(FindingsModel::pageColumn,
                                fontMetrics().horizontalAdvance(u'0') * pageDigits + spacing::section);
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QTreeView::resizeEvent(event);
        shareWidth();
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        QTreeView::keyPressEvent(event);
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            event->accept();
        }
    }

private:
    static constexpr int pageDigits = 6;

    bool m_isSizedByUser = false;
};

/// Leaves the findings of one kind, or all.
class FindingsList::Filter final : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setKind(std::optional<FindingKind> kind)
    {
        m_kind = kind;
        invalidateFilter();
    }

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        return !m_kind ||
               sourceModel()->index(row, 0, parent).data(FindingsModel::kindRole).toULongLong() == *m_kind;
    }

private:
    std::optional<FindingKind> m_kind;
};

FindingsList::FindingsList(QWidget *parent)
    : QWidget(parent),
      m_filter(new Filter(this)),
      m_kinds(new Picker),
      m_view(new View),
      m_whole(new StyledLabel(TextStyle::callout, Tone::secondary))
{
    setObjectName(QStringLiteral("findingsList"));
    m_filter->setSourceModel(&m_findings);
    m_filter->setSortRole(FindingsModel::sortRole);
    const QString shown = words(QT_TRANSLATE_NOOP("Words", "Show"));
    m_kinds->setObjectName(QStringLiteral("findingKinds"));
    m_kinds->setAccessibleName(shown);
    m_view->setObjectName(QStringLiteral("findings"));
    m_view->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Findings")));
    m_view->setModel(m_filter);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(FindingsModel::fileColumn, Qt::AscendingOrder);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->header()->setSectionsMovable(false);
    m_whole->setObjectName(QStringLiteral("wholeFinding"));
    m_whole->setSelectable();

    auto *label = new StyledLabel(shown, TextStyle::callout, Tone::secondary);
    label->setWordWrap(false);
    label->setBuddy(m_kinds);
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::normal);
    row->addWidget(label);
    row->addWidget(m_kinds, 1);
    m_kinds->setMaximumWidth(360);
    row->addStretch(1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::normal);
    layout->addLayout(row);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_whole);

    connect(m_kinds, &Picker::picked, this, [this](const QVariant &kind) {
        m_filter->setKind(kind.isValid() ? std::optional<FindingKind>(kind.toULongLong()) : std::nullopt);
        tellCurrent();
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &FindingsList::tellCurrent);
    connect(m_view, &QTreeView::activated, this, &FindingsList::opened);
}

void FindingsList::setResult(const std::shared_ptr<const CheckResult> &result)
{
    m_filter->setKind(std::nullopt);
    m_findings.setResult(result);
    m_view->setColumnHidden(FindingsModel::folderColumn, result->folders.size() < 2);
    m_view->shareWidth();
    m_view->sortByColumn(FindingsModel::fileColumn, Qt::AscendingOrder);
    m_view->setCurrentIndex(m_filter->index(0, FindingsModel::fileColumn));
    offerKinds(*result);
    tellCurrent();
}

void FindingsList::offerKinds(const CheckResult &result)
{
    struct Kind {
        QString title;
        std::int64_t count = 0;
    };
    std::map<FindingKind, Kind> kinds;
    for (const check::Finding &finding : result.outcome.findings) {
        Kind &kind = kinds[kindOf(finding)];
        if (kind.count++ == 0) {
            kind.title = kindTitle(finding);
        }
    }
    m_kinds->clear();
    const auto count = static_cast<std::int64_t>(result.outcome.findings.size());
    //: A title, and of how many findings.
    const QString pattern = words(QT_TRANSLATE_NOOP("Words", "%1 (%2)"));
    const auto add = [&](const QString &title, std::int64_t number, const QVariant &value) {
        m_kinds->add(pattern.arg(title, QLocale().toString(static_cast<qlonglong>(number))), value);
    };
    add(words(QT_TRANSLATE_NOOP("Words", "All findings")), count, {});
    for (const auto &[kind, told] : kinds) {
        add(told.title, told.count, QVariant::fromValue<qulonglong>(kind));
    }
}

const check::Finding *FindingsList::current() const
{
    const QModelIndex index = m_filter->mapToSource(m_view->currentIndex());
    return index.isValid() ? &m_findings.finding(index.row()) : nullptr;
}

QTreeView *FindingsList::view() const
{
    return m_view;
}

void FindingsList::tellCurrent()
{
    const QModelIndex index = m_view->currentIndex();
    m_whole->setText(index.isValid() ? index.siblingAtColumn(FindingsModel::whatColumn).data().toString()
                                     : QString());
    Q_EMIT currentChanged();
}

} // namespace tallyfold
