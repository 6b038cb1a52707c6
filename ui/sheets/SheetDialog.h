#pragma once

#include <QDialog>
#include <QVBoxLayout>

namespace tallyfold {

/// A dialog over its window, of texts that wrap: as tall as they need at its width, on any screen that has
/// the room. It goes when it is closed.
class SheetDialog : public QDialog {
    Q_OBJECT
public:
    /// `leastWidth` is in device-independent pixels, `margins` are those round the content.
    SheetDialog(int leastWidth, const QMargins &margins, QWidget *parent);

protected:
    /// Where the content goes, from top to bottom.
    [[nodiscard]] QVBoxLayout &content();

    void showEvent(QShowEvent *event) override;

private:
    QVBoxLayout *m_layout;
};

} // namespace tallyfold
