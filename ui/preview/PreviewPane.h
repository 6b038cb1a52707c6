#pragma once

#include "ui/Environment.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/preview/CloseUp.h"
#include "ui/preview/PreviewImage.h"

#include <QList>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace tallyfold {

/// The first pages of a file as they will be written, below a close-up of the stamp.
class PreviewPane final : public QStackedWidget {
    Q_OBJECT
public:
    explicit PreviewPane(const Environment &environment, QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    QWidget *makePages();
    QWidget *makeUnshown();
    void showPage();
    /// Sizes pages and close-up to fit the column and the resolution of the screen.
    void fitColumn();
    void showImages();
    void showCloseUp();
    void showName();

    Environment m_environment;
    ElidedLabel *m_header;
    ElidedLabel *m_unshownFile;
    StyledLabel *m_unshownReason;
    QWidget *m_closeUpBox;
    CloseUp *m_closeUp;
    QScrollArea *m_scroll;
    QVBoxLayout *m_column;
    QList<PreviewImage *> m_pages;
};

} // namespace tallyfold
