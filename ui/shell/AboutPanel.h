#pragma once

#include <QDialog>

namespace tallyfold {

/// What the program is, its version and licence, and where to ask.
class AboutPanel final : public QDialog {
    Q_OBJECT
public:
    explicit AboutPanel(QWidget *parent = nullptr);

    /// The paragraphs under the program's name.
    [[nodiscard]] static QStringList credits();
};

} // namespace tallyfold
