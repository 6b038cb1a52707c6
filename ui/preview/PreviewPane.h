#pragma once

#include "ui/Environment.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/preview/PreviewImage.h"

#include <QList>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace tallyfold {

/// The first pages of a file as they will be written, below a close-up of the stamp.
class PreviewPane final : public QStackedWidget {
    Q_OBJECT
public:
    explicit PreviewPane(const Environment &environment, QWidget *parent = nullptr);

private:
    QWidget *makePages();
    void showImages();
    void showCloseUp();
    void showName();

    Environment m_environment;
    ElidedLabel *m_header;
    QWidget *m_closeUpBox;
    PreviewImage *m_closeUp;
    QVBoxLayout *m_column;
    QList<PreviewImage *> m_pages;
};

} // namespace tallyfold
