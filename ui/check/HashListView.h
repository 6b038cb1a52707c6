#pragma once

#include "app/HashListWriting.h"
#include "ui/controls/ElidedLabel.h"

#include <QDialog>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include <filesystem>
#include <optional>

namespace tallyfold {

/// Writes the hash list of a production, shows how far that is, and can stop it. Closes itself in the end.
class HashListView final : public QDialog {
    Q_OBJECT
public:
    HashListView(const std::filesystem::path &folder, QWidget *parent);

    /// Stops the writing.
    void reject() override;

Q_SIGNALS:
    void ended(const tallyfold::check::HashesOutcome &outcome);

private:
    void look();

    HashListWriting m_writing;
    ElidedLabel *m_text;
    QProgressBar *m_progress;
    QPushButton *m_stop;
    QTimer m_timer;
};

} // namespace tallyfold
