#pragma once

#include "app/CheckModel.h"
#include "ui/controls/Buttons.h"

#include <QListWidget>
#include <QPushButton>
#include <QWidget>

namespace tallyfold {

/// The folders that are to be checked, and what starts it.
class CheckFolders final : public QWidget {
    Q_OBJECT
public:
    explicit CheckFolders(CheckModel &model, QWidget *parent = nullptr);

    /// The button that starts a check.
    [[nodiscard]] QPushButton *checkButton() const;

Q_SIGNALS:
    /// The user wants to choose another folder.
    void moreWanted();

private:
    void showFolders();
    void update();
    void removeChosen();

    CheckModel *m_model;
    QListWidget *m_list;
    QPushButton *m_add;
    QPushButton *m_remove;
    ProminentButton *m_check;
};

} // namespace tallyfold
