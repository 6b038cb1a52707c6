#pragma once

#include "app/CheckModel.h"
#include "ui/controls/ElidedLabel.h"

#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

namespace tallyfold {

/// How far a check is, and what stops it.
class CheckProgress final : public QWidget {
    Q_OBJECT
public:
    explicit CheckProgress(CheckModel &model, QWidget *parent = nullptr);

    [[nodiscard]] QPushButton *stopButton() const;

private:
    void showProgress();

    CheckModel *m_model;
    ElidedLabel *m_reading;
    StyledLabel *m_pages;
    QProgressBar *m_bar;
    QPushButton *m_stop;
};

} // namespace tallyfold
