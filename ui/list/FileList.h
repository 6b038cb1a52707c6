#pragma once

#include "ui/Environment.h"
#include "ui/list/FileListModel.h"
#include "ui/list/FileListView.h"
#include "ui/list/ProductionSummary.h"

#include <QMenu>
#include <QStackedWidget>
#include <QWidget>

#include <memory>

namespace tallyfold {

/// The column of the files: the list with its totals, or an invitation to drop some. Files and folders can be
/// dropped anywhere on it.
class FileList final : public QWidget {
    Q_OBJECT
public:
    explicit FileList(const Environment &environment, QWidget *parent = nullptr);

    /// Takes files that are dropped anywhere on `window`, which the list and all that takes text is in by
    /// now.
    void takeDropsOn(QWidget &window);

    /// Whether files are being dragged over the list.
    [[nodiscard]] bool isDropping() const;

    [[nodiscard]] FileListView *view() const;

    /// The menu of the row at `index`.
    [[nodiscard]] std::unique_ptr<QMenu> menuOf(const QModelIndex &index);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    QWidget *makeEmptyState();
    QWidget *makeList();
    void showPlan();
    void showMenu(const QPoint &point);
    void setDropping(bool isDropping);
    /// Takes a drag over the window for one over the list; whether `event` is of one.
    bool passDrag(QEvent &event);
    void moveCurrent(int step);

    Environment m_environment;
    FileListModel m_files;
    FileListView *m_view;
    ProductionSummary *m_summary;
    QStackedWidget *m_pages;
    QWidget *m_outline; ///< Drawn round the list while files are dragged over it.
    QWidget *m_dropWindow = nullptr;
};

} // namespace tallyfold
