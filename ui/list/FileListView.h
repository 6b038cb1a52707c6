#pragma once

#include "ui/list/FileListModel.h"
#include "ui/list/FileRowDelegate.h"

#include <QListView>
#include <QPushButton>
#include <QUuid>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// The rows of the files: several can be chosen, dragged to other places, copied, and given by pasting. The
/// link in the row of a protected file answers to clicks; for the keyboard it is a button of its own while
/// its row is the current one.
class FileListView final : public QListView {
    Q_OBJECT
public:
    explicit FileListView(FileListModel &model, QWidget *parent = nullptr);

    [[nodiscard]] QSet<QUuid> selectedIds() const;
    /// Chooses the rows of `ids`, without telling of it.
    void showSelected(const QSet<QUuid> &ids);

    /// Says beside the row at `index` what lets rows be moved.
    void tellHowToMove(const QModelIndex &index);

    /// The button over the link of the current row; hidden while that has none.
    [[nodiscard]] QPushButton *link() const;

public Q_SLOTS:
    /// Puts the chosen files on the clipboard.
    void copy();
    /// Gives the files on the clipboard.
    void paste();

Q_SIGNALS:
    /// The user chose other rows.
    void chosen();
    void passwordHelpWanted();
    void pasted(const std::vector<std::filesystem::path> &files);

protected:
    void dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void updateGeometries() override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void startDrag(Qt::DropActions supportedActions) override;

private:
    void adapt();
    void placeLink();
    [[nodiscard]] bool isOnLink(QPoint point) const;

    FileListModel *m_model;
    FileRowDelegate *m_delegate;
    QPushButton *m_link;
    bool m_isDragRefused = false; ///< Since the button was pressed.
    bool m_isShowing = false;     ///< The model's selection is being shown, not one that the user made.
};

} // namespace tallyfold
