#pragma once

#include "app/CopyPages.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/preview/PreviewImage.h"

#include <QDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>

#include <cstdint>
#include <filesystem>

namespace tallyfold {

/// The window that shows pages of a copy, one at a time.
class CopyViewer final : public QDialog {
    Q_OBJECT
public:
    explicit CopyViewer(QWidget *parent = nullptr);

    /// Shows page `page`, from 1, of the file called `file` in `folder`, with `note` above it.
    void showPage(const std::filesystem::path &folder, const QString &file, std::int64_t page,
                  const QString &note);

    [[nodiscard]] bool isDrawing() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    [[nodiscard]] QLayout *makeHeader();
    void turnTo(std::int64_t page);
    void tellPage();
    void draw();
    void take(const CopyPages::Shown &shown);
    [[nodiscard]] std::int64_t widthWanted() const;

    CopyPages m_copy;
    CopyPages::Wanted m_wanted;
    std::int64_t m_pages = 0; ///< 0 while it is not known.
    ElidedLabel *m_name;
    StyledLabel *m_page;
    StyledLabel *m_note;
    QPushButton *m_previous;
    QPushButton *m_next;
    QStackedWidget *m_stack;
    QScrollArea *m_scroll;
    PreviewImage *m_picture;
    StyledLabel *m_problem;
};

} // namespace tallyfold
