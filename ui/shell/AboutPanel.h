#pragma once

#include <QDialog>

namespace tallyfold {

/// The about dialog: description, version, licence and support address.
class AboutPanel final : public QDialog {
    Q_OBJECT
public:
    explicit AboutPanel(QWidget *parent = nullptr);

    /// The paragraphs below the name of the program.
    [[nodiscard]] static QStringList credits();
};

} // namespace tallyfold
