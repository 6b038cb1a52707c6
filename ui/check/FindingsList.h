#pragma once

#include "ui/check/FindingsModel.h"
#include "ui/controls/Picker.h"
#include "ui/controls/StyledLabel.h"

#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QWidget>

#include <memory>
#include <optional>

namespace tallyfold {

/// What was found, as a table that can be sorted, and cut down to one kind of finding.
class FindingsList final : public QWidget {
    Q_OBJECT
public:
    explicit FindingsList(QWidget *parent = nullptr);

    /// Shows the findings of `result`.
    void setResult(const std::shared_ptr<const CheckResult> &result);

    /// The finding that is chosen; null while there is none.
    [[nodiscard]] const check::Finding *current() const;
    /// The view itself.
    [[nodiscard]] QTreeView *view() const;

Q_SIGNALS:
    /// Another finding is chosen, or none.
    void currentChanged();
    /// The user wants to see where the chosen finding is.
    void opened();

private:
    class View;
    class Filter;

    void offerKinds(const CheckResult &result);
    void tellCurrent();

    FindingsModel m_findings;
    Filter *m_filter;
    Picker *m_kinds;
    View *m_view;
    StyledLabel *m_whole; ///< Of the chosen finding, which may be cut in its row.
};

} // namespace tallyfold
